// The command line as a scheduler sees it: exit status, stdout, stderr and the files left.
#include <regex>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/opcoes.h"
#include "cli/terminal.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using namespace testing;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

std::string snapshot_file(const std::string& dir, const Snapshot& snapshot) {
  const std::string path = dir + "/snapshot.json";
  write_file(path, snapshot.document().dump());
  return path;
}

const std::string kInfoPath = "/Arquivos/InfoFiscal/SpedInformacao.txt";

TEST(CliExportar, StdoutCarriesOnlyTheInfoLines) {
  const std::string base = fresh_dir("exportar-ok", true);
  const std::string snap = snapshot_file(base, Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}));
  const auto r = run_cli({"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--tipo", "3", "--base", base,
                          "--progresso", "linhas"});
  EXPECT_EQ(r.status, 0) << r.err;
  std::vector<std::string> lines;
  for (std::size_t p = 0, e; (e = r.out.find('\n', p)) != std::string::npos; p = e + 1) lines.push_back(r.out.substr(p, e - p));
  ASSERT_EQ(lines.size(), 28u);
  EXPECT_EQ(lines[1], "RECUPERANDO INFORMAÇÕES      ");
  EXPECT_EQ(lines[4], "2.01-Registro: Informação do Registro Fiscal");
  EXPECT_EQ(lines.back(), "3-Gerar Arquivo de Informações: Final");
  // Every report of the progress callback, the resets included, then the summary.
  EXPECT_EQ(r.err.find("progresso 0/0\n"), 0u);
  const std::string resumo = "Resumo: só o arquivo de informações foi gravado; o tipo 3 (SPED Contribuições) não tem "
                             "arquivo fiscal a gerar\n  informações: " + caminho_normal(base + kInfoPath) + " (3 linhas)\n";
  ASSERT_THAT(r.err, ::testing::EndsWith(resumo));
  // std::regex: GoogleTest's own on Windows knows no brackets.
  EXPECT_TRUE(std::regex_match(r.err.substr(0, r.err.size() - resumo.size()), std::regex("(progresso [0-9]+/[0-9]+\n)+")));
  EXPECT_EQ(read_file(base + kInfoPath).substr(0, 13), "[C00]01[/C00]");
}

TEST(CliExportar, UsageErrorsExitTwoWithAPortugueseMessage) {
  const std::string base = fresh_dir("exportar-uso", true);
  const std::string snap = snapshot_file(base, Snapshot());
  const struct {
    std::vector<std::string> args;
    const char* message;
  } cases[] = {
      {{"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--tipo", "5", "--base", base}, "valor inválido"},
      {{"exportar", "--fonte", "snapshot:" + snap, "--registro", "x", "--tipo", "1", "--base", base}, "valor inválido"},
      {{"exportar", "--fonte", "snapshot:" + snap, "--tipo", "1", "--base", base}, "opção obrigatória ausente"},
      {{"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--tipo", "1", "--base", base, "--mes", "13"},
       "valor inválido"},
      {{"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--tipo", "1", "--base", base, "--progresso", "x"},
       "valor inválido"},
      {{"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--tipo", "1", "--base", base, "--nao-existe"},
       "argumento desconhecido"},
      {{}, "opção obrigatória ausente"},
      {{"exportar", "--fonte", "snapshot:" + base + "/sumiu.json", "--registro", "7", "--tipo", "1", "--base", base},
       "o snapshot '"},
      {{"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--registro", "8", "--tipo", "1", "--base", base},
       "opção repetida: --registro (dê cada opção uma vez só)"},
      {{"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--tipo", "1", "--base", base,
        "--somente-informacao=sim"},
       "a opção --somente-informacao não leva valor ('sim')"},
      {{"exportar", "--registro", "7", "--tipo", "1", "--base", base, "--fonte"}, "falta o valor de --fonte"},
      {{"relatorio"}, "comando desconhecido: relatorio (use exportar, converter ou validar)"},
  };
  for (const auto& c : cases) {
    const auto r = run_cli(c.args);
    EXPECT_EQ(r.status, 2) << r.err;
    EXPECT_THAT(r.err, ::testing::StartsWith("infofiscal: "));
    EXPECT_THAT(r.err, ::testing::HasSubstr(c.message));
    EXPECT_EQ(r.out, "");
  }
}

