// The command line as a scheduler sees it: exit status, stdout, stderr and the files left.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cli.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using namespace testing;

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
  // Every report of the progress callback, the resets included, and nothing else.
  EXPECT_EQ(r.err.find("progresso 0/0\n"), 0u);
  EXPECT_THAT(r.err, ::testing::MatchesRegex("(progresso [0-9]+/[0-9]+\n)+"));
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

}  // namespace
}  // namespace infofiscal
