#include "fiscal/relatorio.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <tuple>

#include <fmt/format.h>

#include "base/renderings.h"
#include "base/value.h"

namespace infofiscal {

namespace {

using efd::Dia;
using efd::data_legivel;

// ---- text

// The entity of a markup character; nullptr for any other.
const char* entidade(unsigned char c) {
  switch (c) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return "&quot;";
    case '\'': return "&#39;";
    default: return nullptr;
  }
}

// A control character, which XML forbids and a browser would not show; tab and line feed are not.
bool controle(unsigned char c) { return (c < 0x20 && c != '\t' && c != '\n') || c == 0x7f; }

// Appends the code point `u` (below U+10000) in UTF-8.
void anexa_utf8(std::string& out, unsigned u) {
  if (u >= 0x800) {
    out += static_cast<char>(0xe0 | (u >> 12));
    out += static_cast<char>(0x80 | ((u >> 6) & 0x3f));
  } else {
    out += static_cast<char>(0xc0 | (u >> 6));
  }
  out += static_cast<char>(0x80 | (u & 0x3f));
}

// The length of the well-formed UTF-8 character of more than one byte at s[i]; 0 when the
// bytes there are not one (a stray byte, a cut sequence, an overlong form, a surrogate, a code
// point past U+10FFFF) or are U+FFFE or U+FFFF, which XML does not allow either.
std::size_t caractere_utf8(std::string_view s, std::size_t i) {
  const auto c = static_cast<unsigned char>(s[i]);
  const std::size_t n = c >= 0xc2 && c <= 0xdf ? 2 : c >= 0xe0 && c <= 0xef ? 3 : c >= 0xf0 && c <= 0xf4 ? 4 : 0;
  if (n == 0 || i + n > s.size()) return 0;
  // The range of the second byte rules out the overlong forms, the surrogates and what lies
  // past U+10FFFF.
  const unsigned char min = c == 0xe0 ? 0xa0 : c == 0xf0 ? 0x90 : 0x80;
  const unsigned char max = c == 0xed ? 0x9f : c == 0xf4 ? 0x8f : 0xbf;
  const auto segundo = static_cast<unsigned char>(s[i + 1]);
  if (segundo < min || segundo > max) return 0;
  for (std::size_t k = 2; k < n; ++k)
    if ((static_cast<unsigned char>(s[i + k]) & 0xc0) != 0x80) return 0;
  if (c == 0xef && segundo == 0xbf && static_cast<unsigned char>(s[i + 2]) >= 0xbe) return 0;
  return n;
}

// Appends `s`, text from the data, escaped for HTML and XML alike: markup characters as
// entities; a control character as its visible picture (U+2400 and up); a byte that is not
// UTF-8 as U+FFFD. Nothing is dropped.
void esc(std::string& out, std::string_view s) {
  for (std::size_t i = 0; i < s.size();) {
    const auto c = static_cast<unsigned char>(s[i]);
    std::size_t n = 1;
    if (const char* e = entidade(c)) {
      out += e;
    } else if (controle(c)) {
      anexa_utf8(out, 0x2400 + (c == 0x7f ? 0x21 : c));
    } else if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (const std::size_t k = caractere_utf8(s, i); k > 0) {
      out.append(s.substr(i, k));
      n = k;
    } else {
      anexa_utf8(out, 0xfffd);
    }
    i += n;
  }
}

std::string reais(std::int64_t centesimos) { return format_hundredths(centesimos); }

// "1 linha", "1.311 registros".
std::string plural(std::size_t n, const char* um, const char* varios) {
  return format_grouped(static_cast<std::int64_t>(n)) + " " + (n == 1 ? um : varios);
}

constexpr std::array<std::string_view, 12> kMeses = {"janeiro", "fevereiro", "março",    "abril",   "maio",     "junho",
                                                     "julho",   "agosto",    "setembro", "outubro", "novembro", "dezembro"};

int ano_de(Dia d) { return d / 10000; }
int mes_de(Dia d) { return d / 100 % 100; }

std::string nome_do_arquivo(int tipo) { return tipo == 1 ? "SINTEGRA" : "SPED EFD ICMS/IPI"; }

// The lines of `texto`.
std::vector<std::string_view> linhas_de(std::string_view texto) {
  std::vector<std::string_view> out;
  for (std::size_t pos = 0; pos <= texto.size();) {
    const std::size_t fim = std::min(texto.find('\n', pos), texto.size());
    out.push_back(texto.substr(pos, fim - pos));
    pos = fim + 1;
  }
  return out;
}

// Whether a converter's line is about a note it left out or changed.
bool sobre_notas(std::string_view linha) { return linha.starts_with("Nota ") || linha.starts_with("Números inutilizados"); }

// ---- tables

// A table: its caption-less head, rows of cells, an optional foot; `numericas` marks the
// columns (from the left, 0-based) that hold numbers, aligned to the right.
struct Tabela {
  std::vector<std::string> cabecalho;
  std::vector<std::vector<std::string>> linhas, rodape;
  std::vector<bool> numericas;
};

void linha_de_tabela(std::string& o, const Tabela& t, const std::vector<std::string>& celulas, const char* tag) {
  o += "<tr>";
  for (std::size_t i = 0; i < celulas.size(); ++i) {
    o += fmt::format("<{}{}>", tag, i < t.numericas.size() && t.numericas[i] ? " class=\"n\"" : "");
    esc(o, celulas[i]);
    o += fmt::format("</{}>", tag);
  }
  o += "</tr>\n";
}

void tabela(std::string& o, const Tabela& t) {
  o += "<table>\n<thead>";
  linha_de_tabela(o, t, t.cabecalho, "th");
  o += "</thead>\n<tbody>\n";
  for (const auto& l : t.linhas) linha_de_tabela(o, t, l, "td");
  o += "</tbody>\n";
  if (!t.rodape.empty()) {
    o += "<tfoot>";
    for (const auto& l : t.rodape) linha_de_tabela(o, t, l, "td");
    o += "</tfoot>\n";
  }
  o += "</table>\n";
}

void registros_por_tipo(std::string& o, const NumerosDoMes& n) {
  Tabela t{{"Registro", "Quantidade"}, {}, {{"Total", format_grouped(n.total_de_registros)}}, {false, true}};
  for (const auto& [tipo, quantos] : n.registros) t.linhas.push_back({tipo, format_grouped(quantos)});
  o += "<section id=\"registros\">\n<h2>Registros por tipo</h2>\n";
  tabela(o, t);
  o += "</section>\n";
}

// The totals of one key (CFOP or CST), with or without the ICMS column.
void totais(std::string& o, const char* id, const char* titulo, const char* chave, const char* contados,
            const char* explicacao, const std::map<std::string, TotaisAnaliticos>& por, bool com_icms) {
  Tabela t{{chave, contados, "Valor", "Base de cálculo do ICMS"}, {}, {}, {false, true, true, true, true}};
  if (com_icms) t.cabecalho.push_back("ICMS");
  TotaisAnaliticos soma;
  const auto celulas = [com_icms](std::string primeira, const TotaisAnaliticos& x) {
    std::vector<std::string> c{std::move(primeira), format_grouped(x.registros), reais(x.valor), reais(x.base)};
    if (com_icms) c.push_back(reais(x.icms));
    return c;
  };
  for (const auto& [k, x] : por) {
    t.linhas.push_back(celulas(k, x));
    soma.registros += x.registros;
    soma.valor += x.valor;
    soma.base += x.base;
    soma.icms += x.icms;
  }
  t.rodape.push_back(celulas("Total", soma));
  o += fmt::format("<section id=\"{}\">\n<h2>{}</h2>\n<p>{}</p>\n", id, titulo, explicacao);
  if (por.empty())
    o += "<p>Nenhum.</p>\n";
  else
    tabela(o, t);
  o += "</section>\n";
}

// E110's fields, by number, in words.
constexpr std::array<std::string_view, 16> kCamposE110 = {
    "", "", "Débitos pelas saídas", "Ajustes a débito dos documentos", "Outros débitos (ajustes da apuração)",
    "Estornos de créditos", "Créditos pelas entradas", "Ajustes a crédito dos documentos",
    "Outros créditos (ajustes da apuração)", "Estornos de débitos", "Saldo credor do período anterior",
    "Saldo devedor apurado", "Deduções", "ICMS a recolher", "Saldo credor a transportar", "Débitos especiais"};

void cartao(std::string& o, const char* rotulo, std::int64_t valor) {
  o += fmt::format("<div class=\"cartao\"><div class=\"rotulo\">{}</div><div class=\"valor\">{}</div></div>\n", rotulo,
                   reais(valor));
}

void apuracao(std::string& o, const NumerosDoMes& n) {
  const efd::CamposE110& f = n.apuracao;
  o += "<section id=\"apuracao\">\n<h2>Apuração do ICMS</h2>\n";
  if (n.tipo == 1)
    o += "<p>O SINTEGRA não traz a apuração: os débitos e os créditos abaixo são o ICMS dos registros 50 e 70 "
         "somado pelo CFOP, como no registro E110 do EFD (a débito as saídas, CFOP 5, 6 e 7, e o 1605; a crédito as "
         "entradas, CFOP 1, 2 e 3, e o 5605), e os saldos saem deles, sem ajustes nem saldo credor anterior.</p>\n";
  else
    o += "<p>Os valores do registro E110 do arquivo.</p>\n";
  o += "<div class=\"cartoes\">\n";
  cartao(o, "Débitos", f[2]);
  cartao(o, "Créditos", f[6]);
  if (f[14] > 0)
    cartao(o, "Saldo credor a transportar", f[14]);
  else
    cartao(o, "ICMS a recolher", f[13]);
  o += "</div>\n";
  Tabela t{{"Campo", "Nome", "O que é", "Valor"}, {}, {}, {false, false, false, true}};
  const std::span<const efd::Campo> nomes = efd::R("E110").campos;
  for (int campo = 2; campo <= 15; ++campo) {
    // SINTEGRA has nothing for the adjustments, the earlier balance or the special debits.
    if (n.tipo == 1 && campo != 2 && campo != 6 && campo != 11 && campo != 13 && campo != 14) continue;
    t.linhas.push_back({fmt::format("{:02}", campo), std::string(nomes[campo - 1].nome), std::string(kCamposE110[campo]),
                        reais(f[campo])});
  }
  tabela(o, t);
  o += "</section>\n";
}

// A ceiling for the chart's scale: 1, 2, 2,5 or 5 times a power of ten, at least `v`, so that
// its quarters are round values too.
std::int64_t teto(std::int64_t v) {
  std::int64_t p = 1;
  while (p * 10 <= v) p *= 10;
  for (const std::int64_t dez_vezes : {10, 20, 25, 50})
    if (dez_vezes * p / 10 >= v) return dez_vezes * p / 10;
  return 10 * p;
}

// The days of the period's month, as the chart shows them: [primeiro, ultimo].
std::pair<int, int> dias_do_periodo(const NumerosDoMes& n) {
  const int ultimo = n.fim / 100 == n.inicio / 100 ? n.fim % 100 : days_in_month(mes_de(n.inicio), ano_de(n.inicio));
  return {n.inicio % 100, ultimo};
}

constexpr const char* kCorEntradas = "#3b6fb6";
constexpr const char* kCorSaidas = "#d9822b";

// The chart's frame, in SVG units: the plot between the margins, a slot per day.
struct Quadro {
  static constexpr double kLargura = 760, kAltura = 280, kEsquerda = 100, kDireita = 12, kTopo = 34, kBase = 30;
  static constexpr double kAlturaUtil = kAltura - kTopo - kBase;
  double fatia;          // the width of a day
  std::int64_t escala;   // the value at the top
  double y(std::int64_t v) const { return kTopo + kAlturaUtil - kAlturaUtil * static_cast<double>(v) / escala; }
  double x(int indice) const { return kEsquerda + indice * fatia; }
};

// The scale's lines, at each quarter, with their values.
void grade(std::string& o, const Quadro& q) {
  for (int i = 0; i <= 4; ++i) {
    const std::int64_t v = q.escala * i / 4;
    o += fmt::format(
        "<line x1=\"{0}\" x2=\"{1}\" y1=\"{2:.1f}\" y2=\"{2:.1f}\" stroke=\"#ddd\"/><text x=\"{3}\" y=\"{4:.1f}\" "
        "text-anchor=\"end\" fill=\"#555\">{5}</text>\n",
        Quadro::kEsquerda, Quadro::kLargura - Quadro::kDireita, q.y(v), Quadro::kEsquerda - 6, q.y(v) + 4, reais(v));
  }
}

// A day's two bars and its number under them; each bar says its day and value when pointed at.
void barras_do_dia(std::string& o, const Quadro& q, int indice, Dia dia, const MovimentoDoDia& m) {
  const double x = q.x(indice);
  for (const auto& [valor, deslocamento, cor, nome] : {std::tuple{m.entradas, 0.12, kCorEntradas, "entradas"},
                                                       std::tuple{m.saidas, 0.52, kCorSaidas, "saídas"}}) {
    if (valor <= 0) continue;
    o += fmt::format(
        "<rect x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\" fill=\"{}\"><title>{}: {} {}</title></rect>\n",
        x + q.fatia * deslocamento, q.y(valor), q.fatia * 0.36, q.y(0) - q.y(valor), cor, data_legivel(dia), nome,
        reais(valor));
  }
  o += fmt::format("<text x=\"{:.1f}\" y=\"{}\" text-anchor=\"middle\" fill=\"#555\">{}</text>\n", x + q.fatia / 2,
                   Quadro::kAltura - Quadro::kBase + 16, dia % 100);
}

// The documents' values by day as bars, entries and exits side by side, with the scale, the
// base line and the legend.
void grafico(std::string& o, const NumerosDoMes& n) {
  const auto [primeiro, ultimo] = dias_do_periodo(n);
  std::int64_t maior = 0;
  for (int d = primeiro; d <= ultimo; ++d) maior = std::max({maior, n.por_dia[d].entradas, n.por_dia[d].saidas});
  if (maior <= 0) {
    o += "<p>Nenhum documento com valor no período.</p>\n";
    return;
  }
  const Quadro q{(Quadro::kLargura - Quadro::kEsquerda - Quadro::kDireita) / (ultimo - primeiro + 1), teto(maior)};
  o += fmt::format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0} {1}\" width=\"{0}\" height=\"{1}\" role=\"img\" "
      "aria-labelledby=\"grafico-titulo\" font-family=\"sans-serif\" font-size=\"11\">\n<title "
      "id=\"grafico-titulo\">Entradas e saídas por dia de {2} de {3}</title>\n",
      Quadro::kLargura, Quadro::kAltura, kMeses[mes_de(n.inicio) - 1], ano_de(n.inicio));
  grade(o, q);
  for (int d = primeiro; d <= ultimo; ++d) barras_do_dia(o, q, d - primeiro, n.inicio / 100 * 100 + d, n.por_dia[d]);
  o += fmt::format("<line x1=\"{0}\" x2=\"{1}\" y1=\"{2}\" y2=\"{2}\" stroke=\"#888\"/>\n", Quadro::kEsquerda,
                   Quadro::kLargura - Quadro::kDireita, q.y(0));
  o += fmt::format(
      "<rect x=\"{0}\" y=\"8\" width=\"12\" height=\"12\" fill=\"{1}\"/><text x=\"{2}\" y=\"18\">Entradas</text>\n"
      "<rect x=\"{3}\" y=\"8\" width=\"12\" height=\"12\" fill=\"{4}\"/><text x=\"{5}\" y=\"18\">Saídas</text>\n",
      Quadro::kEsquerda, kCorEntradas, Quadro::kEsquerda + 16, Quadro::kEsquerda + 90, kCorSaidas,
      Quadro::kEsquerda + 106);
  o += "</svg>\n";
}