TEST(CliExportar, AFailedRunExitsOneAndLeavesTheEarlierFile) {
  const std::string base = fresh_dir("exportar-falha", true);
  write_file(base + kInfoPath, "anterior\r\n");
  const struct {
    Snapshot snapshot;
    const char* message;
  } cases[] = {
      {Snapshot().registro(7, {{"CDMES", 13}}), "Erro ano Gerar Registro Linha 01: Mês inválido: 13\n"},
      {Snapshot().error("DspRegistroInfoFiscal", {7}, "conexão recusada"), "conexão recusada\n"},
  };
  for (const auto& c : cases) {
    const std::string snap = snapshot_file(base, c.snapshot);
    const auto r = run_cli({"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--tipo", "2", "--base", base});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, c.message);
    EXPECT_EQ(read_file(base + kInfoPath), "anterior\r\n");
  }
}

TEST(CliExportar, AMissingInformationFolderIsAClearError) {
  const std::string base = fresh_dir("exportar-sem-pasta");
  const std::string snap = snapshot_file(base, Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}));
  const auto r = run_cli({"exportar", "--fonte", "snapshot:" + snap, "--registro", "7", "--tipo", "3", "--base", base});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "A pasta '" + base + "/Arquivos/InfoFiscal' não existe: o arquivo '" + base + kInfoPath +
                       "' não foi gravado\n");
}

TEST(CliExportar, UnknownSourceAddressExitsOne) {
  const std::string base = fresh_dir("exportar-endereco", true);
  const auto r = run_cli({"exportar", "--fonte", "oracle:x", "--registro", "7", "--tipo", "3", "--base", base});
  EXPECT_EQ(r.status, 1);
  EXPECT_THAT(r.err, ::testing::StartsWith("Endereço de fonte de dados desconhecido: 'oracle:x'"));
}

// The help of every command, the parser's frame included, is Portuguese: none of the English
// words CLI11 writes by itself.
TEST(CliAjuda, EveryHelpIsPortuguese) {
  const std::vector<std::vector<std::string>> chamadas = {
      {"--help"}, {"-h"}, {"--ajuda-completa"}, {"exportar", "--help"}, {"converter", "--help"}, {"validar", "-h"}};
  for (const auto& args : chamadas) {
    const auto r = run_cli(args);
    EXPECT_EQ(r.status, 0) << args.front();
    EXPECT_THAT(r.out, HasSubstr("Uso: infofiscal"));
    EXPECT_THAT(r.out, HasSubstr("Mostra esta ajuda e sai"));
    for (const char* ingles : {"Usage", "Options", "OPTIONS", "Subcommand", "SUBCOMMAND", "REQUIRED", " TEXT", " INT",
                               "Print this", "Display program", "help message", "Positionals", "Exactly", "Needs"})
      EXPECT_THAT(r.out, Not(HasSubstr(ingles))) << args.front() << " " << args.back();
    // Wrapped to 80 columns.
    for (std::size_t p = 0, e; (e = r.out.find('\n', p)) != std::string::npos; p = e + 1)
      EXPECT_LE(colunas_de(std::string_view(r.out).substr(p, e - p)), 80) << r.out.substr(p, e - p);
  }
  const auto exportar = run_cli({"exportar", "--help"}).out;
  EXPECT_THAT(exportar, HasSubstr("--fonte ENDEREÇO (obrigatória)"));
  EXPECT_THAT(exportar, HasSubstr("\n  --mes MÊS                 Mês (1 a 12) no nome sugerido do arquivo fiscal;\n"));
}

TEST(CliAjuda, VersionNamesTheProgramAndItsVersion) {
  const auto r = run_cli({"--version"});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, std::string("infofiscal ") + versao() + "\n");
  EXPECT_TRUE(std::regex_match(versao(), std::regex("[0-9]+\\.[0-9]+\\.[0-9]+"))) << versao();
}

