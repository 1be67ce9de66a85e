// The HTML report of a month, as `infofiscal converter` and `exportar` write it, read back with
// Qt's XML reader: the page must be well-formed XHTML, self-contained, and say the figures of a
// known month. (Here because this binary links Qt; the figures themselves are tested in
// tests/fiscal/numeros_do_mes_test.cpp.)
#include "fiscal/relatorio.h"

#include <filesystem>
#include <functional>
#include <map>

#include <QXmlStreamReader>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/code_page.h"
#include "fiscal/efd_informacao.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "support/golden.h"

namespace infofiscal::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Linhas = std::vector<std::vector<std::string>>;

// An element of the page, its attributes, children and all the text inside it.
struct No {
  std::string nome;
  std::map<std::string, std::string> atributos;
  std::vector<No> filhos;
  std::string texto;

  std::string atributo(const std::string& a) const {
    const auto it = atributos.find(a);
    return it == atributos.end() ? "" : it->second;
  }
};

// The page read as XML; a page that is not well-formed fails the test.
No ler(const std::string& html) {
  QXmlStreamReader r(QByteArray::fromStdString(html));
  No raiz;
  std::vector<No*> caminho{&raiz};
  while (!r.atEnd()) {
    r.readNext();
    if (r.isStartElement()) {
      No& n = caminho.back()->filhos.emplace_back();
      n.nome = r.name().toString().toStdString();
      for (const QXmlStreamAttribute& a : r.attributes())
        n.atributos[a.name().toString().toStdString()] = a.value().toString().toStdString();
      caminho.push_back(&n);
    } else if (r.isEndElement()) {
      caminho.pop_back();
    } else if (r.isCharacters()) {
      for (No* n : caminho) n->texto += r.text().toString().toStdString();
    }
  }
  EXPECT_FALSE(r.hasError()) << r.errorString().toStdString() << " na linha " << r.lineNumber();
  return raiz;
}

void coleta(const No& n, const std::function<bool(const No&)>& quer, std::vector<const No*>& out) {
  if (quer(n)) out.push_back(&n);
  for (const No& f : n.filhos) coleta(f, quer, out);
}
std::vector<const No*> todos(const No& n, const std::string& nome) {
  std::vector<const No*> out;
  coleta(n, [&](const No& x) { return x.nome == nome; }, out);
  return out;
}
const No* por_id(const No& n, const std::string& id) {
  std::vector<const No*> out;
  coleta(n, [&](const No& x) { return x.atributo("id") == id; }, out);
  return out.empty() ? nullptr : out.front();
}

// The cells of the rows of the first table's `parte` (thead, tbody or tfoot) in section `id`.
Linhas tabela(const No& pagina, const std::string& id, const std::string& parte = "tbody") {
  Linhas out;
  const No* secao = por_id(pagina, id);
  if (!secao) return out;
  for (const No* p : todos(*todos(*secao, "table").at(0), parte))
    for (const No* tr : todos(*p, "tr")) {
      auto& linha = out.emplace_back();
      for (const No& celula : tr->filhos) linha.push_back(celula.texto);
    }
  return out;
}

// The texts of the items of the lists of section `id`.
std::vector<std::string> itens(const No& pagina, const std::string& id) {
  std::vector<std::string> out;
  if (const No* secao = por_id(pagina, id))
    for (const No* li : todos(*secao, "li")) out.push_back(li->texto);
  return out;
}

// What makes a page depend on anything else: a script, an element that loads a resource, a
// link or a reference that leaves the page.
std::vector<std::string> dependencias(const No& pagina) {
  std::vector<std::string> out;
  std::vector<const No*> nos;
  coleta(pagina, [](const No&) { return true; }, nos);
  for (const No* n : nos) {
    if (n->nome == "script" || n->nome == "link" || n->nome == "img" || n->nome == "iframe" || n->nome == "object")
      out.push_back(n->nome);
    for (const auto& [a, v] : n->atributos)
      if ((a == "href" || a == "src") && !v.starts_with("#")) out.push_back(a + "=" + v);
  }
  return out;
}

