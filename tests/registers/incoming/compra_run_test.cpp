// The purchase steps inside a whole run: which of them the single-purchase argument reaches.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/obj_exportainfofiscal.h"
#include "registers/incoming/compras.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using testing::compra_minima;
using testing::json;
using testing::Kind;
using testing::l04_minima;
using testing::l05_vazia;
using testing::Run;
using testing::Snapshot;

// Every purchase kind on, each with the same two notes: code 123 numbered "999", and code 124
// numbered "123". Inputs rows are walked only.
Snapshot quatro_tipos() {
  Snapshot s;
  s.registro(7, {{"CDMES", 3},
                 {"ANO", 2024},
                 {"REGCOMPRAEQUIPAMENTO", "S"},
                 {"REGCOMPRAPRODUTO", "S"},
                 {"REGCOMPRAPRODCONSUMO", "S"},
                 {"REGCOMPRAINSUMO", "S"}});
  const json lista = json::array({{{"CDCOMPRA", 123}, {"MODELO", "55"}, {"NUMNF", "999"}},
                                  {{"CDCOMPRA", 124}, {"MODELO", "55"}, {"NUMNF", "123"}}});
  for (int tipo : {1, 2, 4, 0}) s.request("DspListaCompra", {7, tipo}, lista);
  s.params("DspCompra", {123}, json::array({compra_minima(123, "999")}));
  s.params("DspCompra", {124}, json::array({compra_minima(124, "123")}));
  return s;
}

struct Purchases {
  std::vector<std::string> lines;  // the purchase lines of the run (kinds 1, 2 and 4)
  std::vector<std::pair<int, int>> progress;
};

Purchases run_with(int ACodNFeCompra) {
  Run run(quatro_tipos());
  TOBJ_ExportaInfoFiscal orquestrador(run.conexao);
  orquestrador.CodTipoRegistroFiscal(2);
  orquestrador.CodRegistroFiscal(7);
  orquestrador.PROC_Progresso_B([&](int p, int m) { run.progress.emplace_back(p, m); });
  orquestrador.Executar(ACodNFeCompra, 0);
  Purchases out;
  for (const std::string& line : testing::lines_of(orquestrador.oArquivo))
    for (const char* kind : {"[C01]1[/C01]", "[C01]2[/C01]", "[C01]4[/C01]"})
      if (line.find(kind) == 13 && line.compare(5, 2, "04") >= 0 && line.compare(5, 2, "06") <= 0) out.lines.push_back(line);
  // The progress of steps 2.04 to 2.07: between the 4th and the 8th step reset.
  int resets = 0;
  for (const auto& p : run.progress) {
    if (p == std::pair{0, 0}) ++resets;
    else if (resets >= 4 && resets <= 7) out.progress.push_back(p);
  }
  return out;
}

TEST(PurchaseRun, TheSinglePurchaseArgumentReachesEquipmentProductsAndConsumptionOnly) {
  // Equipment keeps the code 123, products and consumption products the note number "123";
  // the inputs step walks its list as always (one report for two rows).
  const auto one = run_with(123);
  EXPECT_THAT(one.lines, ElementsAre(l04_minima(Kind::Equipamento, 1, "999"), l05_vazia(Kind::Equipamento, 1),
                                     l04_minima(Kind::Produto, 2, "123"), l05_vazia(Kind::Produto, 2),
                                     l04_minima(Kind::ProdConsumo, 2, "123"), l05_vazia(Kind::ProdConsumo, 2)));
  const std::vector<std::pair<int, int>> progress = {{1, 2}, {2, 2}, {1, 2}, {2, 2}, {1, 2}, {2, 2}, {1, 2}};
  EXPECT_THAT(one.progress, ElementsAreArray(progress));

  const auto all = run_with(0);
  std::vector<std::string> expected;
  for (Kind kind : {Kind::Equipamento, Kind::Produto, Kind::ProdConsumo})
    for (const auto& [row, numnf] : {std::pair{1, "999"}, std::pair{2, "123"}}) {
      expected.push_back(l04_minima(kind, row, numnf));
      expected.push_back(l05_vazia(kind, row));
    }
  EXPECT_THAT(all.lines, ElementsAreArray(expected));
  EXPECT_THAT(all.progress, ElementsAreArray(progress));
}

}  // namespace
}  // namespace infofiscal
