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

// Each list: its progress, its failure prefix mid-list, and the failures that pass unchanged.
TEST(MasterLists, ProgressAndFailures) {
  using Gen = testing::Generated (*)(const Snapshot&, TProcProgresso);
  const struct {
    const char* provider;
    Gen gen;
    const char* prefix;
  } cases[] = {
      {"DspListaUnidade",
       [](const Snapshot& s, TProcProgresso p) { return generate(s, &TDTM_A_TabUnidade::L13_RegistroUnidade, p); },
       "Erro ano Gerar Registro Linha 13 : "},
      {"DspListaCliente",
       [](const Snapshot& s, TProcProgresso p) { return generate(s, &TDTM_A_TabCliente::L14_RegistroCliente, p); },
       "Erro ano Gerar Registro Linha 14 : "},
      {"DspNaturezaOperacao",
       [](const Snapshot& s, TProcProgresso p) {
         return generate(s, &TDTM_A_TabNaturezaOperacao::L15_RegistroNaturezaOperacao, p);
       },
       "Erro ano Gerar Registro Linha 15 : "},
  };
  const auto cancel_at_2 = [](int p, int) {
    if (p == 2) throw Error("cancelado");
  };
  for (const auto& c : cases) {
    const auto ok = c.gen(lists(), nullptr);
    EXPECT_THAT(ok.progress, ElementsAre(std::pair{1, 2}, std::pair{2, 2})) << c.provider;
    const auto failed = c.gen(lists(), cancel_at_2);
    ASSERT_EQ(failed.lines.size(), 2u) << c.provider;
    EXPECT_EQ(failed.lines[0], ok.lines[0]) << c.provider;
    EXPECT_EQ(failed.lines[1], std::string("erro: ") + c.prefix + "cancelado") << c.provider;
    // An empty list: no line, no progress.
    const auto empty = c.gen(Snapshot().registro(7), nullptr);
    EXPECT_THAT(empty.lines, IsEmpty()) << c.provider;
    EXPECT_THAT(empty.progress, IsEmpty()) << c.provider;
    // The open stands outside the error rule.
    EXPECT_THAT(c.gen(Snapshot().registro(7).error(c.provider, json::array(), "sem conexão"), nullptr).lines,
                ElementsAre("erro: sem conexão"))
        << c.provider;
    EXPECT_THAT(c.gen(Snapshot().error("DspRegistroInfoFiscal", {7}, "sem registro"), nullptr).lines,
                ElementsAre("erro: sem registro"))
        << c.provider;
  }
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
