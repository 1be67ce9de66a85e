// Lines 04, 05 and 06 of a purchase: every column, the renderings and the error paths.
#include "registers/incoming/dtm_a_compra.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "registers/incoming/compras.h"
#include "registers/incoming/dtm_a_compraproduto.h"
#include "support/golden.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::StartsWith;
using testing::compra;
using testing::drive;
using testing::fornecedor;
using testing::item;
using testing::json;
using testing::Kind;
using testing::Run;
using testing::Snapshot;

// Lines 04, 05 and the two lines 06 of one product purchase (row 1), every column filled; the
// second item has every text null. Base before rate in every tax group; C04 counts the rows.
const std::vector<std::string> kCompra = testing::golden_lines("compra_produto.txt");

// One call of L04_InfoCompra or L05_Fornecedor for purchase 101 as row 1 of a products list:
// the line, or "erro: " and the message (and then no line).
std::string linha(void (TDTM_A_Compra::*gerador)(int, int, TStringList&), const Snapshot& snapshot) {
  Run run(snapshot);
  TDTM_A_CompraProduto modulo(run.conexao);
  run.configure(modulo);
  TStringList list;
  try {
    (modulo.*gerador)(1, 101, list);
  } catch (const Error& e) {
    EXPECT_EQ(list.Count(), 0u);
    return std::string("erro: ") + e.what();
  }
  EXPECT_EQ(list.Count(), 1u);
  EXPECT_TRUE(run.progress.empty());
  return std::string(list[0]);
}

Snapshot com_compra(const json& row) { return Snapshot().params("DspCompra", {101}, json::array({row})); }

TEST(PurchaseLine04, ColumnsStateAndErrors) {
  json sem_campo = compra(101);
  sem_campo.erase("SEGURO");
  const struct {
    const char* name;
    Snapshot snapshot;
    std::string expected;
  } cases[] = {
      {"every column; number and key lose their full stops and blanks", com_compra(compra(101)), kCompra[0]},
      {"nulls give empty elements; a receipt at midnight is the date alone",
       com_compra(compra(101, {{"DATAEMISSAONF", nullptr},
                               {"DATARECEBIMENTO", "2024-03-06T00:00:00"},
                               {"CDTABCFOP", nullptr},
                               {"CHAVENFEFORNECEDOR", nullptr},
                               {"SERIE", nullptr},
                               {"CDCIDADEORIGEMIBGE", nullptr},
                               {"CDCIDADEDESTINOIBGE", nullptr},
                               {"DESCONTO", -1.5}})),
       "[C00]04[/C00][C01]2[/C01][C02]1[/C02][C03]0012345[/C03][C04][/C04][C05][/C05][C06]55[/C06][C07][/C07]"
       "[C08][/C08][C09]06/03/2024[/C09][C10]1234,50[/C10][C11]-1,50[/C11][C12]1200,00[/C12][C13]30,00[/C13]"
       "[C14]4,50[/C14][C15]2,25[/C15][C16]1000,00[/C16][C17]180,00[/C17][C18]50,00[/C18][C19]9,00[/C19]"
       "[C20]12,34[/C20][C21]1,65[/C21][C22]7,60[/C22][C23]1[/C23][C24]0[/C24][C25][/C25][C26][/C26][C99]26[/C99]"},
      {"state 2 is an error naming the cleaned number", com_compra(compra(101, {{"PDE", 2}})),
       "erro: Erro ano Gerar Registro Linha 04 : Erro na NFe de Entrada: 0012345"},
      {"a null state is an error too", com_compra(compra(101, {{"PDE", nullptr}, {"NUMNF", "123"}})),
       "erro: Erro ano Gerar Registro Linha 04 : Erro na NFe de Entrada: 123"},
      {"no header row: the state test fails on the empty number", Snapshot(),
       "erro: Erro ano Gerar Registro Linha 04 : Erro na NFe de Entrada: "},
      {"an amount that is no number", com_compra(compra(101, {{"ICMS_VALOR", "abc"}})),
       "erro: Erro ano Gerar Registro Linha 04 : 'abc' não é um valor de ponto flutuante válido (campo ICMS_VALOR "
       "de TabCompra, registro CDCOMPRA=101)"},
      {"the header query has its own prefix", Snapshot().error("DspCompra", {101}, "conexão recusada"),
       "erro: Erro ao Abrir Tabela de Compra : conexão recusada"},
      {"a field the provider lacks", com_compra(sem_campo),
       "erro: Erro ao Abrir Tabela de Compra : Campo 'SEGURO' não encontrado em TabCompra"},
  };
  for (const auto& c : cases) EXPECT_EQ(linha(&TDTM_A_Compra::L04_InfoCompra, c.snapshot), c.expected) << c.name;
}

