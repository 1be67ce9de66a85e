#include "fiscal/sintegra_validador.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/value.h"
#include "fiscal/identidade.h"
#include "fiscal/inscricao_estadual.h"

namespace infofiscal::sintegra {

namespace {

bool so_digitos(std::string_view s) {
  return std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}
bool em_branco(std::string_view s) { return s.find_first_not_of(' ') == std::string_view::npos; }
bool zeros(std::string_view s) { return s.find_first_not_of('0') == std::string_view::npos; }
std::string_view aparado(std::string_view s) {
  const auto fim = s.find_last_not_of(' ');
  return fim == std::string_view::npos ? std::string_view() : s.substr(0, fim + 1);
}
int inteiro(std::string_view digitos) {
  int v = 0;
  for (const char c : digitos) v = v * 10 + (c - '0');
  return v;
}

std::optional<TimeStamp> data_aaaammdd(std::string_view s) {
  if (s.size() != 8 || !so_digitos(s)) return std::nullopt;
  TimeStamp t;
  t.year = inteiro(s.substr(0, 4));
  t.month = inteiro(s.substr(4, 2));
  t.day = inteiro(s.substr(6, 2));
  if (t.month < 1 || t.month > 12 || t.day < 1 || t.day > days_in_month(t.month, t.year)) return std::nullopt;
  return t;
}

int dias(const TimeStamp& t) { return t.year * 10000 + t.month * 100 + t.day; }

// "campo 'Valor total' (posições 57-69)"
std::string nome_do_campo(const Layout& layout, const Campo& campo) {
  const int ini = layout.inicio(campo.numero) + 1;
  if (campo.tamanho == 1) return fmt::format("campo '{}' (posição {})", campo.nome, ini);
  return fmt::format("campo '{}' (posições {}-{})", campo.nome, ini, ini + campo.tamanho - 1);
}

std::string lista_legivel(std::string_view lista) {
  std::string out(lista);
  for (std::size_t p = 0; (p = out.find(' ', p)) != std::string::npos; p += 2) out.replace(p, 1, ", ");
  return out;
}

// The key of a document in a record: CNPJ, model, series and number, in the first 25 of the N
// characters (the CFOP may follow).
template <std::size_t N>
std::array<char, N> chave(const Layout& l, std::string_view r, int cnpj, int modelo, int serie, int numero) {
  std::array<char, N> k{};
  std::size_t n = 0;
  for (const int f : {cnpj, modelo, serie, numero}) {
    const std::string_view campo = l.texto(r, f);
    std::copy(campo.begin(), campo.end(), k.begin() + n);
    n += campo.size();
  }
  return k;
}

template <std::size_t N>
std::string_view texto_de(const std::array<char, N>& k) {
  return std::string_view(k.data(), N);
}

std::string descrever_chave(std::string_view k) {
  return fmt::format("CNPJ {}, modelo {}, série '{}', número {}", k.substr(0, 14), k.substr(14, 2),
                     aparado(k.substr(16, 3)), k.substr(19, 6));
}

}  // namespace

void ValidadorSintegra::achado(int numero, std::string texto) { achados_.emplace_back(numero, std::move(texto)); }

bool ValidadorSintegra::item_novo(Itens54& itens, const Chave& doc, std::string_view item) {
  if (item.size() != 3 || !so_digitos(item)) return itens_outros_.emplace(std::string(texto_de(doc)) + std::string(item)).second;
  const auto n = static_cast<std::uint16_t>(inteiro(item));
  const auto pos = std::lower_bound(itens.begin(), itens.end(), n);
  if (pos != itens.end() && *pos == n) return false;
  itens.insert(pos, n);
  return true;
}

void ValidadorSintegra::le(std::string_view pedaco) {
  divisor_.le(pedaco, [this](std::string_view texto, bool com_lf) { registro(texto, com_lf); });
}

void ValidadorSintegra::registro(std::string_view texto, bool com_lf) {
  Registro r{++total_, texto};
  if (com_lf && !r.texto.empty() && r.texto.back() == '\r') {
    r.texto.remove_suffix(1);
  } else {
    achado(r.numero, "termina sem CR LF");
  }
  if (r.texto.size() != static_cast<std::size_t>(kTamanhoRegistro))
    achado(r.numero, fmt::format("tem {} caracteres; todo registro tem {}", r.texto.size(), kTamanhoRegistro));
  const auto ruim = std::find_if(r.texto.begin(), r.texto.end(), [](char c) { return c < 0x20 || c > 0x7E; });
  if (ruim != r.texto.end())
    achado(r.numero, fmt::format("caractere inválido na posição {}: só ASCII visível", ruim - r.texto.begin() + 1));

  const std::string_view tipo_texto = r.texto.substr(0, 2);
  const int tipo = tipo_texto.size() == 2 && so_digitos(tipo_texto) ? inteiro(tipo_texto) : -1;
  const int ordem = ordem_do_tipo(tipo);
  if (ordem < 0) {
    achado(r.numero, fmt::format("tipo '{}' não existe no leiaute", tipo_texto));
    return;
  }
  ++por_tipo_[tipo];
  if (ordem < ultima_ordem_)
    achado(r.numero, fmt::format("registro tipo {} depois do tipo {}: os tipos vêm agrupados, em ordem crescente",
                                 tipo, ultimo_tipo_));
  if (ordem > ultima_ordem_) ultima_ordem_ = ordem, ultimo_tipo_ = tipo;
  if ((tipo == 10 && r.numero != 1) || (tipo == 11 && r.numero != 2))
    achado(r.numero, fmt::format("o registro tipo {} deve ser o {} do arquivo, e único", tipo,
                                 tipo == 10 ? "primeiro" : "segundo"));
  const Layout* layout = layout_do_tipo(tipo);
  if (!layout || r.texto.size() != static_cast<std::size_t>(kTamanhoRegistro)) return;
  conferir_campos(r, *layout);
  if (tipo == 10 && r.numero == 1) conferir_10(r);
  if (tipo == 50) conferir_50(r);
  if (tipo == 54) conferir_54(r);
  if (tipo == 74 || tipo == 75) conferir_74_75(r, tipo);
  if (tipo == 90) registros90_.emplace_back(r.numero, r.texto);
}

std::vector<std::string> ValidadorSintegra::conclui() {
  divisor_.fim([this](std::string_view texto, bool com_lf) { registro(texto, com_lf); });
  if (total_ == 0) achado(0, "o arquivo está vazio");
  if (!por_tipo_.count(10)) achado(0, "falta o registro tipo 10");
  if (!por_tipo_.count(11)) achado(0, "falta o registro tipo 11");
  conferir_54_sem_50();
  conferir_documentos();
  conferir_90();

  // Findings of a record in the order of the records; those of the whole file last.
  std::stable_sort(achados_.begin(), achados_.end(), [](const auto& a, const auto& b) {
    return static_cast<unsigned>(a.first - 1) < static_cast<unsigned>(b.first - 1);
  });
  std::vector<std::string> saida;
  for (const auto& [n, texto] : achados_)
    saida.push_back(n > 0 ? fmt::format("Registro {}: {}", n, texto) : fmt::format("Arquivo: {}", texto));
  return saida;
}

void ValidadorSintegra::conferir_campos(const Registro& r, const Layout& layout) {
  for (const Campo& campo : layout.campos) {
    const std::string_view valor = layout.texto(r.texto, campo.numero);
    if (campo.formato == Formato::N && !so_digitos(valor)) {
      achado(r.numero, fmt::format("{} não é numérico: '{}'", nome_do_campo(layout, campo), valor));
      continue;
    }
    if (campo.formato == Formato::X && !em_branco(valor) && valor.front() == ' ') {
      achado(r.numero, fmt::format("{} não está alinhado à esquerda: '{}'", nome_do_campo(layout, campo), valor));
      continue;
    }
    conferir_conteudo(r, layout, campo, valor);
  }
}

void ValidadorSintegra::conferir_conteudo(const Registro& r, const Layout& layout, const Campo& campo,
                                          std::string_view valor) {
  const auto erro = [&](std::string_view porque) {
    achado(r.numero, fmt::format("{} {}", nome_do_campo(layout, campo), porque));
  };
  const std::string_view situacao = layout.tipo == 50   ? layout.texto(r.texto, r50::Situacao)
                                    : layout.tipo == 70 ? layout.texto(r.texto, r70::Situacao)
                                                        : std::string_view();
  switch (campo.conteudo) {
    case Conteudo::Livre:
    case Conteudo::Tipo:
    case Conteudo::Pares90:
      break;
    case Conteudo::Texto:
      if (em_branco(valor)) erro("está em branco");
      break;
    case Conteudo::Data:
    case Conteudo::DataDoPeriodo: {
      const auto data = data_aaaammdd(valor);
      if (!data) {
        erro(fmt::format("não é uma data AAAAMMDD: '{}'", valor));
      } else if (campo.conteudo == Conteudo::DataDoPeriodo && periodo_ && !na_lista(kSituacoesExtemporaneas, situacao) &&
                 (dias(*data) < dias(periodo_->first) || dias(*data) > dias(periodo_->second))) {
        erro(fmt::format("fora do período do arquivo ({:04}{:02}{:02} a {:04}{:02}{:02}): '{}'", periodo_->first.year,
                         periodo_->first.month, periodo_->first.day, periodo_->second.year, periodo_->second.month,
                         periodo_->second.day, valor));
      }
      break;
    }
    case Conteudo::Cnpj:
    case Conteudo::CnpjInformante:
      if (const auto v = identidade::verificar_cnpj(valor);
          (campo.conteudo == Conteudo::CnpjInformante || !zeros(valor)) && !v)
        erro(fmt::format("não é um CNPJ válido: '{}': {}", valor, v.motivo));
      break;
    case Conteudo::Inscricao: {
      const std::string_view ie = aparado(valor);
      if (ie.empty() || !std::all_of(ie.begin(), ie.end(), [](char c) {
            return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z');
          })) {
        erro(fmt::format("deve ter só letras maiúsculas e dígitos, ou {}: '{}'", kIsento, valor));
        break;
      }
      // By the rule of the record's state (type 90 repeats the informant's of type 10).
      const std::string_view uf = layout.tipo == 50 ? layout.texto(r.texto, r50::Uf)
                                  : layout.tipo == 70 ? layout.texto(r.texto, r70::Uf)
                                  : layout.tipo == 10 ? layout.texto(r.texto, r10::Uf)
                                  : r10_ ? k10.texto(*r10_, r10::Uf) : std::string_view();
      if (const auto v = identidade::verificar_inscricao_estadual(uf, ie); !uf.empty() && uf != kExterior && !v)
        erro(fmt::format("não é uma inscrição estadual de {}: '{}': {}", uf, valor, v.motivo));
      break;
    }
    case Conteudo::Uf:
    case Conteudo::UfOuExterior:
      if (!na_lista(kUfs, valor) && !(campo.conteudo == Conteudo::UfOuExterior && valor == kExterior))
        erro(fmt::format("não é uma UF: '{}'", valor));
      break;
    case Conteudo::Codigo:
      if (!na_lista(campo.codigos, valor))
        erro(fmt::format("tem '{}'; os códigos válidos são {}", valor, lista_legivel(campo.codigos)));
      break;
    case Conteudo::Cfop:
      // A voided NF-e number has no operation: its CFOP is zeros.
      if (std::string_view("123567").find(valor[0]) == std::string_view::npos &&
          !(zeros(valor) && situacao == "4"))
        erro(fmt::format("não é um CFOP: '{}'", valor));
      break;
    case Conteudo::NumeroDoItem: {
      const int item = inteiro(valor);
      if ((item < 1 || item >= kPrimeiroItemEspecial) && !na_lista(k54Especiais, valor))
        erro(fmt::format("tem '{}'; os itens vão de 001 a {:03}, ou são os especiais {}", valor,
                         kPrimeiroItemEspecial - 1, lista_legivel(k54Especiais)));
      break;
    }
    case Conteudo::Brancos:
      if (!em_branco(valor)) erro(fmt::format("deve estar em branco: '{}'", valor));
      break;
  }
}

void ValidadorSintegra::conferir_10(const Registro& r) {
  r10_ = std::string(r.texto);
  const auto ini = data_aaaammdd(k10.texto(r.texto, r10::DataInicial));
  const auto fim = data_aaaammdd(k10.texto(r.texto, r10::DataFinal));
  if (!ini || !fim) return;
  if (ini->day != 1 || fim->year != ini->year || fim->month != ini->month ||
      fim->day != days_in_month(ini->month, ini->year))
    achado(r.numero, "o período (campos 08 e 09) deve ir do primeiro ao último dia de um mês");
  if (dias(*ini) <= dias(*fim)) periodo_.emplace(*ini, *fim);
}

void ValidadorSintegra::conferir_50(const Registro& r) {
  const auto campo = [&](int f) { return k50.texto(r.texto, f); };
  const std::string_view situacao = campo(r50::Situacao), cfop = campo(r50::Cfop), uf = campo(r50::Uf);
  if (na_lista(kSituacoesSemValor, situacao)) {
    for (int f = r50::Valor; f <= r50::Aliquota; ++f)
      if (!zeros(campo(f))) {
        achado(r.numero, fmt::format("documento na situação {} não leva valores (campos 11 a 16)", situacao));
        break;
      }
  }
  const char sentido = cfop[0];
  if ((sentido == '5' || sentido == '6' || sentido == '7') && campo(r50::Emitente) != "P")
    achado(r.numero, fmt::format("CFOP de saída {} com emitente '{}': toda saída é emitida pelo informante (P)", cfop,
                                 campo(r50::Emitente)));
  if (r10_) {
    const std::string_view uf10 = k10.texto(*r10_, r10::Uf);
    if ((sentido == '1' || sentido == '5') && uf != uf10)
      achado(r.numero, fmt::format("CFOP {} é de operação interna, mas a UF é {} e a do informante {}", cfop, uf, uf10));
    if ((sentido == '2' || sentido == '6') && (uf == uf10 || uf == kExterior))
      achado(r.numero, fmt::format("CFOP {} é de operação interestadual, mas a UF é {}", cfop, uf));
  }
  if ((sentido == '3' || sentido == '7') &&
      (uf != kExterior || !zeros(campo(r50::Cnpj)) || aparado(campo(r50::IE)) != kIsento))
    achado(r.numero, fmt::format("CFOP {} é de operação com o exterior: UF {}, CNPJ zeros e IE {}", cfop, kExterior,
                                 kIsento));
  auto doc_cfop = chave<kChave + 4>(k50, r.texto, r50::Cnpj, r50::Modelo, r50::Serie, r50::Numero);
  std::copy(cfop.begin(), cfop.end(), doc_cfop.begin() + kChave);
  chaves50_.insert(doc_cfop);
  if (!na_lista(kSituacoesSemValor, situacao) && na_lista(kModelosComItens, campo(r50::Modelo)))
    documentos50_.emplace_back(r.numero, chave<kChave>(k50, r.texto, r50::Cnpj, r50::Modelo, r50::Serie, r50::Numero));
}

void ValidadorSintegra::conferir_54(const Registro& r) {
  const auto campo = [&](int f) { return k54.texto(r.texto, f); };
  const Chave doc = chave<kChave>(k54, r.texto, r54::Cnpj, r54::Modelo, r54::Serie, r54::Numero);
  Itens54& itens = documentos54_[doc];
  auto doc_cfop = chave<kChave + 4>(k54, r.texto, r54::Cnpj, r54::Modelo, r54::Serie, r54::Numero);
  const std::string_view cfop = campo(r54::Cfop);
  std::copy(cfop.begin(), cfop.end(), doc_cfop.begin() + kChave);
  if (!chaves50_.count(doc_cfop)) {
    sem_50_.emplace_back(achados_.size(), doc_cfop);
    achado(r.numero, fmt::format("item sem registro 50 do mesmo documento e CFOP ({}, CFOP {})",
                                 descrever_chave(texto_de(doc)), cfop));
  }
  const std::string_view item = campo(r54::Item);
  if (!item_novo(itens, doc, item))
    achado(r.numero, fmt::format("item {} repetido no documento ({})", item, descrever_chave(texto_de(doc))));
  const std::string_view produto = aparado(campo(r54::Produto));
  if (na_lista(k54Especiais, item)) {
    if (!produto.empty() || !zeros(campo(r54::Quantidade)))
      achado(r.numero, fmt::format("o item especial {} não leva código de produto nem quantidade", item));
  } else if (produto.empty()) {
    achado(r.numero, fmt::format("{} está em branco", nome_do_campo(k54, k54.campo(r54::Produto))));
  } else {
    produtos_usados_[std::string(produto)].push_back(r.numero);
  }
}

void ValidadorSintegra::conferir_74_75(const Registro& r, int tipo) {
  if (tipo == 74) {
    produtos_usados_[std::string(aparado(k74.texto(r.texto, r74::Produto)))].push_back(r.numero);
    return;
  }
  produtos75_.emplace(aparado(k75.texto(r.texto, r75::Produto)));
  const auto ini = data_aaaammdd(k75.texto(r.texto, r75::DataInicial));
  const auto fim = data_aaaammdd(k75.texto(r.texto, r75::DataFinal));
  if (ini && fim && dias(*ini) > dias(*fim)) achado(r.numero, "a data inicial é posterior à data final");
}

// A 54 read before the 50 of its document and CFOP (a file out of order) has that 50 after all.
void ValidadorSintegra::conferir_54_sem_50() {
  constexpr int kResolvido = -1;
  for (const auto& [achado, chave50] : sem_50_)
    if (chaves50_.count(chave50)) achados_[achado].first = kResolvido;
  std::erase_if(achados_, [](const auto& a) { return a.first == kResolvido; });
}

void ValidadorSintegra::conferir_documentos() {
  std::unordered_set<Chave, HashChave> vistos;
  for (const auto& [numero, doc] : documentos50_)
    if (!documentos54_.count(doc) && vistos.insert(doc).second)
      achado(numero, fmt::format("documento sem registro 54 dos seus itens ({})", descrever_chave(texto_de(doc))));
  // A record names one product: sorted by record at the end, these findings come in order.
  for (const auto& [produto, registros] : produtos_usados_)
    if (!produtos75_.count(produto))
      for (const int numero : registros) achado(numero, fmt::format("produto '{}' sem registro 75", produto));
}

void ValidadorSintegra::conferir_90() {
  const auto& registros90 = registros90_;
  if (registros90.empty()) {
    if (!por_tipo_.count(90)) achado(0, "falta o registro tipo 90");  // else only a broken one
    return;
  }
  struct Par {
    int registro, tipo, conta;
  };
  std::vector<Par> pares;
  for (const auto& [numero, registro] : registros90) {
    const Registro r{numero, registro};
    if (r10_ && (k90.texto(r.texto, r90::Cnpj) != k10.texto(*r10_, r10::Cnpj) ||
                 k90.texto(r.texto, r90::IE) != k10.texto(*r10_, r10::IE)))
      achado(r.numero, "CNPJ e inscrição estadual devem ser os do registro tipo 10");
    const std::string_view quantos = k90.texto(r.texto, r90::Quantos90);
    if (so_digitos(quantos) && inteiro(quantos) != static_cast<int>(registros90.size()))
      achado(r.numero, fmt::format("{} é {}, mas o arquivo tem {} registros tipo 90",
                                   nome_do_campo(k90, k90.campo(r90::Quantos90)), quantos, registros90.size()));
    const std::string_view texto = k90.texto(r.texto, r90::Pares);
    constexpr int kPar = kTamanhoTipoDoPar + kTamanhoContaDoPar;
    bool branco = false;
    for (int s = 0; s < kParesPor90; ++s) {
      const std::string_view par = texto.substr(s * kPar, kPar);
      const int posicao = k90.inicio(r90::Pares) + s * kPar + 1;
      if (em_branco(par)) {
        branco = true;
      } else if (branco || !so_digitos(par)) {
        achado(r.numero, fmt::format("par de totais inválido na posição {}: '{}'", posicao, par));
      } else {
        pares.push_back({r.numero, inteiro(par.substr(0, kTamanhoTipoDoPar)), inteiro(par.substr(kTamanhoTipoDoPar))});
      }
    }
  }
  const int ultimo = registros90.back().first;
  int anterior = 0;
  bool geral = false;
  for (const Par& p : pares) {
    if (p.tipo <= anterior || geral)
      achado(p.registro, fmt::format("total do tipo {:02} fora de ordem: os totais vêm em ordem crescente de tipo, o 99 por último",
                                     p.tipo));
    anterior = p.tipo;
    if (p.tipo == kTipoTotalGeral) {
      geral = true;
      if (p.conta != total_)
        achado(p.registro, fmt::format("total geral (99) é {}, mas o arquivo tem {} registros", p.conta, total_));
    } else if (p.tipo == 10 || p.tipo == 11 || p.tipo == 90) {
      achado(p.registro, fmt::format("o tipo {} não tem total próprio: conta só no total geral (99)", p.tipo));
    } else {
      const auto it = por_tipo_.find(p.tipo);
      const int conta = it == por_tipo_.end() ? 0 : it->second;
      if (p.conta != conta)
        achado(p.registro, fmt::format("total do tipo {} é {}, mas o arquivo tem {} registros desse tipo", p.tipo,
                                       p.conta, conta));
    }
  }
  if (!geral) achado(ultimo, "falta o total geral (tipo 99)");
  std::vector<int> tipos;
  for (const auto& [tipo, conta] : por_tipo_)
    if (tipo != 10 && tipo != 11 && tipo != 90 &&
        std::none_of(pares.begin(), pares.end(), [t = tipo](const Par& p) { return p.tipo == t; }))
      tipos.push_back(tipo);
  std::sort(tipos.begin(), tipos.end());
  for (const int tipo : tipos) achado(ultimo, fmt::format("falta o total do tipo {}", tipo));
}

}  // namespace infofiscal::sintegra
