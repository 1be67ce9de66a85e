// Lines 13 (units), 14 (clients and suppliers) and 15 (operation natures).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "registers/master/dtm_a_tabcliente.h"
#include "registers/master/dtm_a_tabfornecedor.h"
#include "registers/master/dtm_a_tabnaturezaoperacao.h"
#include "registers/master/dtm_a_tabunidade.h"
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

json parte(const char* key_field, int code, const json& overrides = json::object()) {
  json row = {{key_field, code},          {"RAZAOSOCIAL", "Distribuidora Sul Ltda"}, {"CNPJ_CPF", "11.222.333/0001-81"},
              {"IE_RG", "9012345678"},    {"TIPOPESSOA", "J"}, {"ENDERECO", "Rua XV"}, {"ENDERECONUMERO", "55"},
              {"BAIRRO", "Centro"},       {"IBGE_CIDADE", 4106902}, {"IBGE_PAIS", 1058}};
  row.update(overrides);
  return row;
}

// Switches all off: none of these lists has a switch.
Snapshot lists() {
  return Snapshot()
      .registro(7)
      .params("DspListaUnidade", json::array(),
              {{{"CDUNIDADE", 1}, {"SIGLAUNIDADE", "UN"}, {"DESCUNIDADE", "UNIDADE"}},
               {{"CDUNIDADE", 2}, {"SIGLAUNIDADE", "KG"}, {"DESCUNIDADE", nullptr}}})
      .params("DspListaCliente", json::array(),
              {parte("CDCLIENTE", 15, {{"IE_RG", nullptr}, {"ENDERECONUMERO", ""}, {"TIPOPESSOA", "F"},
                                       {"CNPJ_CPF", "123.456.789-09"}, {"RAZAOSOCIAL", "João Lima"}}),
               parte("CDCLIENTE", 40)})
      .params("DspListaFornecedor", json::array(), json::array({parte("CDFORNECEDOR", 40)}))
      .params("DspNaturezaOperacao", json::array(),
              {{{"CDTABCFOP", 5102}, {"DESCCFOP", "Venda de mercadoria adquirida"}},
               {{"CDTABCFOP", 1202}, {"DESCCFOP", "Devolução de venda"}}});
}

// Units, clients, suppliers and natures in turn. A party that is both client and supplier is
// listed twice, once per kind; nulls and "" give empty elements.
TEST(MasterLists, OneLinePerRowWhateverTheSwitches) {
  const Snapshot s = lists();
  std::vector<std::string> lines;
  for (const auto& g : {generate(s, &TDTM_A_TabUnidade::L13_RegistroUnidade),
                        generate(s, &TDTM_A_TabCliente::L14_RegistroCliente),
                        generate(s, &TDTM_A_TabFornecedor::L14_RegistroFornecedor),
                        generate(s, &TDTM_A_TabNaturezaOperacao::L15_RegistroNaturezaOperacao)})
    lines.insert(lines.end(), g.lines.begin(), g.lines.end());
  EXPECT_TRUE(testing::matches_golden("listas_13_14_15.txt", lines));
}

TEST(MasterLists, ASupplierFailureCarriesThePrefixOfLine14) {
  const Snapshot s = Snapshot().registro(7).params("DspListaFornecedor", json::array(),
                                                   {parte("CDFORNECEDOR", 1), parte("CDFORNECEDOR", 2)});
  const auto g =
      generate(s, &TDTM_A_TabFornecedor::L14_RegistroFornecedor, [](int, int) { throw Error("disco cheio"); });
  EXPECT_THAT(g.lines, ElementsAre("erro: Erro ano Gerar Registro Linha 14 : disco cheio"));
  json row = parte("CDFORNECEDOR", 1);
  row.erase("IBGE_PAIS");
  EXPECT_THAT(generate(Snapshot().registro(7).params("DspListaFornecedor", json::array(), json::array({row})),
                       &TDTM_A_TabFornecedor::L14_RegistroFornecedor)
                  .lines,
              ElementsAre("erro: Campo 'IBGE_PAIS' não encontrado em TabFornecedor"));
}

}  // namespace
}  // namespace infofiscal