void por_dia(std::string& o, const NumerosDoMes& n) {
  o += "<section id=\"por-dia\">\n<h2>Valores do mês por dia</h2>\n<p>O valor dos documentos: as entradas pela data "
       "de entrada, as saídas pela de emissão; documentos cancelados e números inutilizados não têm valor.</p>\n";
  grafico(o, n);
  const auto [primeiro, ultimo] = dias_do_periodo(n);
  Tabela t{{"Dia", "Entradas", "Saídas"}, {}, {}, {false, true, true}};
  MovimentoDoDia soma;
  for (int d = primeiro; d <= ultimo; ++d) {
    const MovimentoDoDia& m = n.por_dia[d];
    if (m.entradas == 0 && m.saidas == 0) continue;
    t.linhas.push_back({data_legivel(n.inicio / 100 * 100 + d), reais(m.entradas), reais(m.saidas)});
    soma.entradas += m.entradas;
    soma.saidas += m.saidas;
  }
  const MovimentoDoDia& fora = n.fora_do_periodo;
  if (fora.entradas != 0 || fora.saidas != 0) {
    t.linhas.push_back({"fora do mês", reais(fora.entradas), reais(fora.saidas)});
    soma.entradas += fora.entradas;
    soma.saidas += fora.saidas;
  }
  t.rodape.push_back({"Total", reais(soma.entradas), reais(soma.saidas)});
  o += "<details>\n<summary>Os valores em tabela</summary>\n";
  tabela(o, t);
  o += "</details>\n</section>\n";
}

