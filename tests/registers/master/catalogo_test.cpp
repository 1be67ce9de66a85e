// Lines 12: equipment, products, inputs and consumption products.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "registers/master/dtm_a_tabequipamento.h"
#include "registers/master/dtm_a_tabinsumo.h"
#include "registers/master/dtm_a_tabprodconsumo.h"
#include "registers/master/dtm_a_tabproduto.h"
#include "support/fixture.h"
#include "support/generate.h"
#include "support/golden.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using testing::generate;
using ::testing::IsEmpty;
using testing::json;
using testing::Snapshot;

const char* const kSwitchesOfProducts[] = {"REGCOMPRAPRODUTO",      "REGVENDAPRODUTO",         "REGINVENTARIOFINALANO",
                                           "REGINVENTARIOFINALMES", "REGTRANSFPRODUTOCLIENTE", "REGDEVCOMPRAPRODUTO",
                                           "REGDEVVENDAPRODUTO"};

json produto(int code, const char* desc, const json& cest) {
  return {
      {"CDPRODUTO", code}, {"DESCPRODUTO", desc}, {"SIGLAUNIDADE", "UN"}, {"NUMNCM", "22030000"}, {"CODCEST", cest}};
}

// Every catalogue answers; every switch is off unless `switches` turns it on.
Snapshot catalogues(const json& switches) {
  return Snapshot()
      .registro(7, switches)
      .params("DspListaEquipamento", json::array(),
              json::array({{{"CDEQUIPAMENTO", 7}, {"DESCEQUIPAMENTO", "Freezer horizontal"}, {"SIGLAUNIDADE", "PC"},
                            {"NUMNCM", "84185010"}}}))
      .params("DspListaProduto", json::array(), json::array({produto(10, "Cerveja lata", "03.021.00")}))
      .params("DspListaInsumo", json::array(),
              json::array({{{"CDINSUMO", 5}, {"DESCINSUMO", "Malte"}, {"SIGLAUNIDADE", "KG"}, {"NUMNCM", "11071010"}}}))
      .params("DspListaProdConsumo", json::array(),
              json::array(
                  {{{"CDPRODCONSUMO", 3}, {"DESCPRODUTO", "Papel A4"}, {"SIGLAUNIDADE", "CX"}, {"NUMNCM", nullptr}}}));
}

// Lines 12 of the equipment, the product and the consumption product of catalogues().
const std::vector<std::string> kCatalogos = testing::golden_lines("catalogos_12.txt");
const std::string &kEquipamento = kCatalogos[0], &kProduto = kCatalogos[1], &kProdConsumo = kCatalogos[2];

// The lines of the four catalogues, in the run's order.
std::vector<std::string> all_four(const Snapshot& s) {
  std::vector<std::string> lines;
  auto add = [&](const testing::Generated& g) { lines.insert(lines.end(), g.lines.begin(), g.lines.end()); };
  add(generate(s, &TDTM_A_TabEquipamento::L12_RegistroEquipamento));
  add(generate(s, &TDTM_A_TabProduto::L12_RegistroProduto));
  add(generate(s, &TDTM_A_TabInsumo::L12_RegistroInsumo_));
  add(generate(s, &TDTM_A_TabProdConsumo::L12_RegistroProdConsumo));
  return lines;
}

TEST(Line12, SwitchesDecideEquipmentAndProducts) {
  EXPECT_THAT(all_four(catalogues({})), ElementsAre(kProdConsumo)) << "every switch off";
  EXPECT_THAT(all_four(catalogues({{"REGCOMPRAEQUIPAMENTO", "S"}})), ElementsAre(kEquipamento, kProdConsumo));
  for (const char* sw : kSwitchesOfProducts)
    EXPECT_THAT(all_four(catalogues({{sw, "S"}})), ElementsAre(kProduto, kProdConsumo)) << sw;
  // Inputs are never listed, even with their purchase switch on.
  EXPECT_THAT(all_four(catalogues({{"REGCOMPRAINSUMO", "S"}, {"REGCOMPRAEQUIPAMENTO", "s"}})),
              ElementsAre(kProdConsumo));
}