// A catalog named by --catalogo or INFOFISCAL_CATALOGO is the one read; a missing one is an
// error that names it, also for a source that reads none.
TEST(CliExportar, TheCatalogNamedIsTheOneRead) {
  const std::string base = fresh_dir("exportar-catalogo", true);
  const std::string snap = snapshot_file(base, Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}));
  const TestDatabase db("sqlite", "exportar-catalogo", demo_script());
  // A catalog of the company's own, whose fiscal register query fails on purpose.
  const std::string proprio = base + "/empresa.sql";
  write_file(proprio, read_file(catalog_path()) + "\n-- provider: DspRegistroInfoFiscal [sqlite]\nSELECT * FROM nao_existe;\n");
  const std::vector<std::string> args = {"exportar", "--registro", "2", "--tipo", "3", "--base", base};
  const auto com = [&](std::vector<std::string> mais) {
    mais.insert(mais.begin(), args.begin(), args.end());
    return mais;
  };
  const struct {
    std::vector<std::string> args;
    Environment env;
    int status;
    std::string erro;
  } casos[] = {
      {com({"--fonte", db.address()}), {{"INFOFISCAL_CATALOGO", std::nullopt}}, 0, ""},
      {com({"--fonte", db.address(), "--catalogo", proprio}), {}, 1, "nao_existe"},
      {com({"--fonte", db.address()}), {{"INFOFISCAL_CATALOGO", proprio}}, 1, "nao_existe"},
      {com({"--fonte", db.address(), "--catalogo", catalog_path()}), {{"INFOFISCAL_CATALOGO", proprio}}, 0, ""},
      {com({"--fonte", db.address(), "--catalogo", base + "/sumiu.sql"}), {}, 1,
       "O catálogo de provedores '" + base + "/sumiu.sql' (--catalogo) não existe ou não pode ser lido\n"},
      {com({"--fonte", "snapshot:" + snap}), {{"INFOFISCAL_CATALOGO", base + "/sumiu.sql"}}, 1,
       "O catálogo de provedores '" + base + "/sumiu.sql' (INFOFISCAL_CATALOGO) não existe ou não pode ser lido\n"},
  };
  for (const auto& c : casos) {
    const auto r = run_cli(c.args, "", c.env);
    EXPECT_EQ(r.status, c.status) << r.err;
    if (c.status != 0) {
      EXPECT_THAT(r.err, HasSubstr(c.erro));
    }
  }
}

// The EFD options reach the file: the carried balance enters E110, the revenue code and due date
// E116, and the info line about placeholders goes; last month's file of another period is
// refused, naming it, before any target is written.
TEST(CliExportar, TheEfdOptionsReachBlockE) {
  const std::string base = fresh_dir("exportar-opcoes-efd", true);
  const TestDatabase db("sqlite", "exportar-opcoes-efd", demo_script());
  const std::string fiscal = base + "/efd.txt";
  const std::vector<std::string> args = {"exportar", "--fonte", db.address(), "--registro", "2", "--tipo", "2",
                                         "--base", base, "--arquivo-fiscal", fiscal, "--progresso", "nada"};
  const auto com = [&](std::vector<std::string> mais) {
    mais.insert(mais.begin(), args.begin(), args.end());
    return mais;
  };
  const auto r = run_cli(com({"--saldo-credor-anterior", "1.000,00", "--codigo-receita", "046-2", "--vencimento",
                              "09/04/2024"}));
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string efd = read_file(fiscal);
  // 1.000,00 carried lowers the ICMS to pay from 36.320,71 to 35.320,71.
  EXPECT_THAT(efd, HasSubstr("|E110|45497,17|0,00|0,00|0,00|9176,46|0,00|0,00|0,00|1000,00|35320,71|0,00|35320,71|"));
  EXPECT_THAT(efd, HasSubstr("|E116|000|35320,71|09042024|046-2|"));
  EXPECT_THAT(r.out, Not(HasSubstr("são marcadores")));

  const auto recusado = run_cli(com({"--efd-anterior", fiscal}));
  EXPECT_EQ(recusado.status, 1);
  EXPECT_THAT(recusado.err, HasSubstr("O arquivo EFD anterior '" + fiscal + "' é do período de 01/03/2024 a 31/03/2024"));
  EXPECT_EQ(read_file(fiscal), efd);
}

// The bar on stderr, as a terminal of 50 columns shows it: every drawing names its step and
// fits in 49 columns.
TEST(CliExportar, TheBarFitsTheTerminalAndNamesTheStep) {
  const std::string base = fresh_dir("exportar-barra", true);
  const TestDatabase db("sqlite", "exportar-barra", demo_script());
  const auto r = run_cli({"exportar", "--fonte", db.address(), "--registro", "2", "--tipo", "2", "--base", base,
                          "--arquivo-fiscal", base + "/efd.txt", "--progresso", "barra"},
                         "", {{"COLUMNS", "50"}});
  ASSERT_EQ(r.status, 0) << r.err;
  int desenhos = 0;
  std::set<std::string> passos;
  for (std::size_t p = 0; (p = r.err.find('\r', p)) != std::string::npos; ++p) {
    const std::size_t fim = r.err.find_first_of("\r\033", p + 1);
    const std::string desenho = r.err.substr(p + 1, fim - p - 1);
    if (desenho.empty()) continue;
    ++desenhos;
    EXPECT_LE(colunas_de(desenho), 49) << desenho;
    passos.insert(desenho.substr(0, 5));
  }
  EXPECT_GT(desenhos, 10);
  EXPECT_THAT(passos, Contains("2.05-"));  // a step of the export...
  EXPECT_THAT(passos, Contains("SPED "));  // ...and the converter's
}

}  // namespace
}  // namespace infofiscal