void lista(std::string& o, const char* tag, const std::vector<std::string_view>& itens) {
  o += fmt::format("<{}>\n", tag);
  for (const std::string_view i : itens) {
    o += "<li>";
    esc(o, i);
    o += "</li>\n";
  }
  o += fmt::format("</{}>\n", tag);
}

constexpr const char* kEstilo =
    "body{font-family:system-ui,'Segoe UI',Roboto,'Helvetica Neue',Arial,sans-serif;color:#1d2327;"
    "max-width:62rem;margin:1.5rem auto;padding:0 1rem;line-height:1.45}"
    "h1{font-size:1.45rem;margin:0}h2{font-size:1.15rem;margin:1.6rem 0 .4rem;border-bottom:1px solid #ddd}"
    ".sub{color:#555;margin:.2rem 0 1rem}"
    ".estado{padding:.7rem 1rem;border-left:6px solid;border-radius:4px}"
    ".gravado{background:#edf7ee;border-color:#2e7d32}.recusado{background:#fdecea;border-color:#c62828}"
    ".cartoes{display:flex;flex-wrap:wrap;gap:.8rem;margin:.6rem 0}"
    ".cartao{flex:1 1 12rem;border:1px solid #ddd;border-radius:6px;padding:.5rem .8rem}"
    ".rotulo{color:#555;font-size:.85rem}.valor{font-size:1.3rem;font-variant-numeric:tabular-nums}"
    "table{border-collapse:collapse;margin:.4rem 0 .8rem;font-size:.93rem}"
    "th,td{padding:.2rem .7rem;border-bottom:1px solid #e4e4e4;text-align:left;vertical-align:top}"
    ".n{text-align:right;font-variant-numeric:tabular-nums;white-space:nowrap}"
    "tfoot td{font-weight:600;border-top:2px solid #999}"
    "svg{max-width:100%;height:auto}li{margin:.15rem 0}code{font-size:.92em}"
    "@media print{details{display:block}body{margin:0}}";

}  // namespace

