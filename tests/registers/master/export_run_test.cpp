// Whole runs of the orchestrator: what the steps without a switch write, and where the master
// data and the inventories stand in the file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

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

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using testing::json;
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

const char kLine01[] =
    "[C00]01[/C00][C01]2[/C01][C02]01/03/2024[/C02][C03]31/03/2024[/C03][C04]%s[/C04][C05]%s[/C05][C06][/C06]"
    "[C07][/C07][C08][/C08][C09][/C09][C10][/C10][C11][/C11][C12][/C12][C13][/C13][C14][/C14][C15][/C15][C99]15[/C99]";
const char kLine02[] =
    "[C00]02[/C00][C01]1[/C01][C02]Boa "
    "Vista[/C02][C03][/C03][C04]12.345.678/0001-90[/C04][C05][/C05][C06][/C06][C07][/C07]"
    "[C08][/C08][C09][/C09][C10][/C10][C11][/C11][C12][/C12][C13][/C13][C14][/C14][C15][/C15][C16][/C16][C17][/C17]"
    "[C18][/C18][C19][/C19][C99]19[/C99]";
const char kLine03[] =
    "[C00]03[/C00][C01]3[/C01][C02]Ana[/C02][C03]123[/C03][C04][/C04][C05][/C05][C06][/C06][C07][/C07][C08][/"
    "C08][C09][/C09]"
    "[C10][/C10][C11][/C11][C12][/C12][C13][/C13][C14][/C14][C99]14[/C99]";
const char kVoided[] =
    "[C00]04[/C00][C01]21[/C01][C02]1[/C02][C03]88[/C03][C04][/C04][C05][/C05][C06]55[/C06][C07][/C07][C08][/"
    "C08][C09][/C09]"
    "[C10]0,00[/C10][C11]0,00[/C11][C12]0,00[/C12][C13]0,00[/C13][C14]0,00[/C14][C15]0,00[/C15][C16]0,00[/C16]"
    "[C17]0,00[/C17][C18]0,00[/C18][C19]0,00[/C19][C20]0,00[/C20][C21]0,00[/C21][C22]0,00[/C22][C23]0[/C23][C24]5[/C24]"
    "[C25][/C25][C26][/C26][C99]26[/C99]";
const char kProdConsumo[] =
    "[C00]12[/C00][C01]3[/C01][C02]3[/C02][C03]Papel[/C03][C04][/C04][C05][/C05][C06][/C06][C99]06[/C99]";
const char kUnidade[] = "[C00]13[/C00][C01]1[/C01][C02]UN[/C02][C03]UNIDADE[/C03][C99]03[/C99]";
const char kCliente[] =
    "[C00]14[/C00][C01]1[/C01][C02]15[/C02][C03]João[/C03][C04][/C04][C05][/C05][C06][/C06][C07][/C07][C08][/"
    "C08][C09][/C09]"
    "[C10][/C10][C11][/C11][C99]11[/C99]";
const char kFornecedor[] =
    "[C00]14[/C00][C01]2[/C01][C02]40[/C02][C03]Sul[/C03][C04][/C04][C05][/C05][C06][/C06][C07][/C07][C08][/C08][C09][/"
    "C09]"
    "[C10][/C10][C11][/C11][C99]11[/C99]";
const char kNatureza[] = "[C00]15[/C00][C01]5102[/C01][C02]Venda[/C02][C99]02[/C99]";

std::string line01(const char* mes, const char* ano) {
  char text[sizeof kLine01 + 2];
  std::snprintf(text, sizeof text, kLine01, mes, ano);
  return text;
}

TEST(ExportRun, EverySwitchOffStillWritesTheListsWithoutASwitch) {
  EXPECT_THAT(run_lines(month(json::object())), ElementsAre(line01("N", "N"), kLine02, kLine03, kVoided, kProdConsumo,
                                                            kUnidade, kCliente, kFornecedor, kNatureza));
}

TEST(ExportRun, InventoriesCloseTheFileAndBringTheProducts) {
  EXPECT_THAT(
      run_lines(month({{"REGINVENTARIOFINALMES", "S"}, {"REGINVENTARIOFINALANO", "S"}})),
      ElementsAre(
          line01("S", "S"), kLine02, kLine03, kVoided,
          "[C00]12[/C00][C01]2[/C01][C02]10[/C02][C03]Cerveja[/C03][C04][/C04][C05][/C05][C06][/C06][C99]06[/C99]",
          kProdConsumo, kUnidade, kCliente, kFornecedor, kNatureza,
          "[C00]16[/C00][C02]1[/C02][C03]31/03/2024[/C03][C04]5,00[/C04][C99]04[/C99]",
          "[C00]17[/C00][C01][/C01][C02][/C02][C03]10[/C03][C04]0,00[/C04][C05]0,00[/C05][C06]5,00[/C06][C07][/C07]"
          "[C08]2[/C08][C99]08[/C99]",
          "[C00]18[/C00][C02]2[/C02][C03]31/12/2023[/C03][C04]8,00[/C04][C99]04[/C99]",
          "[C00]19[/C00][C01][/C01][C02][/C02][C03]10[/C03][C04]0,00[/C04][C05]0,00[/C05][C06]8,00[/C06][C07][/C07]"
          "[C08]2[/C08][C99]08[/C99]"));
  // Month end only: no year-end lines.
  const auto lines = run_lines(month({{"REGINVENTARIOFINALMES", "S"}}));
  EXPECT_EQ(lines.back().substr(0, 13), "[C00]17[/C00]");
}

// A failing master step ends the run with its own message; the lines before it stay.
TEST(ExportRun, AFailingListEndsTheRun) {
  const Snapshot bad = Snapshot().params("DspListaFornecedor", json::array(), json::array({{{"CDFORNECEDOR", 1}}}));
  EXPECT_THAT(run_lines(month(json::object(), bad)),
              ElementsAre(line01("N", "N"), kLine02, kLine03, kVoided, kProdConsumo, kUnidade, kCliente,
                          "erro: Campo 'RAZAOSOCIAL' não encontrado em TabFornecedor"));
}

}  // namespace
}  // namespace infofiscal
