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

// A field a catalogue's SELECT lacks fails before any line, outside the error rule (the
// contract of every list, progress and failures, is tested with the other lists).
TEST(Line12, AMissingFieldFailsUnprefixed) {
  EXPECT_THAT(generate(Snapshot()
                           .registro(7, {{"REGDEVVENDAPRODUTO", "S"}})
                           .params("DspListaProduto", json::array(), json::array({{{"CDPRODUTO", 1}}})),
                       &TDTM_A_TabProduto::L12_RegistroProduto)
                  .lines,
              ElementsAre("erro: Campo 'DESCPRODUTO' não encontrado em TabProduto"));
}

}  // namespace
}  // namespace infofiscal