RelatorioDoMes::RelatorioDoMes(int tipo, std::string arquivo_fiscal)
    : leitor_(tipo), tipo_(tipo), arquivo_(std::move(arquivo_fiscal)) {}

std::string RelatorioDoMes::html() {
  const NumerosDoMes n = leitor_.conclui();
  const std::string nome = nome_do_arquivo(tipo_);
  const std::string titulo =
      n.inicio != 0 ? fmt::format("{} de {} de {}", nome, kMeses[mes_de(n.inicio) - 1], ano_de(n.inicio)) : nome;
  // A refused file's figures are shown when it was written to its end, never those of a file
  // whose conversion stopped half-way.
  const bool numeros = n.completo && n.inicio != 0;

  std::string o;
  cabecalho(o, titulo, n);
  estado(o, numeros);
  achados(o);
  // What a person checks next: the tax, the month's shape, the totals; the counts last.
  if (numeros) {
    apuracao(o, n);
    por_dia(o, n);
    totais_do_tipo(o, n);
    if (n.ilegiveis > 0)
      o += fmt::format("<p id=\"ilegiveis\">{} registros do arquivo recusado não puderam ser lidos e ficaram fora dos "
                       "totais (veja os achados).</p>\n",
                       format_grouped(n.ilegiveis));
  }
  notas(o);
  if (numeros) registros_por_tipo(o, n);
  conversao(o);
  o += "</body>\n</html>\n";
  return o;
}

