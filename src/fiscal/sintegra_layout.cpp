#include "fiscal/sintegra_layout.h"

#include <fmt/format.h>

#include "base/code_page.h"
#include "base/error.h"

namespace infofiscal::sintegra {

namespace {

using enum Formato;
using enum Conteudo;

template <std::size_t N>
constexpr bool tabela_certa(const std::array<Campo, N>& campos) {
  int soma = 0;
  for (std::size_t i = 0; i < N; ++i) {
    if (campos[i].numero != static_cast<int>(i) + 1) return false;
    soma += campos[i].tamanho;
  }
  return soma == kTamanhoRegistro;
}

// Type 10, the informant and the period. The period is always one whole calendar month.
constexpr std::array<Campo, 12> kCampos10 = {{
    {r10::Tipo, "Tipo", 2, N, 0, Tipo},
    {r10::Cnpj, "CNPJ", 14, N, 0, CnpjInformante},
    {r10::IE, "Inscrição Estadual", 14, X, 0, Inscricao},
    {r10::Nome, "Nome do contribuinte", 35, X, 0, Texto},
    {r10::Municipio, "Município", 30, X, 0, Texto},
    {r10::Uf, "Unidade da Federação", 2, X, 0, Uf},
    {r10::Fax, "Fax", 10, N},
    {r10::DataInicial, "Data inicial", 8, N, 0, Data},
    {r10::DataFinal, "Data final", 8, N, 0, Data},
    {r10::Convenio, "Código da identificação do convênio", 1, X, 0, Codigo, "3"},
    {r10::Natureza, "Código da natureza das operações", 1, X, 0, Codigo, "1 2 3"},
    {r10::Finalidade, "Código da finalidade do arquivo", 1, X, 0, Codigo, "1 2 3 5"},
}};

// Type 11, the informant's address and contact. The contact is the accountant of line 03 (the
// person who answers for the information); the company's name and phone when that line has
// no name.
constexpr std::array<Campo, 8> kCampos11 = {{
    {r11::Tipo, "Tipo", 2, N, 0, Tipo},
    {r11::Logradouro, "Logradouro", 34, X},
    {r11::Numero, "Número", 5, N},
    {r11::Complemento, "Complemento", 22, X},
    {r11::Bairro, "Bairro", 15, X},
    {r11::Cep, "CEP", 8, N},
    {r11::Contato, "Nome do contato", 28, X},
    {r11::Telefone, "Telefone", 12, N},
}};

// Type 50, one record per note and CFOP x ICMS rate. Choices where the manual leaves one:
// - CNPJ: a party with a CPF, a foreign party or none gives zeros (a CPF would fail the CNPJ
//   check digits); IE ISENTO when the party has none, and for a person (CPF), whose
//   registration in the information file is an identity card number. A CNPJ with letters does
//   not fit this numeric field: the month is refused naming each such party.
// - Número: NF-e numbers longer than 6 digits keep their last 6.
// - Data: purchases by receipt date (issue date when none), own notes by issue date; a
//   purchase received before the period is a late entry (E, or X when cancelled).
// - Valor: the item's share is price - discount + freight + insurance + other expenses + IPI
//   + ICMS-ST; what is not ICMS base goes to Isenta for tax codes 20, 30, 40, 41 and CSOSN
//   102, 103, 300, 400, to Outras otherwise; the difference to the note's total goes to Outras
//   of the note's largest record, so the records of a note add up to its total.
// - A voided NF-e number (situation 4): party zeros / ISENTO / the informant's UF, the first
//   day of the period, CFOP zeros, blank series.
// Sorted by date, model, series, number, CFOP and rate.
constexpr std::array<Campo, 17> kCampos50 = {{
    {r50::Tipo, "Tipo", 2, N, 0, Tipo},
    {r50::Cnpj, "CNPJ", 14, N, 0, Cnpj},
    {r50::IE, "Inscrição Estadual", 14, X, 0, Inscricao},
    {r50::Data, "Data de emissão ou recebimento", 8, N, 0, DataDoPeriodo},
    {r50::Uf, "Unidade da Federação", 2, X, 0, UfOuExterior},
    {r50::Modelo, "Modelo", 2, N, 0, Codigo, "01 04 06 21 22 55"},
    {r50::Serie, "Série", 3, X},
    {r50::Numero, "Número", 6, N},
    {r50::Cfop, "CFOP", 4, N, 0, Cfop},
    {r50::Emitente, "Emitente", 1, X, 0, Codigo, "P T"},
    {r50::Valor, "Valor total", 13, N, 2},
    {r50::Base, "Base de cálculo do ICMS", 13, N, 2},
    {r50::Icms, "Valor do ICMS", 13, N, 2},
    {r50::Isenta, "Isenta ou não tributada", 13, N, 2},
    {r50::Outras, "Outras", 13, N, 2},
    {r50::Aliquota, "Alíquota", 4, N, 2},
    {r50::Situacao, "Situação", 1, X, 0, Codigo, "N S E X 2 4"},
}};
constexpr std::array<int, 6> kOrdem50 = {r50::Data, r50::Modelo, r50::Serie, r50::Numero, r50::Cfop, r50::Aliquota};

// Type 54, one record per item line of a normal note of model 01 or 55 (cancelled and voided
// notes have none), plus items 991, 992 and 999 for the freight, insurance and other expenses
// of the note's header, under the CFOP of the note when one of its type-50 records has it,
// else under its first. CST: a 2-digit code gets origin 0; longer codes keep their last 3
// digits. Produto: the product's code; equipment and consumption products take the prefix E
// and C, since their codes may repeat a product's. Sorted by the key of the document, CFOP
// and item number.
constexpr std::array<Campo, 16> kCampos54 = {{
    {r54::Tipo, "Tipo", 2, N, 0, Tipo},
    {r54::Cnpj, "CNPJ", 14, N, 0, Cnpj},
    {r54::Modelo, "Modelo", 2, N, 0, Codigo, "01 55"},
    {r54::Serie, "Série", 3, X},
    {r54::Numero, "Número", 6, N},
    {r54::Cfop, "CFOP", 4, N, 0, Cfop},
    {r54::Cst, "CST", 3, X},
    {r54::Item, "Número do item", 3, N, 0, NumeroDoItem},
    {r54::Produto, "Código do produto ou serviço", 14, X},
    {r54::Quantidade, "Quantidade", 11, N, 3},
    {r54::ValorProduto, "Valor do produto", 12, N, 2},
    {r54::Desconto, "Valor do desconto ou despesa acessória", 12, N, 2},
    {r54::Base, "Base de cálculo do ICMS", 12, N, 2},
    {r54::BaseSt, "Base de cálculo do ICMS ST", 12, N, 2},
    {r54::Ipi, "Valor do IPI", 12, N, 2},
    {r54::Aliquota, "Alíquota do ICMS", 4, N, 2},
}};
constexpr std::array<int, 6> kOrdem54 = {r54::Cnpj, r54::Modelo, r54::Serie, r54::Numero, r54::Cfop, r54::Item};

// Type 70, one record per transport document (CT-e 57, CT-e OS 67) of a purchase and per CFOP:
// the items' CFOP and ICMS as type 50 sums them (the rates of one CFOP together), dated by
// receipt, freight FOB (the buyer hired it). Sorted like type 50.
constexpr std::array<Campo, 17> kCampos70 = {{
    {r70::Tipo, "Tipo", 2, N, 0, Tipo},
    {r70::Cnpj, "CNPJ", 14, N, 0, Cnpj},
    {r70::IE, "Inscrição Estadual", 14, X, 0, Inscricao},
    {r70::Data, "Data de emissão ou utilização", 8, N, 0, DataDoPeriodo},
    {r70::Uf, "Unidade da Federação", 2, X, 0, UfOuExterior},
    {r70::Modelo, "Modelo", 2, N, 0, Codigo, "07 08 09 10 11 26 27 57 67"},
    {r70::Serie, "Série", 1, X},
    {r70::Subserie, "Subsérie", 2, X},
    {r70::Numero, "Número", 6, N},
    {r70::Cfop, "CFOP", 4, N, 0, Cfop},
    {r70::Valor, "Valor total do documento fiscal", 13, N, 2},
    {r70::Base, "Base de cálculo do ICMS", 14, N, 2},
    {r70::Icms, "Valor do ICMS", 14, N, 2},
    {r70::Isenta, "Isenta ou não tributada", 14, N, 2},
    {r70::Outras, "Outras", 14, N, 2},
    {r70::Frete, "Modalidade do frete", 1, X, 0, Codigo, "0 1 2"},
    {r70::Situacao, "Situação", 1, X, 0, Codigo, "N S E X"},
}};
constexpr std::array<int, 5> kOrdem70 = {r70::Data, r70::Modelo, r70::Serie, r70::Numero, r70::Cfop};

// Type 74, the inventory: the year-end lines 18/19 and the month-end lines 16/17, each with
// the date of its line 18 or 16, in whatever month they come. Every line is of goods the
// informant owns and holds (posse 1); for posse 1 the holder's CNPJ is zeros and IE and UF
// are blank. Sorted by date and product.
constexpr std::array<Campo, 10> kCampos74 = {{
    {r74::Tipo, "Tipo", 2, N, 0, Tipo},
    {r74::Data, "Data do inventário", 8, N, 0, Data},
    {r74::Produto, "Código do produto", 14, X, 0, Texto},
    {r74::Quantidade, "Quantidade", 13, N, 3},
    {r74::Valor, "Valor do produto", 13, N, 2},
    {r74::Posse, "Código de posse", 1, X, 0, Codigo, "1 2 3"},
    {r74::Cnpj, "CNPJ do possuidor ou proprietário", 14, N, 0, Cnpj},
    {r74::IE, "Inscrição Estadual do possuidor ou proprietário", 14, X},
    {r74::Uf, "UF do possuidor ou proprietário", 2, X},
    {r74::Brancos, "Brancos", 45, X, 0, Brancos},
}};
constexpr std::array<int, 2> kOrdem74 = {r74::Data, r74::Produto};

// Type 75, one record per product code of types 54 and 74, valid for the whole period. From
// the catalogue line 12 of the code (description, unit symbol, NCM digits); a code missing
// from the catalogue takes them from its first item line 06. The information file carries no
// IPI or internal ICMS rate, base reduction or ST base of a product: those are zeros.
constexpr std::array<Campo, 11> kCampos75 = {{
    {r75::Tipo, "Tipo", 2, N, 0, Tipo},
    {r75::DataInicial, "Data inicial", 8, N, 0, Data},
    {r75::DataFinal, "Data final", 8, N, 0, Data},
    {r75::Produto, "Código do produto ou serviço", 14, X, 0, Texto},
    {r75::Ncm, "Código NCM", 8, X},
    {r75::Descricao, "Descrição", 53, X, 0, Texto},
    {r75::Unidade, "Unidade de medida", 6, X},
    {r75::AliquotaIpi, "Alíquota do IPI", 5, N, 2},
    {r75::AliquotaIcms, "Alíquota do ICMS", 4, N, 2},
    {r75::Reducao, "Redução da base de cálculo do ICMS", 5, N, 2},
    {r75::BaseSt, "Base de cálculo do ICMS ST", 13, N, 2},
}};
constexpr std::array<int, 2> kOrdem75 = {r75::Produto, r75::DataInicial};

// Type 90, the totals; see kParesPor90.
constexpr std::array<Campo, 6> kCampos90 = {{
    {r90::Tipo, "Tipo", 2, N, 0, Tipo},
    {r90::Cnpj, "CNPJ", 14, N, 0, CnpjInformante},
    {r90::IE, "Inscrição Estadual", 14, X, 0, Inscricao},
    {r90::Pares, "Totais por tipo", kParesPor90 * (kTamanhoTipoDoPar + kTamanhoContaDoPar), X, 0, Pares90},
    {r90::Brancos, "Brancos", 5, X, 0, Brancos},
    {r90::Quantos90, "Número de registros tipo 90", 1, N},
}};

static_assert(tabela_certa(kCampos10) && tabela_certa(kCampos11) && tabela_certa(kCampos50) &&
              tabela_certa(kCampos54) && tabela_certa(kCampos70) && tabela_certa(kCampos74) && tabela_certa(kCampos75) &&
              tabela_certa(kCampos90));

// Folding of the Latin-1 letters (U+00C0 to U+00FF) to ASCII upper case; '?' for the signs.
constexpr std::string_view kLatin1 = "AAAAAAACEEEEIIIIDNOOOOOXOUUUUYTSAAAAAAACEEEEIIIIDNOOOOO/OUUUUYTY";

// "-1,50" for {-150, 2}: a number as the information file wrote it, for messages.
std::string texto_do_numero(Numero n) {
  if (n.casas == 0) return std::to_string(n.valor);
  std::int64_t escala = 1;
  for (int c = 0; c < n.casas; ++c) escala *= 10;
  const std::int64_t a = n.valor < 0 ? -n.valor : n.valor;
  return fmt::format("{}{},{:0{}}", n.valor < 0 ? "-" : "", a / escala, a % escala, n.casas);
}

[[noreturn]] void nao_cabe(const Campo& campo, std::string_view porque) {
  throw DataProblem("valor que não cabe no campo do SINTEGRA",
                    fmt::format("campo '{}' ({} posições): {}", campo.nome, campo.tamanho, porque));
}

}  // namespace

const Layout k10{10, kCampos10, {}};
const Layout k11{11, kCampos11, {}};
const Layout k50{50, kCampos50, kOrdem50};
const Layout k54{54, kCampos54, kOrdem54};
const Layout k70{70, kCampos70, kOrdem70};
const Layout k74{74, kCampos74, kOrdem74};
const Layout k75{75, kCampos75, kOrdem75};
const Layout k90{90, kCampos90, {}};

int Layout::inicio(int numero) const {
  int pos = 0;
  for (int i = 0; i + 1 < numero; ++i) pos += campos[i].tamanho;
  return pos;
}

const Layout* layout_do_tipo(int tipo) {
  for (const Layout* l : {&k10, &k11, &k50, &k54, &k70, &k74, &k75, &k90})
    if (l->tipo == tipo) return l;
  return nullptr;
}

int ordem_do_tipo(int tipo) {
  for (std::size_t i = 0; i < kOrdemDosTipos.size(); ++i)
    if (kOrdemDosTipos[i] == tipo) return static_cast<int>(i);
  return -1;
}

bool na_lista(std::string_view lista, std::string_view valor) {
  for (std::size_t p = 0; p <= lista.size();) {
    std::size_t fim = lista.find(' ', p);
    if (fim == std::string_view::npos) fim = lista.size();
    if (lista.substr(p, fim - p) == valor) return true;
    p = fim + 1;
  }
  return false;
}

void por_numero(std::string& saida, const Campo& campo, Numero numero) {
  if (numero.valor < 0) nao_cabe(campo, fmt::format("valor negativo ({})", texto_do_numero(numero)));
  std::int64_t v = numero.valor;
  for (int c = numero.casas; c < campo.decimais; ++c) {
    if (v > INT64_MAX / 10) nao_cabe(campo, "valor grande demais");
    v *= 10;
  }
  for (int c = campo.decimais; c < numero.casas; ++c) v = (v + (c + 1 == numero.casas ? 5 : 0)) / 10;
  char buf[24];
  const auto fim = fmt::format_to(buf, "{}", v);
  const int n = static_cast<int>(fim - buf);
  if (n > campo.tamanho) nao_cabe(campo, fmt::format("o valor {} não cabe", std::string_view(buf, n)));
  saida.append(campo.tamanho - n, '0');
  saida.append(buf, n);
}

void por_digitos(std::string& saida, const Campo& campo, std::string_view texto) {
  char buf[64];
  int n = 0;
  for (const char c : texto)
    if (c >= '0' && c <= '9') {
      if (n == campo.tamanho) nao_cabe(campo, fmt::format("'{}' tem dígitos demais", texto));
      buf[n++] = c;
    } else if (c != '.' && c != '-' && c != '/' && c != ' ') {
      nao_cabe(campo, fmt::format("'{}' tem o caractere '{}', e o campo é numérico", texto, c));
    }
  saida.append(campo.tamanho - n, '0');
  saida.append(buf, n);
}

void por_data(std::string& saida, const Campo& campo, const TimeStamp& data) {
  if (campo.tamanho != 8) nao_cabe(campo, "não é um campo de data");
  fmt::format_to(std::back_inserter(saida), "{:04}{:02}{:02}", data.year, data.month, data.day);
}

std::string ascii_maiusculo(std::string_view texto) {
  std::string out;
  out.reserve(texto.size());
  const auto maiusculo = [&](std::string_view t) {
    for (const char c : t) out += c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  };
  for (std::size_t i = 0; i < texto.size();) {
    const char32_t c = next_code_point(texto, i);
    // A tab or line break stands between words: a blank. Other control characters (DEL and the
    // C1 controls included) are removed.
    if (c == '\t' || c == '\n' || c == '\r') out += ' ';
    else if (c < 0x20 || (c >= 0x7F && c < 0xA0)) continue;
    else if (c < 0x80) maiusculo(std::string(1, static_cast<char>(c)));
    // Latin-1 letters lose their accents; a character with a customary plain form takes it.
    else if (c >= 0xC0 && c <= 0xFF) out += kLatin1[c - 0xC0];
    else if (const std::string_view t = transliteration(c); !t.empty()) maiusculo(t);
    else out += '?';
  }
  const auto ini = out.find_first_not_of(' ');
  if (ini == std::string::npos) return {};
  return out.substr(ini, out.find_last_not_of(' ') - ini + 1);
}

void por_texto(std::string& saida, const Campo& campo, std::string_view texto) {
  // Plain ASCII that needs no change is the common case: copy it without a temporary.
  bool simples = !texto.empty() && texto.front() != ' ' && texto.back() != ' ';
  for (const char c : texto) simples = simples && c >= 0x20 && c < 0x7F && !(c >= 'a' && c <= 'z');
  const std::string dobrado = simples ? std::string() : ascii_maiusculo(texto);
  const std::string_view t = simples ? texto : std::string_view(dobrado);
  const std::size_t n = std::min<std::size_t>(t.size(), campo.tamanho);
  saida.append(t.data(), n);
  saida.append(campo.tamanho - n, ' ');
}

}  // namespace infofiscal::sintegra
