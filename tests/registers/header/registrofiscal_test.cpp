#include "registers/header/dtm_a_registrofiscal.h"

#include <gtest/gtest.h>

#include "support/fixture.h"

namespace infofiscal {
namespace {

using testing::json;
using testing::Run;
using testing::Snapshot;

std::string line01(const Snapshot& snapshot, TRegistroFiscal tipo = 2) {
  Run run(snapshot);
  TDTM_A_RegistroFiscal modulo(run.conexao);
  modulo.CodTipoRegistro(tipo);
  modulo.CodRegistroFiscal(7);
  TStringList list;
  try {
    modulo.L01_RegistroFiscal(list);
  } catch (const Error& e) {
    EXPECT_EQ(list.Count(), 0u);
    return std::string("erro: ") + e.what();
  }
  EXPECT_EQ(list.Count(), 1u);
  return std::string(list[0]);
}

TEST(Line01, ColumnsOfTheFiscalRegister) {
  const json full = {{"CDMES", 2}, {"ANO", 2024}, {"REGINVENTARIOFINALMES", "S"}, {"REGINVENTARIOFINALANO", "s"},
                     {"FINALIDADEARQUIVO", "1"}, {"NUMREGANTERIOR", ""}, {"PERFILAPRESENTARARQ", "A"},
                     {"INDICADORTIPOATIVIDADE", "1"}, {"INDICADORSITESPECIAL", "0"},
                     {"INDICADORNATPESSOAJURIDICA", "00"}, {"INDICADORINCIDENCIATRIBUTARIA", "1"},
                     {"INDICADORMETODOAPROPCREDITO", "2"}, {"INDICADORTIPOCONTRIBUICAO", "3"},
                     {"INDICADORCRITESCRITURACAO", "9"}};
  const struct {
    const char* name;
    json overrides;
    TRegistroFiscal tipo;
    const char* line;
  } cases[] = {
      {"February of a leap year; incidence between nature and method", full, 2,
       "[C00]01[/C00][C01]2[/C01][C02]01/02/2024[/C02][C03]29/02/2024[/C03][C04]S[/C04][C05]N[/C05][C06]1[/C06]"
       "[C07][/C07][C08]A[/C08][C09]1[/C09][C10]0[/C10][C11]00[/C11][C12]1[/C12][C13]2[/C13][C14]3[/C14][C15]9[/C15]"
       "[C99]15[/C99]"},
      {"null texts and switches", {{"CDMES", 12}, {"ANO", 2023}, {"REGINVENTARIOFINALMES", nullptr}, {"NUMREGANTERIOR", nullptr}}, 1,
       "[C00]01[/C00][C01]1[/C01][C02]01/12/2023[/C02][C03]31/12/2023[/C03][C04]N[/C04][C05]N[/C05][C06][/C06]"
       "[C07][/C07][C08][/C08][C09][/C09][C10][/C10][C11][/C11][C12][/C12][C13][/C13][C14][/C14][C15][/C15]"
       "[C99]15[/C99]"},
      {"February of a common year", {{"CDMES", 2}, {"ANO", 2023}, {"REGINVENTARIOFINALANO", "S"}}, 3,
       "[C00]01[/C00][C01]3[/C01][C02]01/02/2023[/C02][C03]28/02/2023[/C03][C04]N[/C04][C05]S[/C05][C06][/C06]"
       "[C07][/C07][C08][/C08][C09][/C09][C10][/C10][C11][/C11][C12][/C12][C13][/C13][C14][/C14][C15][/C15]"
       "[C99]15[/C99]"},
      {"month out of range", {{"CDMES", 13}, {"ANO", 2024}}, 2, "erro: Erro ano Gerar Registro Linha 01: Mês inválido: 13"},
      {"month that is no number", {{"CDMES", "mar"}, {"ANO", 2024}}, 2,
       "erro: Erro ano Gerar Registro Linha 01: 'mar' não é um valor inteiro válido (campo CDMES de "
       "TabRegistroInfoFiscal, registro CDREGISTROFISCAL=7)"},
  };
  for (const auto& c : cases) EXPECT_EQ(line01(Snapshot().registro(7, c.overrides), c.tipo), c.line) << c.name;
}

TEST(Line01, AnEmptyRecordFailsWithTheLinePrefix) {
  EXPECT_EQ(line01(Snapshot()), "erro: Erro ano Gerar Registro Linha 01: Mês inválido: 0");
}

TEST(Line01, AFailingOpenPassesUnchanged) {
  EXPECT_EQ(line01(Snapshot().error("DspRegistroInfoFiscal", {7}, "conexão recusada")), "erro: conexão recusada");
  // A declared field the provider lacks fails the open, unprefixed.
  json row = testing::registro_fiscal({{"CDMES", 1}, {"ANO", 2024}});
  row.erase("INDICADORSITESPECIAL");
  EXPECT_EQ(line01(Snapshot().params("DspRegistroInfoFiscal", {7}, json::array({row}))),
            "erro: Campo 'INDICADORSITESPECIAL' não encontrado em TabRegistroInfoFiscal");
}

}  // namespace
}  // namespace infofiscal