void RelatorioDoMes::cabecalho(std::string& o, const std::string& titulo, const NumerosDoMes& n) const {
  o += "<!DOCTYPE html>\n<html xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"pt-BR\">\n<head>\n<meta charset=\"utf-8\"/>\n";
  o += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n<title>Relatório: ";
  esc(o, titulo);
  o += "</title>\n<style>";
  o += kEstilo;
  o += "</style>\n</head>\n<body>\n<h1>Relatório do arquivo ";
  esc(o, titulo);
  o += "</h1>\n<p class=\"sub\">";
  if (!n.empresa.empty()) {
    esc(o, n.empresa);
    o += " · CNPJ ";
    esc(o, n.cnpj);
    o += " · ";
  }
  if (n.inicio != 0) o += fmt::format("período de {} a {}", data_legivel(n.inicio), data_legivel(n.fim));
  o += "</p>\n";
}

void RelatorioDoMes::estado(std::string& o, bool numeros) const {
  if (!recusa_) {
    o += "<p class=\"estado gravado\" id=\"estado\">Arquivo gravado: <code>";
    esc(o, arquivo_);
    o += fmt::format("</code>, {}.</p>\n", plural(registros_, "registro", "registros"));
    return;
  }
  o += "<p class=\"estado recusado\" id=\"estado\">O arquivo <code>";
  esc(o, arquivo_);
  o += numeros ? "</code> não foi gravado (o porquê está em <a href=\"#achados\">Achados</a>). Os números abaixo são "
                 "os do arquivo gerado e recusado; um arquivo anterior com o mesmo nome ficou como estava.</p>\n"
               : "</code> não foi gravado: a conversão parou antes do fim do arquivo (o porquê está em <a "
                 "href=\"#achados\">Achados</a>), e os seus números não são mostrados. Um arquivo anterior com o "
                 "mesmo nome ficou como estava.</p>\n";
}

