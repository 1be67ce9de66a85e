// Whole runs of the orchestrator: what the steps without a switch write, and where the master
// data and the inventories stand in the file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/obj_exportainfofiscal.h"
#include "host/error.h"
#include "registers/header/dtm_a_tabcontador.h"
#include "registers/header/dtm_a_tabempresa.h"
#include "registers/master/dtm_a_tabcliente.h"
#include "registers/master/dtm_a_tabequipamento.h"
#include "registers/master/dtm_a_tabfornecedor.h"
#include "registers/master/dtm_a_tabinsumo.h"
#include "registers/master/dtm_a_tabinventario_finalano.h"
#include "registers/master/dtm_a_tabinventario_finalmes.h"
#include "registers/master/dtm_a_tabnaturezaoperacao.h"
#include "registers/master/dtm_a_tabprodconsumo.h"
#include "registers/master/dtm_a_tabproduto.h"
#include "registers/master/dtm_a_tabunidade.h"
#include "registers/outgoing/dtm_a_nf_numinutilizado.h"
#include "support/fixture.h"
#include "support/golden.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using testing::json;
using testing::matches_golden;
using testing::Run;
using testing::Snapshot;

// One row of `Module`'s dataset: every declared field null unless `values` gives it.
template <class Module>
json row(ClientDataSet& (*dataset)(Module&), const json& values) {
  Run run{Snapshot()};
  Module m(run.conexao);
  json r = json::object();
  for (const FieldDef& f : dataset(m).Fields()) r[std::string(f.name)] = nullptr;
  r.update(values);
  return json::array({r});
}

// Company 1, fiscal register 7 of March 2024, SPED EFD; one row in every list.
// Entries of `first` answer before the month's.
Snapshot month(const json& switches, Snapshot first = Snapshot()) {
  json registro = {{"CDMES", 3}, {"ANO", 2024}};
  registro.update(switches);
  const json none = json::array();
  return first.registro(7, registro)
      .params("DspEmpresa", {1},
              row<TDTM_A_TabEmpresa>([](auto& m) -> auto& { return m.TabEmpresa; },
                                     {{"CDEMPRESA", 1}, {"RAZAOSOCIAL", "Boa Vista"}, {"CNPJ", "12.345.678/0001-90"}}))
      .params("DspContador", none,
              row<TDTM_A_TabContador>([](auto& m) -> auto& { return m.TabContador; },
                                      {{"CDCONTADOR", 3}, {"NOMECONTADOR", "Ana"}, {"CPF", "123"}}))
      .request("DspListaNFeInutilizado", {2, 7},
               row<TDTM_A_NF_NumInutilizado>([](auto& m) -> auto& { return m.TabNFeInutilizada; },
                                             {{"CDNFE_INUTILIZADO", 1}, {"CDNFE_NUMINUTILIZADO", 88}}))
      .params("DspListaEquipamento", none,
              row<TDTM_A_TabEquipamento>([](auto& m) -> auto& { return m.TabEquipamento; },
                                         {{"CDEQUIPAMENTO", 7}, {"DESCEQUIPAMENTO", "Freezer"}}))
      .params("DspListaProduto", none,
              row<TDTM_A_TabProduto>([](auto& m) -> auto& { return m.TabProduto; },
                                     {{"CDPRODUTO", 10}, {"DESCPRODUTO", "Cerveja"}, {"CODCEST", "00.000.00"}}))
      .params("DspListaInsumo", none,
              row<TDTM_A_TabInsumo>([](auto& m) -> auto& { return m.TabInsumo; },
                                    {{"CDINSUMO", 5}, {"DESCINSUMO", "Malte"}}))
      .params("DspListaProdConsumo", none,
              row<TDTM_A_TabProdConsumo>([](auto& m) -> auto& { return m.TabProdConsumo; },
                                         {{"CDPRODCONSUMO", 3}, {"DESCPRODUTO", "Papel"}}))
      .params("DspListaUnidade", none,
              row<TDTM_A_TabUnidade>([](auto& m) -> auto& { return m.TabUnidade; },
                                     {{"CDUNIDADE", 1}, {"SIGLAUNIDADE", "UN"}, {"DESCUNIDADE", "UNIDADE"}}))
      .params("DspListaCliente", none,
              row<TDTM_A_TabCliente>([](auto& m) -> auto& { return m.TabCliente; },
                                     {{"CDCLIENTE", 15}, {"RAZAOSOCIAL", "João"}}))
      .params("DspListaFornecedor", none,
              row<TDTM_A_TabFornecedor>([](auto& m) -> auto& { return m.TabFornecedor; },
                                        {{"CDFORNECEDOR", 40}, {"RAZAOSOCIAL", "Sul"}}))
      .params("DspNaturezaOperacao", none,
              row<TDTM_A_TabNaturezaOperacao>([](auto& m) -> auto& { return m.TabNaturezaOperacao; },
                                              {{"CDTABCFOP", 5102}, {"DESCCFOP", "Venda"}}))
      .params("DspInventario_FM", {7},
              row<TDTM_A_TabInventario_FinalMes>(
                  [](auto& m) -> auto& { return m.TabInventario; },
                  {{"CDINVENTARIOEMP", 1}, {"DATAINVENTARIO", "2024-03-31"}, {"TOTALINVENTARIO", 5}}))
      .params("DspInventarioProduto_FM", {7},
              row<TDTM_A_TabInventario_FinalMes>([](auto& m) -> auto& { return m.TabInventarioProduto; },
                                                 {{"CDPRODUTO", 10}, {"PRECOTOTAL", 5}}))
      .params("DspInventario_FA", {7},
              row<TDTM_A_TabInventario_FinalAno>(
                  [](auto& m) -> auto& { return m.TabInventario; },
                  {{"CDINVENTARIOEMP", 2}, {"DATAINVENTARIO", "2023-12-31"}, {"TOTALINVENTARIO", 8}}))
      .params("DspInventarioProduto_FA", {7},
              row<TDTM_A_TabInventario_FinalAno>([](auto& m) -> auto& { return m.TabInventarioProduto; },
                                                 {{"CDPRODUTO", 10}, {"PRECOTOTAL", 8}}));
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