// The month of the SINTEGRA tests converted by `infofiscal converter`, with its report: the
// summary names both files, and the page says the month's figures.
TEST(Relatorio, SintegraMonthByTheConverter) {
  const std::string dir = fresh_dir("relatorio-sintegra");
  write_file(dir + "/info.txt", utf8_to_windows1252(golden("../informacao/sintegra_marco_2024.txt")));
  const CliResult r = run_cli({"converter", "--tipo", "1", "--informacao", dir + "/info.txt", "--arquivo-fiscal",
                               dir + "/SINTEGRA.txt", "--relatorio", dir + "/relatorio.html", "--progresso", "nada"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "Resumo: 2 arquivos gravados\n  SINTEGRA: " + dir + "/SINTEGRA.txt (24 registros)\n  relatório: " +
                       dir + "/relatorio.html\n");
  EXPECT_EQ(read_file(dir + "/SINTEGRA.txt"), golden("sintegra_marco_2024.txt"));
  const No pagina = ler(read_file(dir + "/relatorio.html"));

  EXPECT_THAT(dependencias(pagina), IsEmpty());
  EXPECT_EQ(todos(pagina, "title").at(0)->texto, "Relatório: SINTEGRA de março de 2024");
  EXPECT_EQ(por_id(pagina, "estado")->texto, "Arquivo gravado: " + dir + "/SINTEGRA.txt, 24 registros.");
  EXPECT_EQ(tabela(pagina, "registros"),
            (Linhas{{"10", "1"}, {"11", "1"}, {"50", "7"}, {"54", "6"}, {"70", "1"}, {"74", "2"}, {"75", "5"}, {"90", "1"}}));
  EXPECT_EQ(tabela(pagina, "registros", "tfoot"), (Linhas{{"Total", "24"}}));
  EXPECT_EQ(tabela(pagina, "cfop", "thead"),
            (Linhas{{"CFOP", "Registros", "Valor", "Base de cálculo do ICMS", "ICMS"}}));
  EXPECT_EQ(tabela(pagina, "cfop"), (Linhas{{"0000", "1", "0,00", "0,00", "0,00"},
                                            {"1102", "1", "1.180,00", "1.000,00", "180,00"},
                                            {"1253", "1", "200,00", "200,00", "36,00"},
                                            {"1353", "1", "80,00", "0,00", "0,00"},
                                            {"1403", "1", "50,00", "0,00", "0,00"},
                                            {"5102", "2", "2.000,00", "2.000,00", "360,00"},
                                            {"6102", "1", "500,00", "500,00", "60,00"}}));
  EXPECT_EQ(tabela(pagina, "cfop", "tfoot"), (Linhas{{"Total", "8", "4.010,00", "3.700,00", "636,00"}}));
  // Item 991 (freight) has no CST; the items give no ICMS.
  EXPECT_EQ(tabela(pagina, "cst"), (Linhas{{"000", "4", "3.500,00", "3.500,00"}, {"060", "1", "50,00", "0,00"}}));
  EXPECT_EQ(tabela(pagina, "apuracao"), (Linhas{{"02", "VL_TOT_DEBITOS", "Débitos pelas saídas", "420,00"},
                                                {"06", "VL_TOT_CREDITOS", "Créditos pelas entradas", "216,00"},
                                                {"11", "VL_SLD_APURADO", "Saldo devedor apurado", "204,00"},
                                                {"13", "VL_ICMS_RECOLHER", "ICMS a recolher", "204,00"},
                                                {"14", "VL_SLD_CREDOR_TRANSPORTAR", "Saldo credor a transportar", "0,00"}}));
  EXPECT_EQ(tabela(pagina, "por-dia"), (Linhas{{"06/03/2024", "1.230,00", "0,00"},
                                               {"07/03/2024", "80,00", "0,00"},
                                               {"10/03/2024", "0,00", "500,00"},
                                               {"15/03/2024", "0,00", "2.000,00"},
                                               {"fora do mês", "200,00", "0,00"}}));
  // One bar a day with a value, each saying its day and value.
  std::vector<std::string> barras;
  for (const No* rect : todos(*todos(pagina, "svg").at(0), "rect"))
    if (!rect->filhos.empty()) barras.push_back(rect->texto);
  EXPECT_THAT(barras, ElementsAre("06/03/2024: entradas 1.230,00", "07/03/2024: entradas 80,00",
                                  "10/03/2024: saídas 500,00", "15/03/2024: saídas 2.000,00"));
  // The CT-e 789 is in its record 70: no note is left out.
  EXPECT_THAT(itens(pagina, "notas"), IsEmpty());
  EXPECT_EQ(todos(*por_id(pagina, "achados"), "p").at(0)->texto,
            "O validador conferiu o arquivo inteiro e não encontrou problemas.");
  EXPECT_THAT(itens(pagina, "conversao"), Contains("Conferindo o arquivo SINTEGRA"));
}

// The demo month's EFD file by `infofiscal exportar`: the summary names the report after the
// fiscal file, and the page has the figures of the demo's expected file.
TEST(Relatorio, EfdMonthOfTheDemoByExportar) {
  const TestDatabase db("sqlite", "relatorio-demo", demo_script());
  const std::string dir = fresh_dir("relatorio-efd", true);
  const CliResult r = run_cli({"exportar", "--fonte", db.address(), "--catalogo", catalog_path(), "--registro", "2",
                               "--tipo", "2", "--base", dir, "--arquivo-fiscal", dir + "/efd.txt", "--relatorio",
                               dir + "/efd.html", "--progresso", "nada"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_THAT(r.err, HasSubstr("  SPED EFD ICMS/IPI: " + dir + "/efd.txt (1.331 registros)\n  relatório: " + dir +
                               "/efd.html\n"));
  const No pagina = ler(read_file(dir + "/efd.html"));
  EXPECT_THAT(dependencias(pagina), IsEmpty());
  EXPECT_EQ(todos(pagina, "h1").at(0)->texto, "Relatório do arquivo SPED EFD ICMS/IPI de março de 2024");
  const Linhas registros = tabela(pagina, "registros");
  EXPECT_THAT(registros, Contains(std::vector<std::string>{"C100", "428"}));
  EXPECT_THAT(registros, Contains(std::vector<std::string>{"C190", "489"}));
  EXPECT_THAT(registros, Contains(std::vector<std::string>{"D100", "9"}));
  EXPECT_EQ(tabela(pagina, "registros", "tfoot"), (Linhas{{"Total", "1.331"}}));
  // The items of CST 060 carry no own ICMS; use and consumption and fixed assets no credit.
  const Linhas cfop = tabela(pagina, "cfop");
  EXPECT_THAT(cfop, Contains(std::vector<std::string>{"5102", "354", "211.912,66", "192.183,27", "34.589,79"}));
  EXPECT_THAT(cfop, Contains(std::vector<std::string>{"1551", "28", "123.337,66", "0,00", "0,00"}));
  EXPECT_EQ(tabela(pagina, "cst"), (Linhas{{"000", "430", "557.497,33", "324.840,57", "54.673,63"},
                                           {"060", "68", "20.906,75", "0,00", "0,00"}}));
  const Linhas e110 = tabela(pagina, "apuracao");
  ASSERT_EQ(e110.size(), 14u);
  EXPECT_EQ(e110[0], (std::vector<std::string>{"02", "VL_TOT_DEBITOS", "Débitos pelas saídas", "45.497,17"}));
  EXPECT_EQ(e110[4], (std::vector<std::string>{"06", "VL_TOT_CREDITOS", "Créditos pelas entradas", "9.176,46"}));
  EXPECT_EQ(e110[9], (std::vector<std::string>{"11", "VL_SLD_APURADO", "Saldo devedor apurado", "36.320,71"}));
  EXPECT_EQ(e110[11], (std::vector<std::string>{"13", "VL_ICMS_RECOLHER", "ICMS a recolher", "36.320,71"}));
  EXPECT_THAT(tabela(pagina, "por-dia"), Contains(std::vector<std::string>{"15/03/2024", "17.170,00", "10.291,17"}));
  // The nine transport documents of model 57 are in block D: only the voided numbers are left out.
  EXPECT_THAT(itens(pagina, "notas"),
              ElementsAre("Números inutilizados não escriturados (a partir de 2023 não se escrituram): 4"));
}

const std::string kCnpj = "11222333000181";

// A sale of March 2024 to `cliente`, of one item of 100,00 with 18,00 of ICMS.
std::string venda(std::string_view cliente = "15") {
  return l04("10", "1", "900", chave_nfe(kCnpj, 900), "55", "12/03/2024", "12/03/2024", "100,00", "0") +
         l05("10", "1", "1", cliente) +
         l06("10", "1", "15", "1", "UN", "1,00", "100,00", "2", "000", "5102", "100,00", "18,00", "18,00");
}

// A month the converter writes to its end and its validator refuses (an inventory dated after
// the period), and one whose conversion stops at a note: nothing is written to the fiscal file,
// which keeps its earlier bytes, and the report says why; the figures of the refused file are
// shown, those of a file cut short are not.
TEST(Relatorio, ARefusedMonthHasItsReportAndNoFiscalFile) {
  const std::string cabecalho = l01("01/03/2024", "31/03/2024") + l02_l03();
  const struct {
    const char* nome;
    std::string informacao, mensagem;
    bool numeros;
  } casos[] = {
      {"recusado pelo validador",
       cabecalho + venda() + cadastros() + l16("1", "30/04/2024", "1,00") +
           l17_l19(17, "1", "15", "1,00", "1,00", "1,00", "UN"),
       "Arquivo SPED EFD ICMS/IPI inválido; nada foi gravado:\n"
       "Linha 25: H005 DT_INV 30042024 depois do fim do período em |H005|30042024|1,00|01|",
       true},
      // The month's problems, listed as every problem of a month is ({dir}: the test's folder).
      {"parado numa nota", cabecalho + venda("99") + cadastros(),
       "1 problema no mês; o arquivo SPED EFD ICMS/IPI não foi gravado:\n"
       "participante fora do cadastro (linhas 14) (1):\n"
       "  Nota 900 de venda de produtos (linha 4 do arquivo de informações): participante 1-99 não consta das linhas 14\n"
       "A lista completa está em '{dir}/efd.txt.problemas.txt'",
       false},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.nome);
    const std::string dir = fresh_dir("relatorio-recusado");
    write_file(dir + "/info.txt", c.informacao);
    write_file(dir + "/efd.txt", "anterior\r\n");
    const CliResult r = run_cli({"converter", "--tipo", "2", "--informacao", dir + "/info.txt", "--arquivo-fiscal",
                                 dir + "/efd.txt", "--relatorio", dir + "/efd.html", "--progresso", "nada"});
    EXPECT_EQ(r.status, 1);
    std::string mensagem = c.mensagem;
    if (const auto p = mensagem.find("{dir}"); p != std::string::npos) mensagem.replace(p, 5, dir);
    EXPECT_EQ(r.err, mensagem + "\nO relatório do mês está em '" + dir + "/efd.html'\n");
    EXPECT_EQ(read_file(dir + "/efd.txt"), "anterior\r\n");
    const No pagina = ler(read_file(dir + "/efd.html"));
    EXPECT_EQ(por_id(pagina, "estado")->atributo("class"), "estado recusado");
    EXPECT_THAT(por_id(pagina, "estado")->texto, HasSubstr(dir + "/efd.txt não foi gravado"));
    const std::string veredito = mensagem.substr(0, mensagem.find('\n'));
    EXPECT_EQ(todos(*por_id(pagina, "achados"), "p").at(0)->texto, veredito);
    if (c.numeros) {
      EXPECT_THAT(itens(pagina, "achados"),
                  ElementsAre("Linha 25: H005 DT_INV 30042024 depois do fim do período em |H005|30042024|1,00|01|"));
      EXPECT_EQ(tabela(pagina, "cfop"), (Linhas{{"5102", "1", "100,00", "100,00", "18,00"}}));
    } else {
      EXPECT_THAT(itens(pagina, "achados"),
                  ElementsAre("participante fora do cadastro (linhas 14) (1):",
                              "  Nota 900 de venda de produtos (linha 4 do arquivo de informações): participante 1-99 "
                              "não consta das linhas 14",
                              "A lista completa está em '" + dir + "/efd.txt.problemas.txt'"));
      EXPECT_EQ(por_id(pagina, "cfop"), nullptr);
      EXPECT_EQ(por_id(pagina, "registros"), nullptr);
    }
  }
}

// Text from the data is escaped wherever it lands: markup characters, a control character, a
// byte that is not UTF-8 and Windows-1252 letters of the EFD file come out as the text they are,
// in a page that stays well-formed.
TEST(Relatorio, TextFromTheDataIsEscaped) {
  RelatorioDoMes relatorio(2, "a<b>&c\".txt");
  relatorio.leitor().le(std::string("|0000|018|0|01032024|31032024|J\xc3O & <FILHOS> 'LTDA' \"X\"\x01|") + kCnpj +
                        "||SP|1|1|||A|1|\r\n|C190|000|5102|18,00|1,00|1,00|0,18|0,00|0,00|0,00|0,00||\r\n|9999|3|\r\n");
  relatorio.linha_info("Nota <script>alert(1)</script> \xff de venda: não escriturada");
  // A cut sequence, an overlong '/', a surrogate, U+FFFF, a tab, DEL and a character of four bytes.
  relatorio.linha_info("Nota \xe2\x82 \xc0\xaf \xed\xa0\x80 \xef\xbf\xbf\t\x7f \xf0\x9f\x98\x80");
  relatorio.recusado("Linha 1: <b>x</b> & y");
  const std::string html = relatorio.html();
  const No pagina = ler(html);
  EXPECT_EQ(todos(pagina, "p").at(0)->texto,
            "JÃO & <FILHOS> 'LTDA' \"X\"\u2401 · CNPJ 11222333000181 · período de 01/03/2024 a 31/03/2024");
  EXPECT_THAT(por_id(pagina, "estado")->texto, HasSubstr("O arquivo a<b>&c\".txt não foi gravado"));
  EXPECT_THAT(itens(pagina, "notas"),
              ElementsAre("Nota <script>alert(1)</script> \ufffd de venda: não escriturada",
                          "Nota \ufffd\ufffd \ufffd\ufffd \ufffd\ufffd\ufffd \ufffd\ufffd\ufffd\t\u2421 \U0001F600"));
  EXPECT_EQ(todos(*por_id(pagina, "achados"), "p").at(0)->texto, "Linha 1: <b>x</b> & y");
  EXPECT_THAT(dependencias(pagina), IsEmpty());
  EXPECT_THAT(html, Not(HasSubstr("<script")));
}

}  // namespace
}  // namespace infofiscal::testing