TEST(Line12, ProductsOffMeansNoProductQuery) {
  for (const json& off : {json("N"), json(""), json("s"), json(" S"), json(nullptr)}) {
    json switches = json::object();
    for (const char* sw : kSwitchesOfProducts) switches[sw] = off;
    const Snapshot s = Snapshot().registro(7, switches).error("DspListaProduto", json::array(), "não devia consultar");
    EXPECT_THAT(generate(s, &TDTM_A_TabProduto::L12_RegistroProduto).lines, IsEmpty()) << off;
    const Snapshot e =
        Snapshot().registro(7, switches).error("DspListaEquipamento", json::array(), "não devia consultar");
    EXPECT_THAT(generate(e, &TDTM_A_TabEquipamento::L12_RegistroEquipamento).lines, IsEmpty()) << off;
  }
}

TEST(Line12, CestOfAProduct) {
  const struct {
    json cest;
    const char* c06;
  } cases[] = {
      {"00.000.00", "[C06][/C06]"},
      {"00.000.000", "[C06]00.000.000[/C06]"},
      {" 00.000.00", "[C06] 00.000.00[/C06]"},
      {"00.000.00 ", "[C06]00.000.00 [/C06]"},
      {"0000000", "[C06]0000000[/C06]"},
      {nullptr, "[C06][/C06]"},
      {"", "[C06][/C06]"},
  };
  for (const auto& c : cases) {
    const Snapshot s = Snapshot()
                           .registro(7, {{"REGVENDAPRODUTO", "S"}})
                           .params("DspListaProduto", json::array(), json::array({produto(1, "Suco", c.cest)}));
    EXPECT_THAT(
        generate(s, &TDTM_A_TabProduto::L12_RegistroProduto).lines,
        ElementsAre(
            std::string("[C00]12[/C00][C01]2[/C01][C02]1[/C02][C03]Suco[/C03][C04]UN[/C04][C05]22030000[/C05]") +
            c.c06 + "[C99]06[/C99]"))
        << c.cest;
  }
}

TEST(Line12, ProgressBeforeEachLine) {
  const Snapshot s = Snapshot()
                         .registro(7, {{"REGCOMPRAPRODUTO", "S"}})
                         .params("DspListaProduto", json::array(),
                                 {produto(1, "A", nullptr), produto(2, "B", nullptr), produto(3, "C", nullptr)});
  const auto g = generate(s, &TDTM_A_TabProduto::L12_RegistroProduto);
  EXPECT_EQ(g.lines.size(), 3u);
  EXPECT_THAT(g.progress, ElementsAre(std::pair{1, 3}, std::pair{2, 3}, std::pair{3, 3}));
  // Inputs: counted and reported, never written.
  const Snapshot i = Snapshot().registro(7).params(
      "DspListaInsumo", json::array(),
      {{{"CDINSUMO", 1}, {"DESCINSUMO", "Lúpulo"}, {"SIGLAUNIDADE", "KG"}, {"NUMNCM", "12101000"}},
       {{"CDINSUMO", 2}, {"DESCINSUMO", "Malte"}, {"SIGLAUNIDADE", "KG"}, {"NUMNCM", "11071010"}}});
  const auto gi = generate(i, &TDTM_A_TabInsumo::L12_RegistroInsumo_);
  EXPECT_THAT(gi.lines, IsEmpty());
  EXPECT_THAT(gi.progress, ElementsAre(std::pair{1, 2}, std::pair{2, 2}));
}

