#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/error.h"
#include "registers/outgoing/dtm_a_nf_numinutilizado.h"
#include "support/fixture.h"
#include "support/generate.h"

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
  EXPECT_THAT(
      o.lines,
      ElementsAre("[C00]04[/C00][C01]21[/C01][C02]1[/C02][C03]102[/C03][C04][/C04][C05][/C05][C06]55[/C06]"
                  "[C07][/C07][C08][/C08][C09][/C09][C10]0,00[/C10][C11]0,00[/C11][C12]0,00[/C12][C13]0,00[/C13]"
                  "[C14]0,00[/C14][C15]0,00[/C15][C16]0,00[/C16][C17]0,00[/C17][C18]0,00[/C18][C19]0,00[/C19]"
                  "[C20]0,00[/C20][C21]0,00[/C21][C22]0,00[/C22][C23]0[/C23][C24]5[/C24][C25][/C25][C26][/C26]"
                  "[C99]26[/C99]",
                  "[C00]04[/C00][C01]21[/C01][C02]2[/C02][C03]101[/C03][C04][/C04][C05][/C05][C06]55[/C06]"
                  "[C07][/C07][C08][/C08][C09][/C09][C10]0,00[/C10][C11]0,00[/C11][C12]0,00[/C12][C13]0,00[/C13]"
                  "[C14]0,00[/C14][C15]0,00[/C15][C16]0,00[/C16][C17]0,00[/C17][C18]0,00[/C18][C19]0,00[/C19]"
                  "[C20]0,00[/C20][C21]0,00[/C21][C22]0,00[/C22][C23]0[/C23][C24]5[/C24][C25][/C25][C26][/C26]"
                  "[C99]26[/C99]"));
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
