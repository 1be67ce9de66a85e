#include "fiscal/sintegra_conversor.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/error.h"

namespace infofiscal::sintegra {

namespace {

bool antes(const TimeStamp& a, const TimeStamp& b) {
  return std::tie(a.year, a.month, a.day) < std::tie(b.year, b.month, b.day);
}

std::string so_digitos(std::string_view texto) {
  std::string d;
  for (const char c : texto)
    if (c >= '0' && c <= '9') d += c;
  return d;
}

std::int64_t numero_de(std::string_view texto) {
  std::int64_t v = 0;
  for (const char c : so_digitos(texto).substr(0, 18)) v = v * 10 + (c - '0');
  return v;
}

// The state registration as type 50 field 03 wants it: letters and digits, or ISENTO.
std::string inscricao(std::string_view texto) {
  std::string ie;
  for (const char c : ascii_maiusculo(texto))
    if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z')) ie += c;
  return ie.empty() || ie.starts_with("ISENT") ? std::string(kIsento) : ie;
}

// Type 54 field 07 from ICMS_CST: origin 0 before a 2-digit code, the last 3 digits of a
// longer one.
std::string cst_do_item(std::string_view texto) {
  const std::string d = so_digitos(texto);
  if (d.size() == 2) return "0" + d;
  return d.size() > 3 ? d.substr(d.size() - 3) : d;
}

// Whether an item's amount outside the ICMS base is exempt (else "outras"), by its tax code.
bool isenta(std::string_view texto) {
  const std::string d = so_digitos(texto);
  if (d.size() >= 4) return na_lista(kCsosnsIsentos, d.substr(d.size() - 3));
  if (d.size() == 3 && !na_lista(kCsts, d.substr(1))) return na_lista(kCsosnsIsentos, d);
  return d.size() >= 2 && na_lista(kCstsIsentos, d.substr(d.size() - 2));
}

std::string_view mapa_ou_erro(const std::string_view* para, std::string_view o_que, std::string_view de) {
  if (!para) throw Error(fmt::format("{} '{}' não tem código no SINTEGRA", o_que, de));
  return *para;
}

}  // namespace

void ConversorSintegra::informar(const std::string& texto) const {
  if (info_) info_(texto);
}

void ConversorSintegra::progredir(int posicao, int maximo) const {
  if (progresso_) progresso_(posicao, maximo);
}

std::string ConversorSintegra::gerar(std::string_view informacao) {
  informar("Lendo o arquivo de informações");
  const std::vector<LinhaInformacao> linhas = ler_informacao(informacao);
  separar(linhas);

  informar("Gerando registros 10 e 11");
  escrever_informante();
  informar("Gerando registros 50 e 54");
  for (std::size_t i = 0; i < notas_.size(); ++i) {
    progredir(static_cast<int>(i + 1), static_cast<int>(notas_.size()));
    escrever_nota(notas_[i]);
  }
  informar("Gerando registro 74");
  escrever_inventarios();
  informar("Gerando registro 75");
  escrever_produtos();
  informar("Gerando registro 90");
  for (Bloco* b : {&b50_, &b54_, &b74_, &b75_}) b->ordenar();
  escrever_totais();

  std::string saida;
  saida.reserve(static_cast<std::size_t>(b10_.quantos() + b11_.quantos() + b50_.quantos() + b54_.quantos() +
                                         b74_.quantos() + b75_.quantos() + b90_.quantos()) *
                (kTamanhoRegistro + kFimDeRegistro.size()));
  for (const Bloco* b : {&b10_, &b11_, &b50_, &b54_, &b74_, &b75_, &b90_}) b->emitir(saida);
  return saida;
}

// Sorts the lines into header, notes, catalogue and inventories, in one pass.
void ConversorSintegra::separar(const std::vector<LinhaInformacao>& linhas) {
  const int total = static_cast<int>(linhas.size());
  const auto erro = [](const LinhaInformacao& l, std::string_view porque) {
    return Error(fmt::format("Linha {} do arquivo de informações: {}", l.numero, porque));
  };
  const auto da_mesma_nota = [&](const LinhaInformacao& l) {
    if (notas_.empty() || notas_.back().cabecalho->texto(1) != l.texto(1) ||
        notas_.back().cabecalho->texto(2) != l.texto(2))
      throw erro(l, fmt::format("linha {:02} sem a linha 04 da sua nota", l.tipo));
    return &notas_.back();
  };
  const LinhaInformacao* ultimo_cabecalho_de_inventario = nullptr;
  for (int k = 0; k < total; ++k) {
    const LinhaInformacao& l = linhas[k];
    progredir(k + 1, total);
    switch (l.tipo) {
      case 1:
      case 2:
      case 3: {
        const LinhaInformacao*& unica = l.tipo == 1 ? l01_ : l.tipo == 2 ? l02_ : l03_;
        if (unica) throw erro(l, fmt::format("segunda linha {:02}", l.tipo));
        unica = &l;
        break;
      }
      case 4:
        notas_.push_back({&l, nullptr, {}});
        break;
      case 5:
        da_mesma_nota(l)->parte = &l;
        break;
      case 6:
        da_mesma_nota(l)->itens.push_back(&l);
        break;
      case 12: {
        const auto* prefixo = mapear(kPrefixosDeItem, l.texto(1));
        if (!prefixo) throw erro(l, fmt::format("tipo de item '{}' desconhecido", l.texto(1)));
        catalogo_.try_emplace(std::string(*prefixo) + std::string(l.texto(2)), &l);
        break;
      }
      case 16:
      case 18:
        inventarios_.push_back({&l, {}});
        ultimo_cabecalho_de_inventario = &l;
        break;
      case 17:
      case 19:
        if (!ultimo_cabecalho_de_inventario || ultimo_cabecalho_de_inventario->tipo != l.tipo - 1)
          throw erro(l, fmt::format("linha {:02} sem a linha {:02} do seu inventário", l.tipo, l.tipo - 1));
        inventarios_.back().produtos.push_back(&l);
        break;
      case 13:
      case 14:
      case 15:
        break;  // units, parties and natures: the notes and the catalogue carry what the file needs
      default:
        throw erro(l, fmt::format("tipo de linha {:02} desconhecido", l.tipo));
    }
  }
  if (!l01_) throw Error("O arquivo de informações não tem a linha 01 (registro fiscal)");
  if (!l02_) throw Error("O arquivo de informações não tem a linha 02 (empresa)");
}

void ConversorSintegra::escrever_informante() {
  const LinhaInformacao& r = *l01_;
  const LinhaInformacao& e = *l02_;
  inicio_ = r.data(2);
  fim_ = r.data(3);
  cnpj_ = so_digitos(e.texto(4));
  ie_ = inscricao(e.texto(6));
  uf_ = ascii_maiusculo(e.texto(5));
  const std::string_view finalidade =
      mapa_ou_erro(mapear(kFinalidades, r.texto(6)), "Finalidade do arquivo (C06 da linha 01)", r.texto(6));
  try {
    b10_.novo().digitos(cnpj_).texto(ie_).texto(e.texto(2)).texto(e.texto(9)).texto(uf_).digitos(e.texto(16));
    b10_.data(inicio_).data(fim_).texto(kConvenio).texto(kNatureza).texto(finalidade).fim();
    // The contact: the accountant, or the company itself when line 03 names nobody.
    const bool contador = l03_ && !ascii_maiusculo(l03_->texto(2)).empty();
    const std::string_view contato = contador ? l03_->texto(2) : e.texto(2);
    const std::string_view fone = contador ? l03_->texto(11) : e.texto(15);
    b11_.novo().texto(e.texto(10)).digitos(e.texto(13)).texto(e.texto(12)).texto(e.texto(14)).digitos(e.texto(11));
    b11_.texto(contato).digitos(fone).fim();
  } catch (const Error& err) {
    throw Error(fmt::format("Dados da empresa (linhas 02 e 03 do arquivo de informações): {}", err.what()));
  }
}

void ConversorSintegra::escrever_nota(const Nota& nota) {
  const LinhaInformacao& h = *nota.cabecalho;
  const std::string_view tipo = h.texto(1);
  const bool propria = na_lista(kNotasProprias, tipo);
  if (!propria && !na_lista(kNotasDeTerceiros, tipo))
    throw Error(fmt::format("Linha {} do arquivo de informações: tipo de nota '{}' desconhecido", h.numero, tipo));
  if (h.texto(6).empty())
    throw Error(fmt::format("Linha {} do arquivo de informações: nota {} sem modelo (C06)", h.numero, h.texto(3)));
  const std::string modelo = std::to_string(h.inteiro(6));
  if (!mapear(kModelos, modelo)) {
    informar(fmt::format("Nota {} (modelo {}) fica fora do arquivo: seu registro não é gerado", h.texto(3), modelo));
    return;
  }
  try {
    const Documento doc = documento_da_nota(nota, propria);
    const std::vector<Parcela> parcelas = parcelas_da_nota(nota, doc);
    for (const Parcela& p : parcelas) {
      b50_.novo().digitos(doc.cnpj).texto(doc.ie).data(doc.data).texto(doc.uf).texto(doc.modelo).texto(doc.serie);
      b50_.numero(doc.numero).numero(p.cfop).texto(std::string_view(&doc.emitente, 1)).numero(p.valor, 2);
      b50_.numero(p.base, 2).numero(p.icms, 2).numero(p.isenta, 2).numero(p.outras, 2).numero(p.aliquota, 2);
      b50_.texto(std::string_view(&doc.situacao, 1)).fim();
    }
    if (!na_lista(kSituacoesSemValor, std::string_view(&doc.situacao, 1)) && na_lista(kModelosComItens, doc.modelo))
      escrever_itens(nota, doc, parcelas);
  } catch (const Error& err) {
    throw Error(fmt::format("Nota {} (linha {} do arquivo de informações): {}", h.texto(3), h.numero, err.what()));
  }
}

ConversorSintegra::Documento ConversorSintegra::documento_da_nota(const Nota& nota, bool propria) const {
  const LinhaInformacao& h = *nota.cabecalho;
  Documento doc;
  doc.modelo = *mapear(kModelos, std::to_string(h.inteiro(6)));
  doc.serie = ascii_maiusculo(h.texto(7));
  const std::string numero = so_digitos(h.texto(3));
  if (numero.empty()) throw Error("nota sem número (C03)");
  doc.numero = numero_de(numero.size() > 6 ? std::string_view(numero).substr(numero.size() - 6) : numero);
  doc.emitente = propria ? 'P' : 'T';
  doc.situacao = mapa_ou_erro(mapear(kSituacoes, h.texto(24)), "Situação (C24)", h.texto(24))[0];
  const bool inutilizada = doc.situacao == '4';
  const int coluna_data = !propria && !h.texto(9).empty() ? 9 : 8;
  doc.data = inutilizada ? inicio_ : h.data(coluna_data);
  if (inutilizada) {
    doc.ie = kIsento;
    doc.uf = uf_;
  } else {
    if (!nota.parte) throw Error("nota sem a linha 05 da sua parte");
    const LinhaInformacao& p = *nota.parte;
    doc.cnpj = so_digitos(p.texto(5));
    doc.ie = inscricao(p.texto(6));
    doc.uf = ascii_maiusculo(p.texto(7));
    const char cfop = so_digitos(h.texto(4)).append("0")[0];
    if (doc.uf.empty() && (cfop == '3' || cfop == '7')) doc.uf = kExterior;
  }
  if (doc.cnpj.size() != 14 || doc.uf == kExterior) doc.cnpj.clear();  // CPF, foreign or none: zeros
  if (doc.uf == kExterior) doc.ie = kIsento;
  if (!propria && antes(doc.data, inicio_)) doc.situacao = doc.situacao == 'S' ? 'X' : 'E';
  return doc;
}

// One part per CFOP and rate of the items, in the order they first appear, adding up to the
// note's total; a note without items is one part from its header.
std::vector<ConversorSintegra::Parcela> ConversorSintegra::parcelas_da_nota(const Nota& nota,
                                                                           const Documento& doc) const {
  const LinhaInformacao& h = *nota.cabecalho;
  const std::int64_t cfop_da_nota = numero_de(h.texto(4));
  if (na_lista(kSituacoesSemValor, std::string_view(&doc.situacao, 1)))
    return {Parcela{cfop_da_nota ? cfop_da_nota : nota.itens.empty() ? 0 : numero_de(nota.itens[0]->texto(17))}};
  std::vector<Parcela> parcelas;
  if (nota.itens.empty()) {
    Parcela p{cfop_da_nota, 0, h.centesimos(10), h.centesimos(16), h.centesimos(17)};
    p.outras = p.valor - p.base;
    if (p.base > 0) p.aliquota = (p.icms * 10000 * 2 / p.base + 1) / 2;
    parcelas.push_back(p);
  }
  for (const LinhaInformacao* i : nota.itens) {
    const std::int64_t cfop = i->texto(17).empty() ? cfop_da_nota : numero_de(i->texto(17));
    const std::int64_t aliquota = i->centesimos(19);
    auto p = std::find_if(parcelas.begin(), parcelas.end(),
                          [&](const Parcela& x) { return x.cfop == cfop && x.aliquota == aliquota; });
    if (p == parcelas.end()) p = parcelas.insert(parcelas.end(), Parcela{cfop, aliquota});
    const std::int64_t valor = i->centesimos(8) - i->centesimos(9) + i->centesimos(10) + i->centesimos(11) +
                               i->centesimos(12) + i->centesimos(26) + i->centesimos(22);
    const std::int64_t base = i->centesimos(18);
    p->valor += valor;
    p->base += base;
    p->icms += i->centesimos(20);
    (isenta(i->texto(16)) ? p->isenta : p->outras) += valor - base;
  }
  std::int64_t soma = 0;
  for (const Parcela& p : parcelas) soma += p.valor;
  auto maior = std::max_element(parcelas.begin(), parcelas.end(),
                                [](const Parcela& a, const Parcela& b) { return a.valor < b.valor; });
  maior->valor += h.centesimos(10) - soma;
  maior->outras += h.centesimos(10) - soma;
  return parcelas;
}

void ConversorSintegra::escrever_itens(const Nota& nota, const Documento& doc, const std::vector<Parcela>& parcelas) {
  const LinhaInformacao& h = *nota.cabecalho;
  const bool equipamento = h.texto(1) == std::to_string(kNotaVendaEquipamento);
  const auto chave = [&]() -> Bloco& {
    return b54_.novo().digitos(doc.cnpj).texto(doc.modelo).texto(doc.serie).numero(doc.numero);
  };
  for (const LinhaInformacao* i : nota.itens) {
    const std::int64_t item = i->inteiro(4);
    if (item < 1 || item >= kPrimeiroItemEspecial)
      throw Error(fmt::format("item {} (linha {}): o registro 54 numera itens de 1 a {}", item, i->numero,
                              kPrimeiroItemEspecial - 1));
    const std::string_view tipo_item = equipamento ? "1" : i->texto(15);
    const std::string& produto = usar_produto(tipo_item, i->texto(3), i);
    const std::int64_t cfop = i->texto(17).empty() ? numero_de(h.texto(4)) : numero_de(i->texto(17));
    chave().numero(cfop).texto(cst_do_item(i->texto(16))).numero(item).texto(produto).numero(i->centesimos(7), 2);
    b54_.numero(i->centesimos(8), 2).numero(i->centesimos(9), 2).numero(i->centesimos(18), 2);
    b54_.numero(i->centesimos(21), 2).numero(i->centesimos(26), 2).numero(i->centesimos(19), 2).fim();
  }
  // Freight, insurance and other expenses of the header, under the note's CFOP when it has
  // a part of its own.
  const std::int64_t cfop_da_nota = numero_de(h.texto(4));
  const bool tem_cfop = std::any_of(parcelas.begin(), parcelas.end(), [&](const Parcela& p) { return p.cfop == cfop_da_nota; });
  const std::int64_t cfop = tem_cfop ? cfop_da_nota : parcelas.front().cfop;
  for (const auto& [item, coluna] : {std::pair{kItemFrete, 13}, {kItemSeguro, 14}, {kItemOutrasDespesas, 15}}) {
    const std::int64_t valor = h.centesimos(coluna);
    if (valor == 0) continue;
    chave().numero(cfop).brancos().numero(item).brancos().zeros().zeros().numero(valor, 2);
    b54_.zeros().zeros().zeros().zeros().fim();
  }
}

const std::string& ConversorSintegra::usar_produto(std::string_view tipo_item, std::string_view codigo,
                                                    const LinhaInformacao* linha) {
  const std::string_view prefixo = mapa_ou_erro(mapear(kPrefixosDeItem, tipo_item), "Tipo de item", tipo_item);
  const std::string chave = std::string(prefixo) + std::string(codigo);
  if (codigo.empty()) throw Error(fmt::format("linha {} sem código de item", linha->numero));
  return usados_.try_emplace(chave, linha).first->first;
}

void ConversorSintegra::escrever_inventarios() {
  for (const Inventario& inv : inventarios_) {
    const LinhaInformacao& h = *inv.cabecalho;
    if (inv.produtos.empty()) continue;
    const TimeStamp data = h.data(3);
    for (std::size_t k = 0; k < inv.produtos.size(); ++k) {
      const LinhaInformacao& p = *inv.produtos[k];
      progredir(static_cast<int>(k + 1), static_cast<int>(inv.produtos.size()));
      try {
        const std::string& produto = usar_produto(kItemProduto, p.texto(3), &p);
        b74_.novo().data(data).texto(produto).numero(p.centesimos(4), 2).numero(p.centesimos(6), 2);
        b74_.texto(kPossePropria).zeros().brancos().brancos().brancos().fim();
      } catch (const Error& err) {
        throw Error(fmt::format("Linha {} do arquivo de informações: {}", p.numero, err.what()));
      }
    }
  }
}

void ConversorSintegra::escrever_produtos() {
  for (const auto& [codigo, uso] : usados_) {
    const auto cat = catalogo_.find(codigo);
    // The catalogue line (C03 description, C04 unit, C05 NCM), else the item line that used
    // the code (C05, C06, C13); an inventory line alone does not describe its product.
    const LinhaInformacao* fonte = cat != catalogo_.end() ? cat->second : uso->tipo == 6 ? uso : nullptr;
    if (!fonte)
      throw Error(fmt::format("Linha {} do arquivo de informações: o produto {} não está no cadastro (linhas 12)",
                              uso->numero, codigo));
    const bool do_catalogo = fonte->tipo == 12;
    const std::string_view descricao = fonte->texto(do_catalogo ? 3 : 5);
    const std::string_view unidade = fonte->texto(do_catalogo ? 4 : 6);
    const std::string ncm = so_digitos(fonte->texto(do_catalogo ? 5 : 13));
    try {
      b75_.novo().data(inicio_).data(fim_).texto(codigo).texto(ncm).texto(descricao).texto(unidade);
      b75_.zeros().zeros().zeros().zeros().fim();
    } catch (const Error& err) {
      throw Error(fmt::format("Produto {} (linha {} do arquivo de informações): {}", codigo, fonte->numero, err.what()));
    }
  }
}

// One pair per type written besides 10, 11 and 90, then 99 with every record of the file.
void ConversorSintegra::escrever_totais() {
  std::vector<std::pair<int, int>> pares;
  int registros = b10_.quantos() + b11_.quantos();
  for (const Bloco* b : {&b50_, &b54_, &b74_, &b75_}) {
    if (b->quantos() > 0) pares.emplace_back(b->layout().tipo, b->quantos());
    registros += b->quantos();
  }
  const int quantos90 = static_cast<int>(pares.size() + 1 + kParesPor90 - 1) / kParesPor90;
  pares.emplace_back(kTipoTotalGeral, registros + quantos90);
  for (int r = 0; r < quantos90; ++r) {
    std::string texto;
    for (std::size_t i = r * kParesPor90; i < pares.size() && i < (r + 1) * static_cast<std::size_t>(kParesPor90); ++i)
      texto += fmt::format("{:0{}}{:0{}}", pares[i].first, kTamanhoTipoDoPar, pares[i].second, kTamanhoContaDoPar);
    b90_.novo().digitos(cnpj_).texto(ie_).texto(texto).brancos().numero(quantos90).fim();
  }
}

}  // namespace infofiscal::sintegra
