#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Lines 02 (company) and 03 (accountant): one line each, from the first row.
#include "registers/header/dtm_a_tabcontador.h"
#include "registers/header/dtm_a_tabempresa.h"
#include "support/fixture.h"
#include "support/generate.h"
#include "support/golden.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using testing::json;
using testing::Run;
using testing::Snapshot;

json empresa(const json& overrides = json::object()) {
  json row = {{"CDEMPRESA", 1}, {"RAZAOSOCIAL", "Mercantil Boa Vista Ltda"}, {"NOMEFANTASIA", "Boa Vista"},
              {"CNPJ", "12.345.678/0001-90"}, {"IE", "123456789"}, {"IM", "98765"}, {"SUFRAMA", ""},
              {"NOMECIDADE", "Curitiba"}, {"CDESTADO", "PR"}, {"ENDERECO", "Rua das Flores"},
              {"ENDERECONUMERO", "100"}, {"ENDERECOCOMPLEMENTO", "Sala 2"}, {"BAIRRO", "Centro"},
              {"IBGE_CIDADE", 4106902}, {"IBGE_PAIS", 1058}, {"CEP", "80010-000"}, {"FONE", "(41) 3333-4444"},
              {"FAX", nullptr}, {"EMAIL", "fiscal@boavista.com.br"}};
  row.update(overrides);
  return row;
}

// Lines 02 (every column; no number nor complement; no row) and 03 (a person; an office; no row).
const std::vector<std::string> kLinhas = testing::golden_lines("linhas_02_03.txt");

// Line 02 of a run whose user works in company `codigo`.
std::vector<std::string> line02(const Snapshot& snapshot, int codigo = 1) {
  Run run(snapshot, codigo);
  TDTM_A_TabEmpresa modulo(run.conexao);
  return testing::lines_or_error([&](TStringList& l) { modulo.L02_InformacaoEmpresa(l); });
}

TEST(Line02, ColumnsInTheLineOrder) {
  const struct {
    const char* name;
    json rows;
    std::string line;
  } cases[] = {
      {"state before the registrations, postal code between street and complement", json::array({empresa()}), kLinhas[0]},
      {"no number and no complement: two empty elements mid-line; several rows: the first",
       json::array({empresa({{"ENDERECONUMERO", nullptr}, {"ENDERECOCOMPLEMENTO", ""}}), empresa({{"CDEMPRESA", 2}})}), kLinhas[1]},
      {"brackets and a line break copied unchanged",
       json::array({empresa({{"RAZAOSOCIAL", "A [/C02] B"}, {"NOMEFANTASIA", "linha\r\nnova"}})}),
       "[C00]02[/C00][C01]1[/C01][C02]A [/C02] B[/C02][C03]linha\r\nnova[/C03][C04]12.345.678/0001-90[/C04]"
       "[C05]PR[/C05][C06]123456789[/C06][C07]98765[/C07][C08][/C08][C09]Curitiba[/C09][C10]Rua das Flores[/C10]"
       "[C11]80010-000[/C11][C12]Sala 2[/C12][C13]100[/C13][C14]Centro[/C14][C15](41) 3333-4444[/C15][C16][/C16]"
       "[C17]fiscal@boavista.com.br[/C17][C18]4106902[/C18][C19]1058[/C19][C99]19[/C99]"},
      {"empty result: nineteen empty columns", json::array(), kLinhas[2]},
  };
  for (const auto& c : cases)
    EXPECT_THAT(line02(Snapshot().params("DspEmpresa", {1}, c.rows)), ElementsAre(c.line)) << c.name;
}

TEST(Line02, AsksForTheCompanyTheUserWorksIn) {
  const Snapshot s = Snapshot()
                         .params("DspEmpresa", {1}, json::array({empresa()}))
                         .params("DspEmpresa", {4}, json::array({empresa({{"CDEMPRESA", 4}})}));
  EXPECT_EQ(line02(s, 4).at(0).substr(0, 25), "[C00]02[/C00][C01]4[/C01]");
}

json contador(const json& overrides = json::object()) {
  json row = {{"CDCONTADOR", 3}, {"NOMECONTADOR", "Ana Souza"}, {"FONE", "(41) 3222-1111"},
              {"CPF", "123.456.789-09"}, {"CRC", "PR-045678/O-1"}, {"CNPJ", nullptr}, {"CEP", "80020-100"},
              {"ENDERECO", "Av. Sete de Setembro"}, {"ENDERECONUMERO", "2500"}, {"ENDERECOCOMPLEMENTO", "Conj. 41"},
              {"BAIRRO", "Rebouças"}, {"EMAIL", "ana@contabil.com.br"}, {"FAX", ""}, {"CODIBGE", 4106902}};
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
    std::string line;
  } cases[] = {
      {"a person: no CNPJ; number before complement, postal code after them",
       json::array({contador(), contador({{"CDCONTADOR", 4}})}), kLinhas[3]},
      {"an office without CPF",
       json::array({contador({{"CPF", nullptr}, {"CNPJ", "11.222.333/0001-81"}, {"CODIBGE", nullptr}})}), kLinhas[4]},
      {"empty result: fourteen empty columns", json::array(), kLinhas[5]},
  };
  for (const auto& c : cases)
    EXPECT_THAT(line03(Snapshot().params("DspContador", json::array(), c.rows)), ElementsAre(c.line)) << c.name;
}

// The opens stand outside the error rule: their failures, a missing field included, pass as
// they are.
TEST(HeaderLines, OpenFailuresPassUnchanged) {
  json sem_email = empresa(), sem_crc = contador();
  sem_email.erase("EMAIL");
  sem_crc.erase("CRC");
  const struct {
    std::vector<std::string> lines;
    const char* error;
  } cases[] = {
      {line02(Snapshot().error("DspEmpresa", {1}, "conexão recusada")), "erro: conexão recusada"},
      {line02(Snapshot().params("DspEmpresa", {1}, json::array({sem_email}))),
       "erro: Campo 'EMAIL' não encontrado em TabEmpresa"},
      {line03(Snapshot().error("DspContador", json::array(), "tempo esgotado")), "erro: tempo esgotado"},
      {line03(Snapshot().params("DspContador", json::array(), json::array({sem_crc}))),
       "erro: Campo 'CRC' não encontrado em TabContador"},
  };
  for (const auto& c : cases) EXPECT_THAT(c.lines, ElementsAre(c.error));
}

}  // namespace
}  // namespace infofiscal
