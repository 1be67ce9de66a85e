// The run controller shared by the fronts: what it says it wrote, and a run cancelled from its
// progress callback.
#include "export/controle_exportacao.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "support/cli.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::StartsWith;
using testing::caminho_normal;
using testing::fresh_dir;
using testing::read_file;
using testing::Snapshot;
using testing::write_file;

const std::string kInfo = "/Arquivos/InfoFiscal/SpedInformacao.txt";

Snapshot marco_2024() { return Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}); }

// A run that writes only the information file says so, and why no fiscal file came.
TEST(ControleExportacao, TheSummaryOfARunWithoutFiscalFileSaysWhy) {
  const struct {
    TRegistroFiscal tipo;
    bool somente_informacao;
    const char* porque;
  } casos[] = {
      {0, false, "o tipo 0 (indefinido) não tem arquivo fiscal a gerar"},
      {3, false, "o tipo 3 (SPED Contribuições) não tem arquivo fiscal a gerar"},
      {1, true, "o arquivo SINTEGRA não foi pedido"},
      {2, true, "o arquivo SPED EFD ICMS/IPI não foi pedido"},
  };
  for (const auto& c : casos) {
    const std::string base = fresh_dir("controle-resumo", true);
    testing::Run run(marco_2024());
    ControleExportacao controle(run.conexao);
    controle.oExportaInfoFiscal.CodTipoRegistroFiscal(c.tipo);
    controle.oExportaInfoFiscal.CodRegistroFiscal(7);
    controle.SomenteInformacao = c.somente_informacao;
    EXPECT_EQ(controle.GerarInformacao(base, 0, 0), "");
    EXPECT_THAT(controle.Resumo(),
                ElementsAre(std::string("Resumo: só o arquivo de informações foi gravado; ") + c.porque,
                            "  informações: " + caminho_normal(base + kInfo) + " (3 linhas)"));
    ASSERT_EQ(controle.Gravados().size(), 1u);
    EXPECT_EQ(controle.Gravados().front().tipo, ArquivoGravado::Tipo::informacao);
  }
}

// Cancelled at the n-th progress report: the run stops there, the earlier file stays, no
// temporary is left, and the next run of the same controller goes through.
TEST(ControleExportacao, ACancelledRunStopsAtTheNextReportAndChangesNothing) {
  for (const int em : {1, 5, 23}) {
    const std::string base = fresh_dir("controle-cancelar", true);
    write_file(base + kInfo, "anterior\r\n");
    testing::Run run(marco_2024());
    ControleExportacao controle(run.conexao);
    controle.oExportaInfoFiscal.CodTipoRegistroFiscal(3);
    controle.oExportaInfoFiscal.CodRegistroFiscal(7);
    int relatos = 0;
    controle.Progresso = [&](int, int) {
      if (++relatos == em) controle.Cancelar();
    };
    EXPECT_THROW(controle.GerarInformacao(base, 0, 0), ExecucaoCancelada) << em;
    EXPECT_EQ(relatos, em);
    EXPECT_EQ(read_file(base + kInfo), "anterior\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(base + "/Arquivos/InfoFiscal"),
                            std::filesystem::directory_iterator()),
              1);
    EXPECT_TRUE(controle.Gravados().empty());

    controle.Progresso = nullptr;
    controle.GerarInformacao(base, 0, 0);
    EXPECT_EQ(read_file(base + kInfo).substr(0, 13), "[C00]01[/C00]");
  }
}

// The report of a month the converter refuses is written all the same, and the controller names
// it for the front (the dialog's button); the information file is put in place as always. A
// report that would overwrite one of the run's files is refused before anything is written.
TEST(ControleExportacao, TheReportOfARefusedMonthAndAReportThatWouldOverwriteAFile) {
  const std::string base = fresh_dir("controle-relatorio", true);
  const std::string relatorio = base + "/efd.relatorio.html";
  testing::Run run(marco_2024());
  ControleExportacao controle(run.conexao);
  controle.oExportaInfoFiscal.CodTipoRegistroFiscal(2);
  controle.oExportaInfoFiscal.CodRegistroFiscal(7);
  // The snapshot's register has no company: the validator refuses block 0.
  const struct {
    std::string relatorio, erro_comeca, erro_termina, gravado;
  } casos[] = {
      {relatorio, "Arquivo SPED EFD ICMS/IPI inválido; nada foi gravado:\nLinha 1: 0000 campo NOME obrigatório vazio",
       "\nO relatório do mês está em '" + relatorio + "'", relatorio},
      {ControleExportacao::CaminhoInformacao(base),
       "o relatório '" + base + kInfo + "' é o mesmo arquivo que o arquivo de informações ('" + base + kInfo +
           "'): gravar nele o destruiria; escolha outro nome",
       "escolha outro nome", ""},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.relatorio);
    std::filesystem::remove(relatorio);
    controle.Relatorio = c.relatorio;
    const std::string texto = controle.GerarInformacao(base, 0, 0);
    try {
      controle.SalvarArquivoFiscal_A(base + "/efd.txt", texto);
      ADD_FAILURE() << "sem erro";
    } catch (const Error& e) {
      EXPECT_THAT(e.what(), AllOf(StartsWith(c.erro_comeca), EndsWith(c.erro_termina)));
    }
    EXPECT_EQ(controle.RelatorioGravado(), c.gravado);
    EXPECT_EQ(std::filesystem::exists(relatorio), !c.gravado.empty());
    EXPECT_FALSE(std::filesystem::exists(base + "/efd.txt"));
    ASSERT_EQ(controle.Gravados().size(), 1u);
    EXPECT_EQ(controle.Gravados().front().tipo, ArquivoGravado::Tipo::informacao);
    EXPECT_EQ(read_file(base + kInfo).substr(0, 13), "[C00]01[/C00]");
  }
}

}  // namespace
}  // namespace infofiscal
