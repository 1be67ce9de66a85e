// Where a run's files land when the targets are links or have permissions of their own: a link
// is written through (the file it leads to is replaced, the link stays a link), an existing file
// keeps its permission bits, and no temporary is left in any of the folders involved.
#include <filesystem>
#include <map>

#include <gtest/gtest.h>

#include "base/error.h"
#include "export/controle_exportacao.h"
#include "faults/support.h"
#include "host/sources/snapshot_source.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "support/fixture.h"
#include "support/sql_script.h"

namespace infofiscal {
namespace {

using namespace testing;
namespace fs = std::filesystem;

// The two targets of a run, relative to its base folder.
const std::string kInfo = "Arquivos/InfoFiscal/SpedInformacao.txt";
const std::string kFiscal = "fiscal.txt";

constexpr fs::perms kPadrao = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read | fs::perms::others_read;
constexpr fs::perms kSoDono = fs::perms::owner_read | fs::perms::owner_write;
constexpr fs::perms kGrupoLe = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;

struct Caso {
  const char* nome;
  // Made in this order before the run: a link, and the text it holds (relative to the link's
  // folder, or absolute when it begins with "{dir}").
  std::vector<std::pair<std::string, std::string>> links;
  // Files given these permissions before the run; a target with none here is a new file.
  std::map<std::string, fs::perms> antes;
  // Each target, and the file that must hold its new bytes after the run.
  std::map<std::string, std::string> destinos;
  // Permissions after the run.
  std::map<std::string, fs::perms> depois;
};

const Caso kCasos[] = {
    {"arquivos comuns", {}, {{kInfo, kPadrao}, {kFiscal, kPadrao}}, {{kInfo, kInfo}, {kFiscal, kFiscal}},
     {{kInfo, kPadrao}, {kFiscal, kPadrao}}},
    {"permissões de cada arquivo mantidas", {}, {{kInfo, kSoDono}, {kFiscal, kGrupoLe}},
     {{kInfo, kInfo}, {kFiscal, kFiscal}}, {{kInfo, kSoDono}, {kFiscal, kGrupoLe}}},
    {"arquivo fiscal novo", {}, {{kInfo, kPadrao}}, {{kInfo, kInfo}, {kFiscal, kFiscal}}, {{kFiscal, kPadrao}}},
    {"informação por um link relativo", {{kInfo, "../../reais/info.txt"}}, {{"reais/info.txt", kSoDono}},
     {{kInfo, "reais/info.txt"}, {kFiscal, kFiscal}}, {{"reais/info.txt", kSoDono}}},
    {"arquivo fiscal por um link que leva a outro",
     {{kFiscal, "atalho.txt"}, {"atalho.txt", "{dir}/reais/fiscal.txt"}}, {{"reais/fiscal.txt", kGrupoLe}},
     {{kInfo, kInfo}, {kFiscal, "reais/fiscal.txt"}}, {{"reais/fiscal.txt", kGrupoLe}}},
    {"link que leva a um arquivo que ainda não existe", {{kFiscal, "reais/novo.txt"}}, {},
     {{kInfo, kInfo}, {kFiscal, "reais/novo.txt"}}, {{"reais/novo.txt", kPadrao}}},
};

std::string expandir(const std::string& s, const std::string& dir) {
  return s.rfind("{dir}", 0) == 0 ? dir + s.substr(5) : s;
}

// The SINTEGRA run of the demo's register 1 from `banco` into `dir`.
int exportar(const std::string& banco, const std::string& dir) {
  return run_cli({"exportar", "--fonte", "sqlite:" + banco, "--registro", "1", "--tipo", "1", "--base", dir,
                  "--arquivo-fiscal", dir + "/" + kFiscal, "--progresso", "nada"})
      .status;
}

TEST(Destinos, ALinkIsWrittenThroughAndAFileKeepsItsPermissions) {
  const std::string banco = fresh_dir("destinos-banco") + "/erp.db";
  run_sql_script("sqlite:" + banco, demo_script());
  const std::string esperado = fresh_dir("destinos-esperado", true);
  ASSERT_EQ(exportar(banco, esperado), 0);
  for (const Caso& c : kCasos) {
    SCOPED_TRACE(c.nome);
    if (!c.links.empty() && !links_simbolicos()) continue;  // the rows of links need a system that makes them
    const std::string dir = fresh_dir("destinos", true);
    fs::create_directory(dir + "/reais");
    for (const auto& [link, texto] : c.links) fs::create_symlink(expandir(texto, dir), dir + "/" + link);
    for (const auto& [arquivo, modo] : c.antes) {
      write_file(dir + "/" + arquivo, "anterior\r\n");
      fs::permissions(dir + "/" + arquivo, modo);
    }

    ASSERT_EQ(exportar(banco, dir), 0);
    for (const auto& [link, texto] : c.links) {
      EXPECT_TRUE(fs::is_symlink(dir + "/" + link)) << link;
      EXPECT_EQ(fs::read_symlink(dir + "/" + link).string(), expandir(texto, dir)) << link;
    }
    for (const auto& [alvo, arquivo] : c.destinos)
      EXPECT_EQ(read_file(dir + "/" + arquivo), read_file(esperado + "/" + alvo)) << alvo << " em " << arquivo;
    if (bits_de_permissao()) {
      for (const auto& [arquivo, modo] : c.depois)
        EXPECT_EQ(fs::status(dir + "/" + arquivo).permissions(), modo) << arquivo;
    }
    for (const char* pasta : {"", "/reais", "/Arquivos/InfoFiscal"}) EXPECT_EQ(temporarios(dir + pasta), 0) << pasta;
  }
}

// The dialog asks for the fiscal file's name in a save dialog, where any file may be chosen: the
// run controller refuses to convert into a file the source reads or into the information file.
TEST(Destinos, TheRunControllerRefusesAFiscalFileThatTheRunReads) {
  const std::string dir = fresh_dir("destinos-controle", true);
  const std::string snapshot = dir + "/s.json", info = dir + "/" + kInfo;
  write_file(snapshot, Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}).document().dump());
  SnapshotSource fonte(snapshot);
  TDTM_ConexaoDS conexao{fonte, TOBJ_InfoSistema_v11c()};
  ControleExportacao controle(conexao);
  controle.oExportaInfoFiscal.CodTipoRegistroFiscal(1);
  controle.oExportaInfoFiscal.CodRegistroFiscal(7);
  const std::string texto = controle.GerarInformacao(dir, 0, 0);
  const struct {
    std::string nome, erro;
  } casos[] = {
      {snapshot, "o arquivo fiscal '" + snapshot + "' é o mesmo arquivo que a fonte de dados ('" + snapshot +
                     "'): gravar nele o destruiria; escolha outro nome"},
      {dir + "/Arquivos/../" + kInfo, "o arquivo fiscal '" + dir + "/Arquivos/../" + kInfo +
                                          "' é o mesmo arquivo que o arquivo de informações ('" + info +
                                          "'): gravar nele o destruiria; escolha outro nome"},
  };
  for (const auto& c : casos) {
    const std::string antes = read_file(c.nome);
    try {
      controle.SalvarArquivoFiscal_A(c.nome, texto);
      ADD_FAILURE() << c.nome;
    } catch (const Error& e) {
      EXPECT_EQ(e.what(), c.erro);
    }
    EXPECT_EQ(read_file(c.nome), antes);
  }
}

}  // namespace
}  // namespace infofiscal