void RelatorioDoMes::achados(std::string& o) const {
  o += "<section id=\"achados\">\n<h2>Achados</h2>\n";
  if (!recusa_) {
    o += "<p>O validador conferiu o arquivo inteiro e não encontrou problemas.</p>\n";
  } else {
    // The verdict, then one finding a line.
    const std::vector<std::string_view> linhas = linhas_de(*recusa_);
    o += "<p>";
    esc(o, linhas.front());
    o += "</p>\n";
    if (linhas.size() > 1) lista(o, "ul", {linhas.begin() + 1, linhas.end()});
  }
  o += "</section>\n";
}

void RelatorioDoMes::totais_do_tipo(std::string& o, const NumerosDoMes& n) const {
  if (tipo_ == 1) {
    totais(o, "cfop", "Totais por CFOP", "CFOP", "Registros",
           "Dos registros 50 (notas) e 70 (conhecimentos de transporte): valor total, base de cálculo e ICMS.",
           n.por_cfop, true);
    totais(o, "cst", "Totais por CST", "CST", "Itens",
           "Dos itens das notas (registro 54): valor do produto menos o desconto, e a base de cálculo do ICMS; o "
           "registro 54 não traz o ICMS do item. Frete, seguro e outras despesas (itens 991 a 999) não têm CST.",
           n.por_cst, false);
    return;
  }
  totais(o, "cfop", "Totais por CFOP", "CFOP", "Registros",
         "Dos registros analíticos C190 (notas) e D190 (conhecimentos de transporte): valor da operação, base de "
         "cálculo e ICMS.",
         n.por_cfop, true);
  totais(o, "cst", "Totais por CST", "CST", "Registros", "Dos mesmos registros C190 e D190, por CST do ICMS.",
         n.por_cst, true);
}

void RelatorioDoMes::notas(std::string& o) const {
  std::vector<std::string_view> linhas;
  for (const std::string& l : linhas_)
    if (sobre_notas(l)) linhas.push_back(l);
  o += fmt::format("<section id=\"notas\">\n<h2>Notas deixadas de fora ou ajustadas ({})</h2>\n",
                   format_grouped(static_cast<std::int64_t>(linhas.size())));
  if (linhas.empty())
    o += "<p>O conversor não deixou nenhuma nota de fora nem mudou nenhuma.</p>\n";
  else
    lista(o, "ul", linhas);
  o += "</section>\n";
}

void RelatorioDoMes::conversao(std::string& o) const {
  o += fmt::format("<section id=\"conversao\">\n<h2>O que o conversor disse</h2>\n<details>\n<summary>{}</summary>\n",
                   plural(linhas_.size(), "linha", "linhas"));
  lista(o, "ol", {linhas_.begin(), linhas_.end()});
  o += "</details>\n</section>\n";
}

}  // namespace infofiscal
