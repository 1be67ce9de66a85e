// The launcher as a host script starts it: options, scripted runs and exit statuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/opcoes.h"
#include "gui/dialogo_salvar.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using namespace testing;

const std::string kInfo = "/Arquivos/InfoFiscal/SpedInformacao.txt";

CliResult dialogo(const std::vector<std::string>& args, const Environment& env = {}) {
  return run_program(INFOFISCAL_DIALOGO, args, "", env);
}

std::string snapshot_file(const std::string& dir, const Snapshot& snapshot) {
  write_file(dir + "/snapshot.json", snapshot.document().dump());
  return "snapshot:" + dir + "/snapshot.json";
}

TEST(LancadorDialogo, AScriptedRunSavesWhatTheCommandLineSaves) {
  const std::string base = fresh_dir("lancador-ok", true);
  const std::string cli = fresh_dir("lancador-cli", true);
  const std::string fonte = snapshot_file(base, Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}));
  const auto r = dialogo({"--fonte", fonte, "--registro", "7", "--tipo", "3", "--base", base, "--executar",
                          base + "/fiscal.txt", "--sair-em", "0.1"});
  EXPECT_EQ(r.status, 0) << r.err;
  const auto c = run_cli({"exportar", "--fonte", fonte, "--registro", "7", "--tipo", "3", "--base", cli});
  EXPECT_EQ(c.status, 0) << c.err;
  EXPECT_EQ(read_file(base + kInfo), read_file(cli + kInfo));
}

// The demo month from its SQLite database: the SINTEGRA and the EFD register give, through the
// dialog, the bytes of the command line.
TEST(LancadorDialogo, TheDemoDatabaseGivesTheFilesOfTheCommandLine) {
  const testing::TestDatabase db("sqlite", "lancador-demo", testing::demo_script());
  for (const std::string registro : {"1", "2"}) {
    const std::string base = fresh_dir("lancador-demo-" + registro, true);
    const std::string cli = fresh_dir("lancador-demo-cli-" + registro, true);
    const auto r = dialogo({"--fonte", db.address(), "--registro", registro, "--tipo", registro, "--base", base,
                            "--executar", base + "/fiscal.txt", "--sair-em", "0.1"});
    EXPECT_EQ(r.status, 0) << r.err;
    const auto c = run_cli({"exportar", "--fonte", db.address(), "--registro", registro, "--tipo", registro, "--base",
                            cli, "--arquivo-fiscal", cli + "/fiscal.txt"});
    EXPECT_EQ(c.status, 0) << c.err;
    EXPECT_EQ(read_file(base + kInfo), read_file(cli + kInfo)) << "register " << registro;
    EXPECT_FALSE(read_file(cli + "/fiscal.txt").empty());
    EXPECT_EQ(read_file(base + "/fiscal.txt"), read_file(cli + "/fiscal.txt")) << "register " << registro;
  }
}

TEST(LancadorDialogo, ErrorsReachTheHandlerAndTheExitStatus) {
  const std::string base = fresh_dir("lancador-falha", true);
  const struct {
    std::string fonte;
    std::string mensagem;
  } casos[] = {
      {snapshot_file(base, Snapshot().registro(7, {{"CDMES", 13}})), "Erro ano Gerar Registro Linha 01: Mês inválido: 13\n"},
      {"oracle:x", "Endereço de fonte de dados desconhecido: 'oracle:x'"},
  };
  for (const auto& c : casos) {
    const auto r = dialogo({"--fonte", c.fonte, "--registro", "7", "--tipo", "2", "--base", base, "--executar",
                            base + "/efd.txt", "--sair-em", "0.1"});
    EXPECT_EQ(r.status, 1);
    EXPECT_THAT(r.err, ::testing::HasSubstr(c.mensagem));
  }
}

TEST(LancadorDialogo, UsageErrorsExitTwoWithAPortugueseMessage) {
  const struct {
    std::vector<std::string> args;
    const char* mensagem;
  } casos[] = {
      {{"--fonte", "snapshot:x.json", "--registro", "7", "--tipo", "5", "--base", "."}, "valor inválido"},
      {{"--fonte", "snapshot:x.json", "--tipo", "1", "--base", "."}, "opção obrigatória ausente"},
      {{"--fonte", "snapshot:x.json", "--registro", "7", "--tipo", "1", "--base", ".", "--mes", "0"}, "valor inválido"},
      {{"--fonte", "snapshot:x.json", "--registro", "7", "--tipo", "1", "--base", ".", "--sair-em", "-1"},
       "valor inválido"},
      {{"--fonte", "snapshot:x.json", "--registro", "7", "--tipo", "1", "--base", ".", "--arquivo-fiscal", "x"},
       "argumento desconhecido"},
  };
  for (const auto& c : casos) {
    const auto r = dialogo(c.args);
    EXPECT_EQ(r.status, 2);
    EXPECT_THAT(r.err, ::testing::StartsWith(std::string("infofiscal-dialogo: ") + c.mensagem));
  }
}

TEST(LancadorDialogo, HelpAndVersionInPortuguese) {
  const auto versao_ = dialogo({"--version"});
  EXPECT_EQ(versao_.status, 0);
  EXPECT_EQ(versao_.out, std::string("infofiscal-dialogo ") + versao() + "\n");
  const auto ajuda = dialogo({"--help"});
  EXPECT_EQ(ajuda.status, 0);
  EXPECT_THAT(ajuda.out, ::testing::StartsWith("infofiscal-dialogo: a janela Exporta Informação Fiscal de um registro "
                                               "fiscal\nUso: infofiscal-dialogo [OPÇÕES]\n\nOpções:\n  -h,--help"));
  EXPECT_THAT(ajuda.out, ::testing::HasSubstr("  --catalogo ARQUIVO"));
  EXPECT_THAT(ajuda.out, ::testing::Not(::testing::HasSubstr("--executar")));  // the hidden options stay hidden
}

// Without a window system Qt would end the program with a core dump and English messages.
TEST(LancadorDialogo, WithoutADisplaySaysSoInPortugueseAndExitsOne) {
  const Environment sem_tela = {{"QT_QPA_PLATFORM", std::nullopt}, {"WAYLAND_DISPLAY", std::nullopt}};
  const struct {
    std::optional<std::string> display;
    std::string detalhe;
  } casos[] = {{std::nullopt, "(DISPLAY não definida)"}, {":99999", "(DISPLAY é :99999)"}};
  for (const auto& c : casos) {
    Environment env = sem_tela;
    env.push_back({"DISPLAY", c.display});
    const auto r = dialogo({"--fonte", "snapshot:x.json", "--registro", "7", "--tipo", "1", "--base", "."}, env);
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "infofiscal-dialogo: a janela precisa de uma tela gráfica, e nenhuma pôde ser aberta " + c.detalhe +
                         ". Abra-o numa sessão gráfica, ou use o comando infofiscal exportar, que faz a mesma "
                         "exportação sem janela.\n");
  }
}

TEST(DialogoSalvar, TheDesignerFilterBecomesQtNameFilters) {
  const struct {
    const char* filtro;
    QStringList esperado;
  } casos[] = {
      {"Todos (*.* )|*.*|Texto (*.txt)|*.txt", {"Todos (*)", "Texto (*.txt)"}},
      {"Planilhas|*.csv;*.tsv", {"Planilhas (*.csv *.tsv)"}},
      {"", {}},
  };
  for (const auto& c : casos) EXPECT_EQ(filtros_qt(c.filtro), c.esperado) << c.filtro;
}

}  // namespace
}  // namespace infofiscal
