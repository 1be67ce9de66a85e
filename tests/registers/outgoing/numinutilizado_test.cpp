#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "registers/outgoing/dtm_a_nf_numinutilizado.h"
#include "support/fixture.h"
#include "support/generate.h"
#include "support/golden.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::json;
using testing::Snapshot;

// Every switch off: the voided numbers need none.
Snapshot base() { return Snapshot().registro(7); }

json voided(int key, int number) {
  return {{"CDNFE_INUTILIZADO", key}, {"DATA", "2024-03-05"}, {"CDNFE_NUMINUTILIZADO", number}};
}

testing::Generated generate(const Snapshot& snapshot, TRegistroFiscal tipo = 2, TProcProgresso on_progress = nullptr) {
  return testing::generate(snapshot, &TDTM_A_NF_NumInutilizado::L04_RegistroNF_NumInutilizado, on_progress, tipo);
}

TEST(VoidedNumbers, OneLine04PerNumberInPacketOrder) {
  // The request is [kind of file, fiscal register].
  const testing::Generated o =
      generate(base().request("DspListaNFeInutilizado", {2, 7}, {voided(9, 102), voided(8, 101)}));
  EXPECT_TRUE(testing::matches_golden("inutilizados.txt", o.lines));  // kind 21, model 55, situation 5
  EXPECT_THAT(o.progress, ElementsAre(std::pair{1, 2}, std::pair{2, 2}));
}

TEST(VoidedNumbers, NoNumberNoLineNoProgress) {
  // An answer kept for SINTEGRA does not answer a SPED EFD run.
  const testing::Generated o =
      generate(base().request("DspListaNFeInutilizado", {1, 7}, json::array({voided(8, 101)})));
  EXPECT_THAT(o.lines, IsEmpty());
  EXPECT_THAT(o.progress, IsEmpty());
}

TEST(VoidedNumbers, FailuresOutsideTheLinePassUnchanged) {
  EXPECT_THAT(generate(Snapshot().error("DspRegistroInfoFiscal", {7}, "banco fora do ar")).lines,
              ElementsAre("erro: banco fora do ar"));
  EXPECT_THAT(generate(base().request_error("DspListaNFeInutilizado", {2, 7}, "serviço indisponível")).lines,
              ElementsAre("erro: serviço indisponível"));
  EXPECT_THAT(
      generate(base().request("DspListaNFeInutilizado", {2, 7}, json::array({{{"CDNFE_NUMINUTILIZADO", 5}}}))).lines,
      ElementsAre("erro: Campo 'CDNFE_INUTILIZADO' não encontrado em TabNFeInutilizada"));
  // The progress report stands outside the line's error rule: a cancel passes as it is, after
  // the lines of the earlier numbers.
  const auto cancela = [](int p, int) {
    if (p == 2) throw Error("cancelado pelo usuário");
  };
  const testing::Generated o =
      generate(base().request("DspListaNFeInutilizado", {2, 7}, {voided(8, 101), voided(9, 102)}), 2, cancela);
  ASSERT_EQ(o.lines.size(), 2u);
  EXPECT_EQ(o.lines[0].substr(0, 52), "[C00]04[/C00][C01]21[/C01][C02]1[/C02][C03]101[/C03]");
  EXPECT_EQ(o.lines[1], "erro: cancelado pelo usuário");
}

}  // namespace
}  // namespace infofiscal