// A failure at the second row: the first row's line stays, the prefix is that of line 12 for
// every member; failures before the loop pass unchanged.
TEST(Line12, Failures) {
  const auto cancel_at_2 = [](int p, int) {
    if (p == 2) throw Error("cancelado");
  };
  // Rows 1 "A" and 2 "B" of a catalogue.
  const auto ab = [](const char* codigo, const char* descricao, const char* unidade) {
    json rows = json::array();
    for (int i : {1, 2})
      rows.push_back({{codigo, i}, {descricao, i == 1 ? "A" : "B"}, {"SIGLAUNIDADE", unidade}, {"NUMNCM", ""}});
    return rows;
  };
  const Snapshot s =
      Snapshot()
          .registro(7, {{"REGCOMPRAEQUIPAMENTO", "S"}, {"REGVENDAPRODUTO", "S"}})
          .params("DspListaEquipamento", json::array(), ab("CDEQUIPAMENTO", "DESCEQUIPAMENTO", "PC"))
          .params("DspListaProduto", json::array(), {produto(1, "A", ""), produto(2, "B", "")})
          .params("DspListaInsumo", json::array(), ab("CDINSUMO", "DESCINSUMO", "KG"))
          .params("DspListaProdConsumo", json::array(), ab("CDPRODCONSUMO", "DESCPRODUTO", "CX"));
  const std::string erro = "erro: Erro ano Gerar Registro Linha 12 : cancelado";
  EXPECT_THAT(
      generate(s, &TDTM_A_TabEquipamento::L12_RegistroEquipamento, cancel_at_2).lines,
      ElementsAre("[C00]12[/C00][C01]1[/C01][C02]1[/C02][C03]A[/C03][C04]PC[/C04][C05][/C05][C06][/C06][C99]06[/C99]",
                  erro));
  EXPECT_THAT(
      generate(s, &TDTM_A_TabProduto::L12_RegistroProduto, cancel_at_2).lines,
      ElementsAre(
          "[C00]12[/C00][C01]2[/C01][C02]1[/C02][C03]A[/C03][C04]UN[/C04][C05]22030000[/C05][C06][/C06][C99]06[/C99]",
          erro));
  EXPECT_THAT(generate(s, &TDTM_A_TabInsumo::L12_RegistroInsumo_, cancel_at_2).lines, ElementsAre(erro));
  EXPECT_THAT(
      generate(s, &TDTM_A_TabProdConsumo::L12_RegistroProdConsumo, cancel_at_2).lines,
      ElementsAre("[C00]12[/C00][C01]3[/C01][C02]1[/C02][C03]A[/C03][C04]CX[/C04][C05][/C05][C06][/C06][C99]06[/C99]",
                  erro));

  // Outside the guarded block: the fiscal register and the list's own open.
  EXPECT_THAT(generate(Snapshot().error("DspRegistroInfoFiscal", {7}, "sem conexão"),
                       &TDTM_A_TabProdConsumo::L12_RegistroProdConsumo)
                  .lines,
              ElementsAre("erro: sem conexão"));
  EXPECT_THAT(generate(Snapshot().registro(7).error("DspListaInsumo", json::array(), "sem conexão"),
                       &TDTM_A_TabInsumo::L12_RegistroInsumo_)
                  .lines,
              ElementsAre("erro: sem conexão"));
  EXPECT_THAT(generate(Snapshot()
                           .registro(7, {{"REGDEVVENDAPRODUTO", "S"}})
                           .params("DspListaProduto", json::array(), json::array({{{"CDPRODUTO", 1}}})),
                       &TDTM_A_TabProduto::L12_RegistroProduto)
                  .lines,
              ElementsAre("erro: Campo 'DESCPRODUTO' não encontrado em TabProduto"));
}

TEST(Line12, AnEmptyListWritesNothingAndReportsNothing) {
  const auto g = generate(Snapshot().registro(7), &TDTM_A_TabProdConsumo::L12_RegistroProdConsumo);
  EXPECT_THAT(g.lines, IsEmpty());
  EXPECT_THAT(g.progress, IsEmpty());
}

}  // namespace
}  // namespace infofiscal
