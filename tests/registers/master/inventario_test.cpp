// Lines 16/17 (month end) and 18/19 (year end): one table of differences, the same cases.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "registers/master/dtm_a_tabinventario_finalano.h"
#include "registers/master/dtm_a_tabinventario_finalmes.h"
#include "support/fixture.h"
#include "support/generate.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::json;
using testing::Snapshot;

struct Inventory {
  const char* name;
  const char* chave;
  const char* provider_header;
  const char* provider_products;
  const char* h;  // line type of the header, e.g. "16"
  const char* p;  // line type of the products, e.g. "17"
  const char* header_key;   // how a message names the header row of header(3, ...)
  const char* product_key;  // and the product row of product(7, ...)
  testing::Generated (*gen)(const Snapshot&, TProcProgresso);
};

const Inventory kInventories[] = {
    {"month end", "REGINVENTARIOFINALMES", "DspInventario_FM", "DspInventarioProduto_FM", "16", "17",
     "CDINVENTARIOEMP=3 CDTIPOINVENTARIO=1", "CDINVENTARIO=4 CDPRODUTO=7",
     [](const Snapshot& s, TProcProgresso p) {
       return testing::generate(s, &TDTM_A_TabInventario_FinalMes::L16_L17_RegistroInventario, p);
     }},
    {"year end", "REGINVENTARIOFINALANO", "DspInventario_FA", "DspInventarioProduto_FA", "18", "19",
     "CDTIPOINVENTARIO=1 CDINVENTARIOEMP=3", "CDINVENTARIO=4 CDTIPOINVENTARIO=1 CDPRODUTO=7",
     [](const Snapshot& s, TProcProgresso p) {
       return testing::generate(s, &TDTM_A_TabInventario_FinalAno::L18_L19_RegistroInventario, p);
     }},
};

json header(int emp, const json& date, const json& total) {
  return {{"CDINVENTARIOEMP", emp}, {"CDTIPOINVENTARIO", 1}, {"DATAINVENTARIO", date}, {"TOTALINVENTARIO", total},
          {"PDE", 0}};
}

json product(int code, const json& total, const json& overrides = json::object()) {
  json row = {{"CDINVENTARIO", 4},   {"CDPRODUTO", code},    {"QUANTIDADE", 12},     {"PRECOFABRICA", 2.5},
              {"PRECOTOTAL", total}, {"SIGLAUNIDADE", "UN"}, {"CDTIPOINVENTARIO", 1}};
  row.update(overrides);
  return row;
}

Snapshot inventory(const Inventory& inv, const json& headers, const json& products, const json& on = "S") {
  return Snapshot()
      .registro(7, {{inv.chave, on}})
      .params(inv.provider_header, {7}, headers)
      .params(inv.provider_products, {7}, products);
}

// "[C00]hh[/C00]" with the member's line type in place of hh.
std::string head(const char* type) { return std::string("[C00]") + type + "[/C00]"; }

TEST(Inventory, HeaderAndPositiveProducts) {
  for (const Inventory& inv : kInventories) {
    const auto g = inv.gen(inventory(inv, {header(3, "2024-01-31", 1234.5), header(9, "2024-02-29", 1)},
                                     {product(7, 10.5), product(8, 0), product(9, -1), product(10, 0.004),
                                      product(11, nullptr, {{"QUANTIDADE", nullptr}, {"SIGLAUNIDADE", nullptr}})}),
                           nullptr);
    EXPECT_THAT(g.lines,
                ElementsAre(head(inv.h) + "[C02]3[/C02][C03]31/01/2024[/C03][C04]1234,50[/C04][C99]04[/C99]",
                            head(inv.p) + "[C01]1[/C01][C02]4[/C02][C03]7[/C03][C04]12,00[/C04][C05]2,50[/C05]"
                                          "[C06]10,50[/C06][C07]UN[/C07][C08]2[/C08][C99]08[/C99]",
                            head(inv.p) + "[C01]1[/C01][C02]4[/C02][C03]10[/C03][C04]12,00[/C04][C05]2,50[/C05]"
                                          "[C06]0,00[/C06][C07]UN[/C07][C08]2[/C08][C99]08[/C99]"))
        << inv.name;
    // Every product row is reported, written or not.
    EXPECT_THAT(g.progress,
                ElementsAre(std::pair{1, 5}, std::pair{2, 5}, std::pair{3, 5}, std::pair{4, 5}, std::pair{5, 5}))
        << inv.name;
  }
}