TEST(PurchaseLine05, SupplierColumnsAndErrors) {
  json sem_campo = fornecedor(101);
  sem_campo.erase("CDESTADO");
  const auto com = [](const json& row) { return Snapshot().params("DspCompraFornecedor", {101}, json::array({row})); };
  const struct {
    const char* name;
    Snapshot snapshot;
    std::string expected;
  } cases[] = {
      {"name, person type, address and district are not written", com(fornecedor(101)), kCompra[1]},
      {"no supplier row", Snapshot(),
       "[C00]05[/C00][C01]2[/C01][C02]1[/C02][C03]2[/C03][C04][/C04][C05][/C05][C06][/C06][C07][/C07][C99]07[/C99]"},
      {"the supplier query has its own prefix", Snapshot().error("DspCompraFornecedor", {101}, "tempo esgotado"),
       "erro: Erro ao Abrir Tabela de InstituicaoFornecedor : tempo esgotado"},
      {"a field the provider lacks", com(sem_campo),
       "erro: Erro ao Abrir Tabela de InstituicaoFornecedor : Campo 'CDESTADO' não encontrado em TabCompraFornecedor"},
  };
  for (const auto& c : cases) EXPECT_EQ(linha(&TDTM_A_Compra::L05_Fornecedor, c.snapshot), c.expected) << c.name;
}

Snapshot uma_compra(Kind kind, const json& itens) {
  return Snapshot()
      .registro(7, {{testing::kind_switch(kind), "S"}})
      .request("DspListaCompra", {7, testing::kind_code(kind)},
               json::array({{{"CDCOMPRA", 101}, {"MODELO", "55"}, {"NUMNF", "1.234"}}}))
      .params("DspCompra", {101}, json::array({compra(101)}))
      .params("DspCompraFornecedor", {101}, json::array({fornecedor(101)}))
      .params(testing::item_provider(kind), {101}, itens);
}

TEST(PurchaseLines, OneProductPurchaseWritesHeaderSupplierAndItems) {
  json nulos = item(101, {{"ITEMCOMPRA", 7}, {"CDPRODUTO", 502}});
  for (const char* f : {"DESCPRODUTO", "SIGLAUNIDADE", "NUMNCM", "CODBARRA", "ICMS_CST", "ICMS_CFOP", "IPI_CST",
                        "IPI_ENQUADRAMENTO", "PIS_CST", "COFINS_CST", "QUANTIDADE", "COFINS_VALOR"})
    nulos[f] = nullptr;
  const auto out = drive(Kind::Produto, uma_compra(Kind::Produto, json::array({item(101), nulos})));
  EXPECT_EQ(out.error, "");
  EXPECT_THAT(out.progress, ElementsAre(std::pair{1, 1}));
  EXPECT_THAT(out.lines, ElementsAreArray(kCompra));
}

// The kind code of C01 (1, 2, 4) and the item type of C15 (1, 2, 3) differ; so do the item
// code and description fields that each kind reads.
TEST(PurchaseLines, KindCodeItemTypeAndItemFieldsOfEachKind) {
  // Line 06 of the product purchase is above; equipment and consumption products here.
  const std::vector<std::string> itens = testing::golden_lines("compra_06_equipamento_consumo.txt");
  const struct {
    Kind kind;
    std::string c01, line06;
  } cases[] = {{Kind::Equipamento, "1", itens[0]}, {Kind::ProdConsumo, "4", itens[1]}};
  for (const auto& c : cases) {
    const auto out = drive(c.kind, uma_compra(c.kind, json::array({item(101)})));
    ASSERT_EQ(out.lines.size(), 3u) << c.c01 << out.error;
    EXPECT_THAT(out.lines[0], StartsWith("[C00]04[/C00][C01]" + c.c01 + "[/C01][C02]1[/C02]"));
    EXPECT_THAT(out.lines[1], StartsWith("[C00]05[/C00][C01]" + c.c01 + "[/C01][C02]1[/C02]"));
    EXPECT_EQ(out.lines[2], c.line06);
  }
}

}  // namespace
}  // namespace infofiscal
