// Whole runs of the command over the demo month: the demo script loaded into SQLite, PostgreSQL
// and Firebird gives the same files, and a recorded snapshot replays a run byte for byte.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/error.h"
#include "base/renderings.h"
#include "base/system.h"
#include "export/controle_exportacao.h"
#include "fiscal/arquivo_fiscal.h"
#include "host/sources/sql_source.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "support/golden.h"
#include "support/sql_script.h"

namespace infofiscal {
namespace {

using namespace testing;

// What a scheduler sees of one run: status, stdout, stderr up to the summary, the summary,
// and both files (empty when absent) in the base folder.
struct Outcome {
  int status = -1;
  std::string out, err, resumo, info, fiscal, base;
};

struct Register {
  const char* registro;
  const char* tipo;
};
const Register kRegisters[] = {{"1", "1"}, {"2", "2"}};  // SINTEGRA and EFD, every switch "S"

Outcome exportar(const std::string& fonte, const Register& r, const std::string& name,
                 std::vector<std::string> extra = {}) {
  const std::string base = fresh_dir(name, true);
  std::vector<std::string> args = {"exportar", "--fonte", fonte, "--registro", r.registro, "--tipo", r.tipo,
                                   "--base", base, "--arquivo-fiscal", base + "/fiscal.txt", "--progresso", "nada"};
  args.insert(args.end(), extra.begin(), extra.end());
  const auto run = run_cli(args);
  const std::size_t resumo = std::min(run.err.find("Resumo: "), run.err.size());
  return {run.status, run.out, run.err.substr(0, resumo), run.err.substr(resumo),
          read_file(base + "/Arquivos/InfoFiscal/SpedInformacao.txt"), read_file(base + "/fiscal.txt"), base};
}

std::string linhas(const std::string& bytes) { return format_count(std::count(bytes.begin(), bytes.end(), '\n')); }

void expect_same(const Outcome& a, const Outcome& b, bool same_err) {
  EXPECT_EQ(a.status, b.status) << a.err << "\n---\n" << b.err;
  EXPECT_EQ(a.out, b.out);
  if (same_err) {
    EXPECT_EQ(a.err, b.err);
  }
  EXPECT_EQ(a.info.size(), b.info.size());
  EXPECT_TRUE(a.info == b.info) << "the information files differ";
  EXPECT_TRUE(a.fiscal == b.fiscal) << "the fiscal files differ";
}

TEST(SqlDemo, ASnapshotRecordedFromSqliteReplaysTheRunByteForByte) {
  TestDatabase db("sqlite", "demo-gravacao", demo_script());
  for (const auto& r : kRegisters) {
    const std::string snapshot = fresh_dir(std::string("demo-snapshot-") + r.registro) + "/gravado.json";
    const Outcome live = exportar(db.address(), r, "demo-ao-vivo", {"--gravar-snapshot", snapshot});
    // The demo month converts: valid access keys, party codes and totals in both fiscal files.
    EXPECT_EQ(live.status, 0) << live.err;
    EXPECT_FALSE(live.fiscal.empty());
    EXPECT_EQ(live.info.rfind("[C00]01[/C00][C01]" + std::string(r.tipo) + "[/C01][C02]01/03/2024[/C02]", 0), 0u)
        << live.err;
    // Every switch is on: every kind of line is there.
    for (const char* line : {"02", "03", "04", "05", "06", "12", "13", "14", "15", "16", "17", "18", "19"})
      EXPECT_NE(live.info.find(std::string("\r\n[C00]") + line + "[/C00]"), std::string::npos) << line;
    // The summary counts the lines of the files it names.
    EXPECT_EQ(live.resumo, "Resumo: 2 arquivos gravados\n  informações: " +
                               caminho_normal(live.base + "/Arquivos/InfoFiscal/SpedInformacao.txt") + " (" +
                               linhas(live.info) + " linhas)\n  " +
                               (r.tipo == std::string("1") ? "SINTEGRA" : "SPED EFD ICMS/IPI") + ": " +
                               caminho_normal(live.base + "/fiscal.txt") + " (" + linhas(live.fiscal) + " registros)\n");
    const Outcome replay = exportar("snapshot:" + snapshot, r, "demo-replay");
    expect_same(live, replay, /*same_err=*/true);
  }
}

// The demo months' fiscal files, as the generators and the converters write them: the SINTEGRA
// file and the EFD file of every kind of note, catalogue and inventory the demo holds (March
// 2024), and of the identities of 2026 (August 2026: an alphanumeric CNPJ, a CPF, a sale at 7%).
TEST(SqlDemo, TheDemoMonthsGiveTheseFiscalFiles) {
  TestDatabase db("sqlite", "demo-arquivos", demo_script());
  const std::pair<Register, const char*> arquivos[] = {{kRegisters[0], "demo_sintegra_marco_2024.txt"},
                                                       {kRegisters[1], "demo_efd_marco_2024.txt"},
                                                       {{"3", "1"}, "demo_sintegra_agosto_2026.txt"},
                                                       {{"4", "2"}, "demo_efd_agosto_2026.txt"}};
  for (const auto& [r, golden] : arquivos) {
    const Outcome o = exportar(db.address(), r, std::string("demo-arquivo-") + r.registro);
    EXPECT_EQ(o.status, 0) << o.err;
    EXPECT_TRUE(matches_golden(golden, o.fiscal));
  }
  // What March's EFD leaves uncredited, said as people read amounts.
  const Outcome efd = exportar(db.address(), kRegisters[1], "demo-arquivo-nao-creditado");
  for (const char* linha : {"ICMS não creditado de entradas para uso e consumo (CFOP 1556, 2556, 3556, 1407, 2407): "
                            "19.531,27; ",
                            "ICMS não creditado de entradas para o ativo imobilizado (CFOP 1551, 2551, 3551, 1406, "
                            "2406): 21.064,96; "})
    EXPECT_NE((efd.out + efd.err).find(linha), std::string::npos) << efd.out << efd.err;
}

// Names in UTF-8 reach the files they name: the command line's arguments, the database, the base
// folder and the fiscal file (on Windows, where the system takes names in UTF-16).
TEST(SqlDemo, NamesWithAccentsNameTheirFiles) {
  const std::string pasta = fresh_dir("demo-acentos") + "/São Paulo";
  std::filesystem::create_directories(path_of(pasta + "/Arquivos/InfoFiscal"));
  const std::string banco = pasta + "/ação.sqlite", fiscal = pasta + "/EFD março.txt";
  run_sql_script("sqlite:" + banco, demo_script());
  const auto run = run_cli({"exportar", "--fonte", "sqlite:" + banco, "--registro", "2", "--tipo", "2", "--base", pasta,
                            "--arquivo-fiscal", fiscal, "--progresso", "nada"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(matches_golden("demo_efd_marco_2024.txt", read_file(fiscal)));
  // The file's bytes are the golden's; the summary names it by its own name.
  EXPECT_NE(run.err.find("  SPED EFD ICMS/IPI: " + caminho_normal(fiscal) + " ("), std::string::npos)
      << run.err;
}

// The two ways a run hands the information to the converter: the dialog's text, and the saved
// file read back where it waits (the command line's, in bounded memory). Both give the same
// fiscal file, accents included (the file is read back as the code page it was written in). A
// run cancelled in the converter reading the file leaves the earlier information file and no
// temporary, and one refused by the converter still puts its information file in place.
TEST(SqlDemo, TheConverterReadsTheSavedFileAsItReadsTheText) {
  TestDatabase db("sqlite", "demo-frentes", demo_script());
  for (const auto& r : kRegisters) {
    SCOPED_TRACE(r.registro);
    SqlSource source(db.address(), catalog_path());
    TDTM_ConexaoDS conexao{source, TOBJ_InfoSistema_v11c([] { return 1; })};
    ControleExportacao controle(conexao);
    controle.oExportaInfoFiscal.CodTipoRegistroFiscal(static_cast<TRegistroFiscal>(std::stoi(r.tipo)));
    controle.oExportaInfoFiscal.CodRegistroFiscal(std::stoi(r.registro));
    std::string fiscal[2], info[2];
    for (const bool do_arquivo : {false, true}) {
      const std::string base = fresh_dir(std::string("demo-frente-") + (do_arquivo ? "arquivo" : "texto"), true);
      controle.ConverteDoArquivo = do_arquivo;
      const std::string texto = controle.GerarInformacao(base, 0, 0);
      EXPECT_EQ(texto.empty(), do_arquivo);
      if (do_arquivo)
        controle.SalvarArquivoFiscal_A(base + "/fiscal.txt");
      else
        controle.SalvarArquivoFiscal_A(base + "/fiscal.txt", texto);
      fiscal[do_arquivo] = read_file(base + "/fiscal.txt");
      info[do_arquivo] = read_file(ControleExportacao::CaminhoInformacao(base));
    }
    EXPECT_TRUE(matches_golden(r.tipo == std::string("1") ? "demo_sintegra_marco_2024.txt" : "demo_efd_marco_2024.txt",
                               fiscal[true]));
    EXPECT_TRUE(fiscal[false] == fiscal[true]) << "the fiscal files differ";
    EXPECT_TRUE(info[false] == info[true]) << "the information files differ";
    EXPECT_NE(info[true].find('\xE7'), std::string::npos) << "the demo's information file has an accent (ç)";

    // Cancelled at the converter's first report, and refused by the converter.
    const std::string base = fresh_dir("demo-frente-cancelada", true);
    const std::string pasta = base + "/Arquivos/InfoFiscal";
    write_file(ControleExportacao::CaminhoInformacao(base), "anterior\r\n");
    bool convertendo = false;
    controle.Progresso = [&](int, int) {
      if (convertendo) controle.Cancelar();
    };
    controle.GerarInformacao(base, 0, 0);
    convertendo = true;
    EXPECT_THROW(controle.SalvarArquivoFiscal_A(base + "/fiscal.txt"), ExecucaoCancelada);
    EXPECT_EQ(read_file(ControleExportacao::CaminhoInformacao(base)), "anterior\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(pasta), std::filesystem::directory_iterator()), 1);
    EXPECT_FALSE(std::filesystem::exists(base + "/fiscal.txt"));

    convertendo = false;
    controle.GerarInformacao(base, 0, 0);
    EXPECT_THROW(controle.SalvarArquivoFiscal_A(ControleExportacao::CaminhoInformacao(base)), Error);
    EXPECT_TRUE(read_file(ControleExportacao::CaminhoInformacao(base)) == info[true]);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(pasta), std::filesystem::directory_iterator()), 1);
  }
}

// What a run of the controller said and wrote, its base folder written as {base}.
struct Conversao {
  std::vector<std::string> linhas;
  std::string erro, fiscal, problemas, info;
  bool temporarios = false;  // a hidden temporary left beside the fiscal file
};

Conversao converte(TDTM_ConexaoDS& conexao, const std::string& tipo, const std::string& nome, bool antecipada) {
  const std::string base = fresh_dir(nome, true), destino = base + "/fiscal.txt";
  ControleExportacao controle(conexao);
  controle.oExportaInfoFiscal.CodTipoRegistroFiscal(static_cast<TRegistroFiscal>(std::stoi(tipo)));
  controle.oExportaInfoFiscal.CodRegistroFiscal(std::stoi(tipo));
  controle.ConverteDoArquivo = true;
  if (antecipada) controle.NomeAntecipado = destino;
  Conversao c;
  controle.LinhaInfo = [&](const std::string& l) { c.linhas.push_back(l); };
  try {
    controle.GerarInformacao(base, 0, 0);
    controle.SalvarArquivoFiscal_A(destino);
  } catch (const Error& e) {
    c.erro = e.what();
    for (std::size_t p; (p = c.erro.find(base)) != std::string::npos;) c.erro.replace(p, base.size(), "{base}");
  }
  c.fiscal = read_file(destino);
  c.problemas = read_file(TOBJ_ArquivoFiscal::RelatorioDeProblemas(destino));
  c.info = read_file(ControleExportacao::CaminhoInformacao(base));
  for (const auto& e : std::filesystem::directory_iterator(base)) c.temporarios |= e.path().filename().string()[0] == '.';
  return c;
}

// Converted beside the export (the command line names the file first), a month gives the lines,
// error and files of a conversion after the export: a good month its file, and one with problems
// the same list, from the saved file read again (the text read once brings the catalogues only
// after the notes); the lines said by that first try are not said twice.
TEST(SqlDemo, AConversionBesideTheExportGivesWhatOneAfterItGives) {
  const struct {
    const char* caso;
    std::string script;
  } casos[] = {
      {"o mês de demonstração", demo_script()},
      {"fornecedores de CNPJ inválido", demo_script() + "UPDATE fornecedor SET cnpj_cpf = '11.444.777/0001-62';\n"},
  };
  for (const auto& c : casos) {
    TestDatabase db("sqlite", "demo-antecipada", c.script);
    for (const auto& r : kRegisters) {
      SCOPED_TRACE(std::string(c.caso) + ", tipo " + r.tipo);
      SqlSource source(db.address(), catalog_path());
      TDTM_ConexaoDS conexao{source, TOBJ_InfoSistema_v11c([] { return 1; })};
      const Conversao depois = converte(conexao, r.tipo, "demo-depois", false);
      const Conversao junto = converte(conexao, r.tipo, "demo-junto", true);
      EXPECT_EQ(junto.linhas, depois.linhas);
      EXPECT_EQ(junto.erro, depois.erro);
      EXPECT_TRUE(junto.fiscal == depois.fiscal) << "the fiscal files differ";
      EXPECT_EQ(junto.problemas, depois.problemas);
      EXPECT_TRUE(junto.info == depois.info) << "the information files differ";
      EXPECT_FALSE(junto.temporarios);
      EXPECT_EQ(depois.erro.empty(), c.script == demo_script()) << depois.erro;
    }
  }
}

// A run cancelled during the export stops the conversion beside it: nothing is written, no
// temporary is left beside the fiscal file, and the earlier information file stays.
TEST(SqlDemo, ACancelledExportStopsTheConversionBesideIt) {
  TestDatabase db("sqlite", "demo-antecipada-cancelada", demo_script());
  for (const auto& r : kRegisters) {
    SCOPED_TRACE(r.tipo);
    SqlSource source(db.address(), catalog_path());
    TDTM_ConexaoDS conexao{source, TOBJ_InfoSistema_v11c([] { return 1; })};
    const std::string base = fresh_dir("demo-antecipada-cancelada", true);
    write_file(ControleExportacao::CaminhoInformacao(base), "anterior\r\n");
    ControleExportacao controle(conexao);
    controle.oExportaInfoFiscal.CodTipoRegistroFiscal(static_cast<TRegistroFiscal>(std::stoi(r.tipo)));
    controle.oExportaInfoFiscal.CodRegistroFiscal(std::stoi(r.registro));
    controle.ConverteDoArquivo = true;
    controle.NomeAntecipado = base + "/fiscal.txt";
    int relatos = 0;
    controle.Progresso = [&](int, int) {
      if (++relatos == 20) controle.Cancelar();
    };
    EXPECT_THROW(controle.GerarInformacao(base, 0, 0), ExecucaoCancelada);
    EXPECT_EQ(read_file(ControleExportacao::CaminhoInformacao(base)), "anterior\r\n");
    std::vector<std::string> nomes;
    for (const auto& e : std::filesystem::directory_iterator(base)) nomes.push_back(e.path().filename().string());
    EXPECT_EQ(nomes, std::vector<std::string>{"Arquivos"});
  }
}

class SqlDemoBancos : public ::testing::TestWithParam<std::string> {};

// The same script loaded into another database gives the bytes of SQLite, for a SINTEGRA and
// an EFD register.
TEST_P(SqlDemoBancos, GiveTheFilesOfSqlite) {
  SKIP_WITHOUT(GetParam());
  TestDatabase lite("sqlite", "demo-igual", demo_script());
  const TestDatabase other(GetParam(), "demo_igual", demo_script());
  for (const auto& r : kRegisters) {
    const Outcome a = exportar(lite.address(), r, "demo-sqlite");
    EXPECT_FALSE(a.info.empty()) << a.err;
    expect_same(a, exportar(other.address(), r, "demo-" + GetParam()), /*same_err=*/false);
  }
}

INSTANTIATE_TEST_SUITE_P(Bancos, SqlDemoBancos, ::testing::Values("postgresql", "firebird"));

TEST(SqlDemo, AnUnusableDatabaseEndsTheRunWithStatusOneAndWritesNothing) {
  const std::string dir = fresh_dir("demo-ruim");
  // A schema without the fiscal registers: the first fetch fails, naming the table.
  TestDatabase partial("sqlite", "demo-parcial", "CREATE TABLE empresa (cdempresa INTEGER);\n");
  const struct {
    std::string fonte, message;
  } cases[] = {
      {"sqlite:" + dir + "/nao-existe.sqlite", "Banco de dados SQLite '" + dir + "/nao-existe.sqlite' não encontrado\n"},
      {partial.address(), "Erro ao consultar DspRegistroInfoFiscal (TabRegistroInfoFiscal) em '" + partial.address() +
                              "': a tabela 'registrofiscal' não existe no banco"},
  };
  for (const auto& c : cases) {
    const Outcome o = exportar(c.fonte, kRegisters[1], "demo-falha");
    EXPECT_EQ(o.status, 1);
    EXPECT_EQ(o.err.rfind(c.message, 0), 0u) << o.err;
    EXPECT_EQ(o.info, "");
    EXPECT_EQ(o.fiscal, "");
  }
}

}  // namespace
}  // namespace infofiscal
