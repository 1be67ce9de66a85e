// Whole runs of the orchestrator: what the steps without a switch write, and where the master
// data and the inventories stand in the file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/obj_exportainfofiscal.h"
#include "base/error.h"
#include "support/fixture.h"
#include "support/golden.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using testing::json;
using testing::matches_golden;
using testing::Run;
using testing::Snapshot;

// Company 1, fiscal register 7 of March 2024, SPED EFD; one row in every list (the stored
// snapshot gives every declared field, null when not set). Entries of `first` answer before
// the month's.
Snapshot month(const json& switches, Snapshot first = Snapshot()) {
  json registro = {{"CDMES", 3}, {"ANO", 2024}};
  registro.update(switches);
  static const json mes = json::parse(testing::golden("../snapshots/mes_marco_2024.json"));
  return first.registro(7, registro).responses(mes);
}

// The lines of a whole run, then "erro: <message>" when it failed.
std::vector<std::string> run_lines(const Snapshot& snapshot) {
  Run run(snapshot);
  TOBJ_ExportaInfoFiscal orquestrador(run.conexao);
  orquestrador.CodTipoRegistroFiscal(2);
  orquestrador.CodRegistroFiscal(7);
  std::string erro;
  try {
    orquestrador.RecInformacao(0, 0);
  } catch (const Error& e) {
    erro = std::string("erro: ") + e.what();
  }
  auto lines = testing::lines_of(orquestrador.oArquivo);
  if (!erro.empty()) lines.push_back(erro);
  return lines;
}

// Every switch off: lines 01 to 03, the voided number and the lists without a switch.
TEST(ExportRun, EverySwitchOffStillWritesTheListsWithoutASwitch) {
  EXPECT_TRUE(matches_golden("run_sem_chaves.txt", run_lines(month(json::object()))));
}

// Both inventories: the products of the inventory join line 12, the inventories close the file.
TEST(ExportRun, InventoriesCloseTheFileAndBringTheProducts) {
  EXPECT_TRUE(matches_golden("run_inventarios.txt",
                             run_lines(month({{"REGINVENTARIOFINALMES", "S"}, {"REGINVENTARIOFINALANO", "S"}}))));
  // Month end only: no year-end lines.
  const auto lines = run_lines(month({{"REGINVENTARIOFINALMES", "S"}}));
  EXPECT_EQ(lines.back().substr(0, 13), "[C00]17[/C00]");
}

// A failing master step ends the run with its own message; the lines before it stay.
TEST(ExportRun, AFailingListEndsTheRun) {
  const Snapshot bad = Snapshot().params("DspListaFornecedor", json::array(), json::array({{{"CDFORNECEDOR", 1}}}));
  auto expected = testing::golden_lines("run_sem_chaves.txt");
  expected.resize(7);
  expected.push_back("erro: Campo 'RAZAOSOCIAL' não encontrado em TabFornecedor");
  EXPECT_EQ(run_lines(month(json::object(), bad)), expected);
}

}  // namespace
}  // namespace infofiscal
