#include "fiscal/sintegra_conversor.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/error.h"
#include "base/system.h"
#include "fiscal/identidade.h"
#include "fiscal/inscricao_estadual.h"
#include "informacao/esquema.h"

namespace infofiscal::sintegra {

namespace {

using namespace linha;

// Lines 17 and 19 share one layout: inventory items are read by L17's names.
static_assert(L17::Produto == L19::Produto && L17::Quantidade == L19::Quantidade &&
              L17::PrecoTotal == L19::PrecoTotal && L16::Data == L18::Data);

bool antes(const TimeStamp& a, const TimeStamp& b) {
  return std::tie(a.year, a.month, a.day) < std::tie(b.year, b.month, b.day);
}

std::int64_t numero_de(std::string_view texto, std::string_view campo) {
  std::int64_t v = 0;
  for (const char c : codigo_numerico(texto, campo).substr(0, 18)) v = v * 10 + (c - '0');
  return v;
}

// The digits of a phone (country code 55 dropped); the field says whether they fit.
std::string fone(std::string_view texto, std::string_view campo) {
  identidade::Telefone t = identidade::telefone(texto);
  if (!t.verificacao)
    throw DataProblem("telefone inválido", fmt::format("{} '{}': {}", campo, texto, t.verificacao.motivo));
  return std::move(t.digitos);
}

// The number of an address for type 11's numeric field: "S/N" (sem número, any case and mask)
// is no number, zeros; any other letter is refused by the field.
std::string_view numero_do_endereco(std::string_view texto) {
  return ascii_maiusculo(identidade::sem_mascara(texto)) == "SN" ? std::string_view() : texto;
}

// Whether the registration is the literal "no IE" (any case, or empty).
bool isento(std::string_view ie) { return ie.empty() || ascii_maiusculo(ie) == kIsento; }

// Type 54 field 07 from ICMS_CST: origin 0 before a 2-digit code, the last 3 digits of a
// longer one.
std::string cst_do_item(std::string_view texto, std::string_view campo) {
  const std::string d = codigo_numerico(texto, campo);
  if (d.size() == 2) return "0" + d;
  return d.size() > 3 ? d.substr(d.size() - 3) : d;
}

// Whether an item's amount outside the ICMS base is exempt (else "outras"), by its tax code.
bool isenta(std::string_view texto, std::string_view campo) {
  const std::string d = codigo_numerico(texto, campo);
  if (d.size() >= 4) return na_lista(kCsosnsIsentos, d.substr(d.size() - 3));
  if (d.size() == 3 && !na_lista(kCsts, d.substr(1))) return na_lista(kCsosnsIsentos, d);
  return d.size() >= 2 && na_lista(kCstsIsentos, d.substr(d.size() - 2));
}

std::string_view mapa_ou_erro(const std::string_view* para, std::string_view o_que, std::string_view de) {
  if (!para) throw DataProblem("código sem correspondente no SINTEGRA", fmt::format("{} '{}' não tem código no SINTEGRA", o_que, de));
  return *para;
}

}  // namespace

void CatalogoSintegra::cadastro(const LinhaInformacao& l) {
  if (l.tipo != L12::kTipo) return;  // units, parties and natures: the notes and the catalogue carry what the file needs
  const auto* prefixo = mapear(kPrefixosDeItem, l.texto(L12::TipoItem));
  if (!prefixo)
    throw Error(fmt::format("Linha {} do arquivo de informações: tipo de item '{}' desconhecido", l.numero,
                            l.texto(L12::TipoItem)));
  produtos_.try_emplace(std::string(*prefixo) + std::string(l.texto(L12::Codigo)),
                        Produto{l.numero, l.tipo, std::string(l.texto(L12::Descricao)),
                                std::string(l.texto(L12::Unidade)), std::string(l.texto(L12::Ncm))});
}

const Produto* CatalogoSintegra::produto(const std::string& codigo) const {
  const auto it = produtos_.find(codigo);
  return it == produtos_.end() ? nullptr : &it->second;
}

ConversorSintegra::ConversorSintegra(const ContagemDeLinhas& contagem, const std::string& pasta,
                                     const TProcLinhaInfo& info, const TProcProgresso& progresso)
    : contagem_(contagem), info_(info), progresso_(progresso), b10_(k10, pasta), b11_(k11, pasta),
      b50_(k50, pasta), b54_(k54, pasta), b70_(k70, pasta), b74_(k74, pasta), b75_(k75, pasta), b90_(k90, pasta) {}

void ConversorSintegra::informar(const std::string& texto) const {
  if (info_) info_(texto);
}

void ConversorSintegra::progredir(int posicao, int maximo) const {
  if (progresso_ && maximo > 0) progresso_(posicao, maximo);  // a single reading has no counts
}

void ConversorSintegra::cabecalho(const CabecalhoInformacao& c) {
  informar("Gerando registros 10 e 11");
  escrever_informante(c);
  informar("Gerando registros 50 e 54");
}

void ConversorSintegra::nota(const NotaInformacao& nota) {
  progredir(++nota_, contagem_.notas);
  try {
    escrever_nota(nota);
  } catch (const DataProblem& p) {
    problemas_.anota(p);
  }
}

void ConversorSintegra::inventarios_comecam() {
  if (em_inventarios_) return;
  em_inventarios_ = true;
  informar("Gerando registro 74");
}

void ConversorSintegra::inventario(const InventarioInformacao& inv) {
  inventarios_comecam();
  if (inv.itens.empty()) return;
  const TimeStamp data = inv.cabecalho.data(L16::Data);
  for (const LinhaInformacao& p : inv.itens) {
    progredir(++item_de_inventario_, contagem_.itens_de_inventario);
    try {
      const std::string& produto = usar_produto(kItemProduto, p.texto(L17::Produto), p);
      b74_.novo().data(data).texto(produto).numero(p.decimal_sem_perda(L17::Quantidade, 3), 3);
      b74_.numero(p.centesimos(L17::PrecoTotal), 2);
      b74_.texto(kPossePropria).zeros().brancos().brancos().brancos().fim();
    } catch (const DataProblem& err) {
      problemas_.anota(err.within(fmt::format("Linha {} do arquivo de informações: ", p.numero)));
    }
  }
}

void ConversorSintegra::conclui(CatalogoSintegra catalogo) {
  inventarios_comecam();
  informar("Gerando registro 75");
  escrever_produtos(catalogo);
  catalogo = {};
  usados_ = {};
  partes_conferidas_ = {};
  return_free_memory();  // for the validator, whose thread checks the file written next
  informar("Gerando registro 90");
  escrever_totais();
  if (!problemas_.vazio()) throw MesComProblemas(std::move(problemas_), "SINTEGRA");
}

void ConversorSintegra::emitir(SaidaFiscal& saida) {
  for (Bloco* b : {&b10_, &b11_, &b50_, &b54_, &b70_, &b74_, &b75_, &b90_}) b->emitir(saida);
}

void ConversorSintegra::escrever_informante(const CabecalhoInformacao& c) {
  const LinhaInformacao& r = c.registro;
  const LinhaInformacao& e = c.empresa;
  inicio_ = r.data(L01::DataInicial);
  fim_ = r.data(L01::DataFinal);
  uf_ = ascii_maiusculo(e.texto(L02::Uf));
  const std::string onde = "Dados da empresa (linhas 02 e 03 do arquivo de informações): ";
  cnpj_ = cnpj(e.texto(L02::Cnpj), "da empresa", onde, true);
  ie_ = inscricao(e.texto(L02::Ie), uf_, "da empresa", onde, true);
  const std::string_view finalidade = mapa_ou_erro(mapear(kFinalidades, r.texto(L01::Finalidade)),
                                                   "Finalidade do arquivo (C06 da linha 01)", r.texto(L01::Finalidade));
  try {
    b10_.novo().digitos(cnpj_).texto(ie_).texto(e.texto(L02::RazaoSocial)).texto(e.texto(L02::NomeCidade)).texto(uf_);
    b10_.digitos(fone(e.texto(L02::Fax), "fax")).data(inicio_).data(fim_).texto(kConvenio).texto(kNatureza);
    b10_.texto(finalidade).fim();
    // The contact: the accountant, or the company itself when line 03 names nobody.
    const bool contador = c.contador && !ascii_maiusculo(c.contador->texto(L03::Nome)).empty();
    const std::string_view contato = contador ? c.contador->texto(L03::Nome) : e.texto(L02::RazaoSocial);
    const std::string_view fone = contador ? c.contador->texto(L03::Fone) : e.texto(L02::Fone);
    b11_.novo().texto(e.texto(L02::Endereco)).digitos(numero_do_endereco(e.texto(L02::Numero)));
    b11_.texto(e.texto(L02::Complemento));
    b11_.texto(e.texto(L02::Bairro)).digitos(e.texto(L02::Cep)).texto(contato);
    b11_.digitos(sintegra::fone(fone, "telefone"));
    b11_.fim();
  } catch (const DataProblem& err) {
    problemas_.anota(err.within("Dados da empresa (linhas 02 e 03 do arquivo de informações): "));
  }
}

void ConversorSintegra::escrever_nota(const NotaInformacao& nota) {
  const LinhaInformacao& h = nota.cabecalho;
  const std::string_view tipo = h.texto(L04::TipoNota);
  const bool propria = na_lista(kNotasProprias, tipo);
  if (!propria && !na_lista(kNotasDeTerceiros, tipo))
    throw DataProblem("tipo de nota desconhecido",
                      fmt::format("Linha {} do arquivo de informações: tipo de nota '{}' desconhecido", h.numero, tipo));
  if (h.texto(L04::Modelo).empty())
    throw DataProblem("nota sem modelo", fmt::format("Linha {} do arquivo de informações: nota {} sem modelo (C06)",
                                                     h.numero, h.texto(L04::Numero)));
  const std::string modelo = std::to_string(h.inteiro(L04::Modelo));
  const bool transporte = na_lista(kModelosDeTransporte, modelo);
  if (!mapear(kModelos, modelo) || (transporte && propria)) {
    informar(fmt::format("Nota {} (modelo {}) fica fora do arquivo: seu registro não é gerado", h.texto(L04::Numero),
                         modelo));
    return;
  }
  const std::string onde = fmt::format("Nota {} (linha {} do arquivo de informações): ", h.texto(L04::Numero), h.numero);
  // Every item with a negative amount listed; the note is not written.
  bool itens_validos = true;
  for (const LinhaInformacao& i : nota.itens) {
    try {
      confere_valores_do_item(i);
    } catch (const DataProblem& err) {
      problemas_.anota(err.within(onde));
      itens_validos = false;
    }
  }
  if (!itens_validos) return;
  try {
    const Documento doc = documento_da_nota(nota, propria);
    const std::vector<Parcela> parcelas = parcelas_da_nota(nota, doc);
    if (transporte) {
      escrever_transporte(doc, parcelas);
      return;
    }
    for (const Parcela& p : parcelas) {
      b50_.novo().digitos(doc.cnpj).texto(doc.ie).data(doc.data).texto(doc.uf).texto(doc.modelo).texto(doc.serie);
      b50_.numero(doc.numero).numero(p.cfop).texto(std::string_view(&doc.emitente, 1)).numero(p.valor, 2);
      b50_.numero(p.base, 2).numero(p.icms, 2).numero(p.isenta, 2).numero(p.outras, 2).numero(p.aliquota, 2);
      b50_.texto(std::string_view(&doc.situacao, 1)).fim();
    }
    if (!na_lista(kSituacoesSemValor, std::string_view(&doc.situacao, 1)) && na_lista(kModelosComItens, doc.modelo))
      escrever_itens(nota, doc, parcelas);
  } catch (const DataProblem& err) {
    throw err.within(onde);
  }
}

std::string ConversorSintegra::cnpj(std::string_view texto, const std::string& quem, const std::string& onde,
                                    bool relatar) {
  const std::string doc = identidade::documento(texto);
  if (doc.empty()) return doc;
  const identidade::Verificacao v = identidade::verificar_documento(doc);
  const bool letras = v && doc.find_first_not_of("0123456789") != std::string::npos;
  if (relatar && !v)
    problemas_.anota(DataProblem(doc.size() == 11 ? "CPF inválido" : "CNPJ inválido",
                                 fmt::format("{}CNPJ/CPF {} '{}': {}", onde, quem, texto, v.motivo)));
  if (relatar && letras)
    problemas_.anota(DataProblem("CNPJ alfanumérico, sem lugar no SINTEGRA",
                                 fmt::format("{}CNPJ {} '{}': o campo CNPJ do SINTEGRA é numérico e não leva letras",
                                             onde, quem, texto)));
  return v && doc.size() == 14 && !letras ? doc : std::string();
}

std::string ConversorSintegra::inscricao(std::string_view texto, std::string_view uf, const std::string& quem,
                                         const std::string& onde, bool relatar) {
  if (isento(texto)) return std::string(kIsento);
  if (const auto v = identidade::verificar_inscricao_estadual(uf, texto); relatar && !v)
    problemas_.anota(
        DataProblem("IE inválida", fmt::format("{}IE {} ({}) '{}': {}", onde, quem, uf, texto, v.motivo)));
  return identidade::sem_mascara(texto);
}

ConversorSintegra::Documento ConversorSintegra::documento_da_nota(const NotaInformacao& nota, bool propria) {
  const LinhaInformacao& h = nota.cabecalho;
  Documento doc;
  doc.modelo = *mapear(kModelos, std::to_string(h.inteiro(L04::Modelo)));
  doc.serie = ascii_maiusculo(h.texto(L04::Serie));
  const std::string numero = codigo_numerico(h.texto(L04::Numero), "número (C03)");
  if (numero.empty()) throw DataProblem("nota sem número", "nota sem número (C03)");
  doc.numero =
      numero_de(numero.size() > 6 ? std::string_view(numero).substr(numero.size() - 6) : numero, "número (C03)");
  doc.emitente = propria ? 'P' : 'T';
  doc.situacao = mapa_ou_erro(mapear(kSituacoes, h.texto(L04::Situacao)), "Situação (C24)", h.texto(L04::Situacao))[0];
  const bool inutilizada = doc.situacao == '4';
  const int coluna_data = !propria && !h.texto(L04::EntradaSaida).empty() ? L04::EntradaSaida : L04::Emissao;
  doc.data = inutilizada ? inicio_ : h.data(coluna_data);
  if (inutilizada) {
    doc.ie = kIsento;
    doc.uf = uf_;
  } else {
    if (!nota.parte) throw DataProblem("nota sem participante", "nota sem a linha 05 da sua parte");
    const LinhaInformacao& p = *nota.parte;
    doc.uf = ascii_maiusculo(p.texto(L05::Uf));
    const char cfop = codigo_numerico(h.texto(L04::Cfop), "CFOP (C12)").append("0")[0];
    if (doc.uf.empty() && (cfop == '3' || cfop == '7')) doc.uf = kExterior;
    if (doc.uf != kExterior) {
      // Each party's identities are checked once, however many notes it has.
      const std::string parte = fmt::format("da parte {}-{}", p.texto(L05::Papel), p.texto(L05::Codigo));
      const bool nova = partes_conferidas_.insert(parte).second;
      const std::string onde = fmt::format("Linha {} do arquivo de informações: ", p.numero);
      doc.cnpj = cnpj(p.texto(L05::CnpjCpf), parte, onde, nova);
      // A person (CPF) has no IE: the line's registration is an identity card number.
      const bool pessoa = identidade::documento(p.texto(L05::CnpjCpf)).size() == 11;
      doc.ie = pessoa ? std::string(kIsento) : inscricao(p.texto(L05::Ie), doc.uf, parte, onde, nova);
    }
  }
  if (doc.uf == kExterior) doc.ie = kIsento;
  if (!propria && antes(doc.data, inicio_)) doc.situacao = doc.situacao == 'S' ? 'X' : 'E';
  return doc;
}

// One part per CFOP and rate of the items, in the order they first appear, adding up to the
// note's total; a note without items is one part from its header.
std::vector<ConversorSintegra::Parcela> ConversorSintegra::parcelas_da_nota(const NotaInformacao& nota,
                                                                           const Documento& doc) const {
  const LinhaInformacao& h = nota.cabecalho;
  const std::int64_t cfop_da_nota = numero_de(h.texto(L04::Cfop), "CFOP (C12)");
  if (na_lista(kSituacoesSemValor, std::string_view(&doc.situacao, 1)))
    return {Parcela{cfop_da_nota ? cfop_da_nota
                    : nota.itens.empty() ? 0
                                         : numero_de(nota.itens[0].texto(L06::Cfop), "item 1, CFOP")}};
  std::vector<Parcela> parcelas;
  if (nota.itens.empty()) {
    Parcela p{cfop_da_nota, 0, h.centesimos(L04::Total), h.centesimos(L04::IcmsBase), h.centesimos(L04::IcmsValor)};
    p.outras = p.valor - p.base;
    if (p.base > 0) p.aliquota = (p.icms * 10000 * 2 / p.base + 1) / 2;
    parcelas.push_back(p);
  }
  for (const LinhaInformacao& i : nota.itens) {
    const std::string item = fmt::format("item {} (linha {})", i.texto(L06::Item), i.numero);
    const std::int64_t cfop =
        i.texto(L06::Cfop).empty() ? cfop_da_nota : numero_de(i.texto(L06::Cfop), item + ", CFOP");
    const std::int64_t aliquota = i.centesimos(L06::IcmsAliquota);
    auto p = std::find_if(parcelas.begin(), parcelas.end(),
                          [&](const Parcela& x) { return x.cfop == cfop && x.aliquota == aliquota; });
    if (p == parcelas.end()) p = parcelas.insert(parcelas.end(), Parcela{cfop, aliquota});
    const std::int64_t valor = i.centesimos(L06::PrecoTotal) - i.centesimos(L06::Desconto) + i.centesimos(L06::Frete) +
                               i.centesimos(L06::Seguro) + i.centesimos(L06::OutrasDespesas) +
                               i.centesimos(L06::IpiValor) + i.centesimos(L06::IcmsStValor);
    const std::int64_t base = i.centesimos(L06::IcmsBase);
    p->valor += valor;
    p->base += base;
    p->icms += i.centesimos(L06::IcmsValor);
    (isenta(i.texto(L06::IcmsCst), item + ", CST do ICMS") ? p->isenta : p->outras) += valor - base;
  }
  std::int64_t soma = 0;
  for (const Parcela& p : parcelas) soma += p.valor;
  auto maior = std::max_element(parcelas.begin(), parcelas.end(),
                                [](const Parcela& a, const Parcela& b) { return a.valor < b.valor; });
  maior->valor += h.centesimos(L04::Total) - soma;
  maior->outras += h.centesimos(L04::Total) - soma;
  return parcelas;
}

void ConversorSintegra::escrever_itens(const NotaInformacao& nota, const Documento& doc,
                                       const std::vector<Parcela>& parcelas) {
  const LinhaInformacao& h = nota.cabecalho;
  const bool equipamento = h.texto(L04::TipoNota) == std::to_string(kNotaVendaEquipamento);
  const auto chave = [&]() -> Bloco& {
    return b54_.novo().digitos(doc.cnpj).texto(doc.modelo).texto(doc.serie).numero(doc.numero);
  };
  for (const LinhaInformacao& i : nota.itens) {
    const std::int64_t item = i.inteiro(L06::Item);
    if (item < 1 || item >= kPrimeiroItemEspecial)
      throw DataProblem("item fora da numeração do registro 54",
                        fmt::format("item {} (linha {}): o registro 54 numera itens de 1 a {}", item, i.numero,
                                    kPrimeiroItemEspecial - 1));
    const std::string_view tipo_item = equipamento ? "1" : i.texto(L06::TipoItem);
    const std::string& produto = usar_produto(tipo_item, i.texto(L06::Produto), i);
    const std::string onde = fmt::format("item {} (linha {})", item, i.numero);
    const std::int64_t cfop = i.texto(L06::Cfop).empty() ? numero_de(h.texto(L04::Cfop), "CFOP (C12)")
                                                         : numero_de(i.texto(L06::Cfop), onde + ", CFOP");
    const std::string cst = cst_do_item(i.texto(L06::IcmsCst), onde + ", CST do ICMS");
    std::int64_t quantidade = 0;
    try {
      quantidade = i.decimal_sem_perda(L06::Quantidade, 3);
    } catch (const DataProblem& p) {
      throw p.within(onde + ", quantidade: ");
    }
    chave().numero(cfop).texto(cst).numero(item).texto(produto);
    b54_.numero(quantidade, 3).numero(i.centesimos(L06::PrecoTotal), 2);
    b54_.numero(i.centesimos(L06::Desconto), 2).numero(i.centesimos(L06::IcmsBase), 2);
    b54_.numero(i.centesimos(L06::IcmsStBase), 2).numero(i.centesimos(L06::IpiValor), 2);
    b54_.numero(i.centesimos(L06::IcmsAliquota), 2).fim();
  }
  // Freight, insurance and other expenses of the header, under the note's CFOP when it has
  // a part of its own.
  const std::int64_t cfop_da_nota = numero_de(h.texto(L04::Cfop), "CFOP (C12)");
  const bool tem_cfop = std::any_of(parcelas.begin(), parcelas.end(), [&](const Parcela& p) { return p.cfop == cfop_da_nota; });
  const std::int64_t cfop = tem_cfop ? cfop_da_nota : parcelas.front().cfop;
  for (const auto& [item, coluna] :
       {std::pair{kItemFrete, L04::Frete}, {kItemSeguro, L04::Seguro}, {kItemOutrasDespesas, L04::OutrasDespesas}}) {
    const std::int64_t valor = h.centesimos(coluna);
    if (valor == 0) continue;
    chave().numero(cfop).brancos().numero(item).brancos().zeros().zeros().numero(valor, 2);
    b54_.zeros().zeros().zeros().zeros().fim();
  }
}

// One type-70 record per CFOP: the parts of the rates of one CFOP summed.
void ConversorSintegra::escrever_transporte(const Documento& doc, const std::vector<Parcela>& parcelas) {
  std::vector<Parcela> por_cfop;
  for (const Parcela& p : parcelas) {
    auto c = std::find_if(por_cfop.begin(), por_cfop.end(), [&](const Parcela& x) { return x.cfop == p.cfop; });
    if (c == por_cfop.end()) c = por_cfop.insert(por_cfop.end(), Parcela{p.cfop});
    c->valor += p.valor;
    c->base += p.base;
    c->icms += p.icms;
    c->isenta += p.isenta;
    c->outras += p.outras;
  }
  for (const Parcela& p : por_cfop) {
    b70_.novo().digitos(doc.cnpj).texto(doc.ie).data(doc.data).texto(doc.uf).texto(doc.modelo).texto(doc.serie);
    b70_.brancos().numero(doc.numero).numero(p.cfop).numero(p.valor, 2).numero(p.base, 2).numero(p.icms, 2);
    b70_.numero(p.isenta, 2).numero(p.outras, 2).texto(kFreteFob).texto(std::string_view(&doc.situacao, 1)).fim();
  }
}

const std::string& ConversorSintegra::usar_produto(std::string_view tipo_item, std::string_view codigo,
                                                    const LinhaInformacao& linha) {
  const std::string_view prefixo = mapa_ou_erro(mapear(kPrefixosDeItem, tipo_item), "Tipo de item", tipo_item);
  std::string chave = std::string(prefixo) + std::string(codigo);
  if (codigo.empty()) throw DataProblem("item sem código", fmt::format("linha {} sem código de item", linha.numero));
  if (const auto it = usados_.find(chave); it != usados_.end()) return it->first;
  // An item line describes its product; an inventory line does not.
  Produto uso;
  uso.numero = linha.numero;
  uso.tipo_linha = linha.tipo;
  if (linha.tipo == L06::kTipo) {
    uso.descricao = linha.texto(L06::Descricao);
    uso.unidade = linha.texto(L06::Unidade);
    uso.ncm = linha.texto(L06::Ncm);
  }
  return usados_.emplace(std::move(chave), std::move(uso)).first->first;
}

void ConversorSintegra::escrever_produtos(const CatalogoSintegra& catalogo) {
  for (const auto& [codigo, uso] : usados_) {
    // The catalogue line (description, unit, NCM), else the item line that used the code; an
    // inventory line alone does not describe its product.
    const Produto* cadastro = catalogo.produto(codigo);
    const Produto* fonte = cadastro ? cadastro : uso.tipo_linha == L06::kTipo ? &uso : nullptr;
    if (!fonte) {
      problemas_.anota(DataProblem(
          "produto fora do cadastro (linhas 12)",
          fmt::format("Linha {} do arquivo de informações: o produto {} não está no cadastro (linhas 12)", uso.numero,
                      codigo)));
      continue;
    }
    try {
      b75_.novo().data(inicio_).data(fim_).texto(codigo).texto(codigo_numerico(fonte->ncm, "NCM"));
      b75_.texto(fonte->descricao).texto(fonte->unidade);
      b75_.zeros().zeros().zeros().zeros().fim();
    } catch (const DataProblem& err) {
      problemas_.anota(err.within(fmt::format("Produto {} (linha {} do arquivo de informações): ", codigo, fonte->numero)));
    }
  }
}

// One pair per type written besides 10, 11 and 90, then 99 with every record of the file.
void ConversorSintegra::escrever_totais() {
  std::vector<std::pair<int, int>> pares;
  int registros = b10_.quantos() + b11_.quantos();
  for (const Bloco* b : {&b50_, &b54_, &b70_, &b74_, &b75_}) {
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
