#include "export/obj_exportainfofiscal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAreArray;
using testing::json;
using testing::Run;
using testing::Snapshot;
using testing::banner;
using testing::kStepTexts;

struct Export {
  explicit Export(const Snapshot& snapshot) : run(snapshot), orquestrador(run.conexao) {
    orquestrador.CodTipoRegistroFiscal(2);
    orquestrador.CodRegistroFiscal(7);
    orquestrador.PROC_LinhaInfo_B([this](const std::string& s) { run.info.push_back(s); });
    orquestrador.PROC_Progresso_B([this](int p, int m) { run.progress.emplace_back(p, m); });
  }
  Run run;
  TOBJ_ExportaInfoFiscal orquestrador;
};

TEST(Orchestrator, InfoLinesFollowTheStepTable) {
  Export e(Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}));
  const std::string text = e.orquestrador.RecInformacao(0, 0);
  auto expected = banner();
  expected.insert(expected.end(), kStepTexts.begin(), kStepTexts.end());
  expected.push_back("3-Gerar Arquivo de Informações: Final");
  EXPECT_THAT(e.run.info, ElementsAreArray(expected));
  EXPECT_EQ(text.substr(0, 5 + 2 + 6), "[C00]01[/C00]");
  EXPECT_EQ(text.substr(text.size() - 2), "\r\n");
  // Every step starts with its own progress reset.
  EXPECT_EQ(std::count(e.run.progress.begin(), e.run.progress.end(), std::pair{0, 0}), 23);
}

TEST(Orchestrator, TwoRunsDoNotAccumulate) {
  Export e(Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}));
  const std::string first = e.orquestrador.RecInformacao(0, 0);
  const std::string second = e.orquestrador.RecInformacao(0, 0);
  EXPECT_EQ(first, second);
  EXPECT_EQ(std::count(second.begin(), second.end(), '\n'), static_cast<long>(e.orquestrador.oArquivo.Count()));
}

TEST(Orchestrator, TheFirstFailureEndsTheRunUnchangedAndKeepsEarlierLines) {
  Export e(Snapshot().registro(7, {{"CDMES", 3}, {"ANO", 2024}}).error("DspEmpresa", {1}, "conexão recusada"));
  try {
    e.orquestrador.RecInformacao(0, 0);
    FAIL();
  } catch (const Error& err) {
    EXPECT_STREQ(err.what(), "conexão recusada");
  }
  ASSERT_EQ(e.orquestrador.oArquivo.Count(), 1u);
  EXPECT_EQ(e.orquestrador.oArquivo[0].substr(0, 13), "[C00]01[/C00]");
  auto expected = banner();
  expected.push_back(kStepTexts[0]);
  expected.push_back(kStepTexts[1]);
  EXPECT_THAT(e.run.info, ElementsAreArray(expected));  // no later step, no final line
}

TEST(Orchestrator, AFailingLineOneStopsBeforeTheCompany) {
  Export e(Snapshot().registro(7, {{"CDMES", 0}}));
  EXPECT_THROW(e.orquestrador.RecInformacao(0, 0), Error);
  EXPECT_EQ(e.orquestrador.oArquivo.Count(), 0u);
  EXPECT_EQ(e.run.info.back(), kStepTexts[0]);
}

}  // namespace
}  // namespace infofiscal
