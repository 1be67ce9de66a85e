#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "registers/header/dtm_a_tabcontador.h"
#include "support/fixture.h"
#include "support/generate.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using testing::json;
using testing::Run;
using testing::Snapshot;

json contador(const json& overrides = json::object()) {
  json row = {{"CDCONTADOR", 3},
              {"NOMECONTADOR", "Ana Souza"},
              {"FONE", "(41) 3222-1111"},
              {"CPF", "123.456.789-09"},
              {"CRC", "PR-045678/O-1"},
              {"CNPJ", nullptr},
              {"CEP", "80020-100"},
              {"ENDERECO", "Av. Sete de Setembro"},
              {"ENDERECONUMERO", "2500"},
              {"ENDERECOCOMPLEMENTO", "Conj. 41"},
              {"BAIRRO", "Rebouças"},
              {"EMAIL", "ana@contabil.com.br"},
              {"FAX", ""},
              {"CODIBGE", 4106902}};
  row.update(overrides);
  return row;
}

std::vector<std::string> line03(const Snapshot& snapshot) {
  Run run(snapshot);
  TDTM_A_TabContador modulo(run.conexao);
  return testing::lines_or_error([&](TStringList& l) { modulo.InformacaoContador(l); });
}

TEST(Line03, ColumnsInTheLineOrder) {
  const struct {
    const char* name;
    json rows;
    const char* line;
  } cases[] = {
      {"a person: no CNPJ; number before complement, postal code after them",
       json::array({contador(), contador({{"CDCONTADOR", 4}})}),
       "[C00]03[/C00][C01]3[/C01][C02]Ana Souza[/C02][C03]123.456.789-09[/C03][C04]PR-045678/O-1[/C04][C05][/C05]"
       "[C06]Av. Sete de Setembro[/C06][C07]2500[/C07][C08]Conj. 41[/C08][C09]80020-100[/C09][C10]Rebouças[/C10]"
       "[C11](41) 3222-1111[/C11][C12][/C12][C13]ana@contabil.com.br[/C13][C14]4106902[/C14][C99]14[/C99]"},
      {"an office without CPF",
       json::array({contador({{"CPF", nullptr}, {"CNPJ", "11.222.333/0001-81"}, {"CODIBGE", nullptr}})}),
       "[C00]03[/C00][C01]3[/C01][C02]Ana Souza[/C02][C03][/C03][C04]PR-045678/O-1[/C04][C05]11.222.333/0001-81[/C05]"
       "[C06]Av. Sete de Setembro[/C06][C07]2500[/C07][C08]Conj. 41[/C08][C09]80020-100[/C09][C10]Rebouças[/C10]"
       "[C11](41) 3222-1111[/C11][C12][/C12][C13]ana@contabil.com.br[/C13][C14][/C14][C99]14[/C99]"},
      {"empty result: fourteen empty columns", json::array(),
       "[C00]03[/C00][C01][/C01][C02][/C02][C03][/C03][C04][/C04][C05][/C05][C06][/C06][C07][/C07][C08][/C08]"
       "[C09][/C09][C10][/C10][C11][/C11][C12][/C12][C13][/C13][C14][/C14][C99]14[/C99]"},
  };
  for (const auto& c : cases)
    EXPECT_THAT(line03(Snapshot().params("DspContador", json::array(), c.rows)), ElementsAre(c.line)) << c.name;
}

TEST(Line03, OpenFailuresPassUnchanged) {
  EXPECT_THAT(line03(Snapshot().error("DspContador", json::array(), "tempo esgotado")),
              ElementsAre("erro: tempo esgotado"));
  json row = contador();
  row.erase("CRC");
  EXPECT_THAT(line03(Snapshot().params("DspContador", json::array(), json::array({row}))),
              ElementsAre("erro: Campo 'CRC' não encontrado em TabContador"));
}

}  // namespace
}  // namespace infofiscal