TEST(Inventory, HeaderColumns) {
  const struct {
    const char* name;
    json rows;
    const char* columns;
  } cases[] = {
      {"a time of day is written after the date", json::array({header(3, "2024-12-31T18:30:05", 0.333)}),
       "[C02]3[/C02][C03]31/12/2024 18:30:05[/C03][C04]0,33[/C04]"},
      {"nulls", json::array({header(3, nullptr, nullptr)}), "[C02]3[/C02][C03][/C03][C04]0,00[/C04]"},
      {"no header row", json::array(), "[C02][/C02][C03][/C03][C04]0,00[/C04]"},
  };
  for (const Inventory& inv : kInventories)
    for (const auto& c : cases) {
      const auto g = inv.gen(inventory(inv, c.rows, json::array()), nullptr);
      EXPECT_THAT(g.lines, ElementsAre(head(inv.h) + c.columns + "[C99]04[/C99]")) << inv.name << ": " << c.name;
      EXPECT_THAT(g.progress, IsEmpty());
    }
}

TEST(Inventory, OffMeansNoLineAndNoQuery) {
  for (const Inventory& inv : kInventories)
    for (const json& off : {json("N"), json(""), json("s"), json(nullptr)}) {
      const Snapshot s = Snapshot()
                             .registro(7, {{inv.chave, off}})
                             .error(inv.provider_header, {7}, "não devia consultar")
                             .error(inv.provider_products, {7}, "não devia consultar");
      EXPECT_THAT(inv.gen(s, nullptr).lines, IsEmpty()) << inv.name << " " << off;
    }
}

TEST(Inventory, Failures) {
  const auto cancel_at_2 = [](int p, int) {
    if (p == 2) throw Error("cancelado");
  };
  for (const Inventory& inv : kInventories) {
    const std::string h = inv.h, p = inv.p;
    // A bad header total: the header's prefix, no product line, no product query.
    Snapshot bad_header = Snapshot()
                              .registro(7, {{inv.chave, "S"}})
                              .params(inv.provider_header, {7}, json::array({header(3, "2024-01-31", "1.234,50")}))
                              .error(inv.provider_products, {7}, "não devia consultar");
    EXPECT_THAT(inv.gen(bad_header, nullptr).lines,
                ElementsAre("erro: Erro ano Gerar Registro Linha " + h +
                            " : '1.234,50' não é um valor de ponto flutuante válido (campo TOTALINVENTARIO de "
                            "TabInventario, registro " + inv.header_key + ")"))
        << inv.name;
    // A failure at the second product: the header and the first product stay.
    const json products = {product(7, 10.5), product(8, 3)};
    EXPECT_THAT(inv.gen(inventory(inv, json::array({header(3, "2024-01-31", 1)}), products), cancel_at_2).lines,
                ElementsAre(head(inv.h) + "[C02]3[/C02][C03]31/01/2024[/C03][C04]1,00[/C04][C99]04[/C99]",
                            head(inv.p) + "[C01]1[/C01][C02]4[/C02][C03]7[/C03][C04]12,00[/C04][C05]2,50[/C05]"
                                          "[C06]10,50[/C06][C07]UN[/C07][C08]2[/C08][C99]08[/C99]",
                            "erro: Erro ano Gerar Registro Linha " + p + " : cancelado"))
        << inv.name;
    // A total that is no number fails the product line even though it is the test of the row.
    EXPECT_THAT(inv.gen(inventory(inv, json::array(), json::array({product(7, "x")})), nullptr).lines.back(),
                "erro: Erro ano Gerar Registro Linha " + p +
                    " : 'x' não é um valor de ponto flutuante válido (campo PRECOTOTAL de TabInventarioProduto, "
                    "registro " + inv.product_key + ")")
        << inv.name;
    // The opens stand outside the error rules.
    const Snapshot no_products = Snapshot()
                                     .registro(7, {{inv.chave, "S"}})
                                     .params(inv.provider_header, {7}, json::array())
                                     .error(inv.provider_products, {7}, "sem conexão");
    EXPECT_THAT(inv.gen(no_products, nullptr).lines.back(), "erro: sem conexão") << inv.name;
  }
}

}  // namespace
}  // namespace infofiscal
