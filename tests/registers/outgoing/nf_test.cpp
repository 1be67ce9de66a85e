// The five outgoing-note kinds: lines 04, 05 and 06, switches, note selection and failures.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "registers/outgoing/dtm_a_nf.h"
#include "registers/outgoing/notas.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::json;
using testing::Kind;
using testing::l04;
using testing::l05;
using testing::l06;
using testing::lista;
using testing::nota;
using testing::roda;
using testing::Saida;
using testing::Snapshot;

Snapshot ligado(const Kind& k, const json& overrides = json::object()) {
  json o = overrides;
  o[k.chave] = "S";
  return Snapshot().registro(7, o);
}

using Progress = std::vector<std::pair<int, int>>;

TEST(OutgoingNotes, OneNoteOfEachKindWritesItsCodeAndPartyRole) {
  for (const Kind& k : testing::kinds()) {
    Snapshot s = ligado(k);
    lista(s, k.tipo, 1);
    nota(s, 1001, 1);
    const Saida out = roda(k, s);
    EXPECT_EQ(out.error, "") << k.nome;
    EXPECT_THAT(out.lines, ElementsAre(l04(k.tipo, 1, 1001), l05(k.tipo, 1, k.papel), l06(k.tipo, 1, 1))) << k.nome;
    EXPECT_EQ(out.progress, (Progress{{1, 1}})) << k.nome;
  }
}

// A switch other than "S" asks for no list (a list request would fail the driver); an empty
// list reports no progress.
TEST(OutgoingNotes, ASwitchNotExactlySOrAnEmptyListWritesNothing) {
  for (const Kind& k : testing::kinds()) {
    std::vector<Snapshot> vazios = {ligado(k)};
    testing::lista(vazios[0], k.tipo, 0);
    for (const json& valor : {json("s"), json("N"), json(""), json(nullptr)})
      vazios.push_back(
          Snapshot().registro(7, {{k.chave, valor}}).request_error("DspListaNotaFiscal", {2, 7, k.tipo}, "lista pedida"));
    for (const Snapshot& s : vazios) {
      const Saida out = roda(k, s);
      EXPECT_EQ(out.error, "") << k.nome;
      EXPECT_THAT(out.lines, IsEmpty());
      EXPECT_THAT(out.progress, IsEmpty());
    }
  }
}

TEST(OutgoingNotes, TwoNotesWithTwoAndThreeItems) {
  for (const Kind& k : testing::kinds()) {
    Snapshot s = ligado(k);
    lista(s, k.tipo, 2);
    nota(s, 1001, 2);
    nota(s, 1002, 3);
    const Saida out = roda(k, s);
    const int t = k.tipo;
    EXPECT_THAT(out.lines, ElementsAre(l04(t, 1, 1001), l05(t, 1, k.papel), l06(t, 1, 1), l06(t, 1, 2), l04(t, 2, 1002),
                                       l05(t, 2, k.papel), l06(t, 2, 1), l06(t, 2, 2), l06(t, 2, 3)))
        << k.nome;
    EXPECT_EQ(out.progress, (Progress{{1, 2}, {2, 2}})) << k.nome;
  }
}

TEST(OutgoingNotes, ANoteWithoutItemsGivesItsHeaderAndParty) {
  const Kind& k = testing::kind(11);
  Snapshot s = ligado(k);
  lista(s, 11, 1);
  nota(s, 1001, 0);
  EXPECT_THAT(roda(k, s).lines, ElementsAre(l04(11, 1, 1001), l05(11, 1, 1)));
}

TEST(OutgoingNotes, ProductSalesHonourTheRowRange) {
  const struct {
    const char* name;
    json registro;
    std::vector<int> escritas;
  } cases[] = {
      {"range 2 to 3", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 2}, {"TIPOEXPORTACAOFINAL", 3}}, {2, 3}},
      {"start after end", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 4}, {"TIPOEXPORTACAOFINAL", 2}}, {}},
      {"range past the list", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 5}, {"TIPOEXPORTACAOFINAL", 9}}, {5}},
      {"kind 1 ignores the range",
       {{"TIPOEXPORTACAO", 1}, {"TIPOEXPORTACAOINICIO", 2}, {"TIPOEXPORTACAOFINAL", 3}},
       {1, 2, 3, 4, 5}},
      {"kind 0 ignores the range",
       {{"TIPOEXPORTACAO", 0}, {"TIPOEXPORTACAOINICIO", 9}, {"TIPOEXPORTACAOFINAL", 9}},
       {1, 2, 3, 4, 5}},
  };
  const Kind& k = testing::kind(10);
  for (const auto& c : cases) {
    Snapshot s = ligado(k, c.registro);
    lista(s, 10, 5);
    for (int i = 1; i <= 5; ++i) nota(s, 1000 + i, 1);
    std::vector<std::string> expected;
    for (int i : c.escritas) {
      expected.push_back(l04(10, i, 1000 + i));
      expected.push_back(l05(10, i, 1));
      expected.push_back(l06(10, i, 1));
    }
    const Saida out = roda(k, s);
    EXPECT_EQ(out.lines, expected) << c.name;
    EXPECT_EQ(out.progress, (Progress{{1, 5}, {2, 5}, {3, 5}, {4, 5}, {5, 5}})) << c.name;
  }
}

TEST(OutgoingNotes, OnlyProductSalesReadTheRange) {
  const json faixa = {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 2}, {"TIPOEXPORTACAOFINAL", 2}};
  for (const int tipo : {17, 11, 9, 12}) {
    const Kind& k = testing::kind(tipo);
    Snapshot s = ligado(k, faixa);
    lista(s, tipo, 3);
    for (int i = 1; i <= 3; ++i) nota(s, 1000 + i, 0);
    EXPECT_EQ(roda(k, s).lines.size(), 6u) << k.nome;
  }
}

TEST(OutgoingNotes, EquipmentSalesOfOneNote) {
  const Kind& k = testing::kind(17);
  Snapshot s = ligado(k);
  lista(s, 17, 5);
  for (int i = 1; i <= 5; ++i) nota(s, 1000 + i, 1);

  const Saida one = roda(k, s, 1004);
  EXPECT_THAT(one.lines, ElementsAre(l04(17, 4, 1004), l05(17, 4, 1), l06(17, 4, 1)));
  EXPECT_EQ(one.progress, (Progress{{4, 5}}));

  const Saida none = roda(k, s, 999);
  EXPECT_THAT(none.lines, IsEmpty());
  EXPECT_THAT(none.progress, IsEmpty());

  const Saida all = roda(k, s, 0);
  EXPECT_EQ(all.lines.size(), 15u);
  EXPECT_EQ(all.lines[9], l04(17, 4, 1004));
  EXPECT_EQ(all.progress, (Progress{{1, 5}, {2, 5}, {3, 5}, {4, 5}, {5, 5}}));
}

TEST(OutgoingNotes, TheSituationColumnAndItsFailures) {
  const struct {
    json pde;
    const char* result;
  } cases[] = {
      {2, "[C24]0[/C24]"},
      {3, "[C24]2[/C24]"},
      {1, "Erro ano Gerar Registro Linha 04 : Erro na Nota Fiscal de Saida: 1001"},
      {0, "Erro ano Gerar Registro Linha 04 : Erro na Nota Fiscal de Saida: 1001"},
      {4, "Erro ano Gerar Registro Linha 04 : Erro na Nota Fiscal de Saida: 1001"},
      {nullptr, "Erro ano Gerar Registro Linha 04 : Erro na Nota Fiscal de Saida: 1001"},
      {"x", "Erro ano Gerar Registro Linha 04 : 'x' não é um valor inteiro válido (campo PDE de TabNF_Venda, registro "
            "CDTIPONOTAFISCAL=1 CDNOTAFISCAL=1001)"},
  };
  const Kind& k = testing::kind(12);
  for (const auto& c : cases) {
    Snapshot s = ligado(k);
    lista(s, 12, 1);
    nota(s, 1001, 1, c.pde);
    const Saida out = roda(k, s);
    if (out.error.empty()) {
      EXPECT_THAT(out.lines, ElementsAre(l04(12, 1, 1001, c.result), l05(12, 1, 1), l06(12, 1, 1))) << c.pde;
    } else {
      EXPECT_EQ(out.error, c.result) << c.pde;
      EXPECT_THAT(out.lines, IsEmpty()) << c.pde;
    }
  }
}

TEST(OutgoingNotes, AHeaderWithoutRowsFailsWithAnEmptyNoteCode) {
  const Kind& k = testing::kind(10);
  Snapshot s = ligado(k);
  lista(s, 10, 2);
  nota(s, 1001, 1);
  s.params("DspNF_Venda", {1, 1002}, json::array());
  const Saida out = roda(k, s);
  EXPECT_EQ(out.error, "Erro ano Gerar Registro Linha 04 : Erro na Nota Fiscal de Saida: ");
  EXPECT_THAT(out.lines, ElementsAre(l04(10, 1, 1001), l05(10, 1, 1), l06(10, 1, 1)));
  EXPECT_EQ(out.progress, (Progress{{1, 2}, {2, 2}}));
}

TEST(OutgoingNotes, NullTextsGiveEmptyElements) {
  const Kind& k = testing::kind(10);
  Snapshot s = ligado(k);
  lista(s, 10, 1);
  s.params(
      "DspNF_Venda", {1, 1001},
      json::array({testing::cabecalho(1001, 2, {{"CHAVENFE", nullptr}, {"NUMSERIE", nullptr}, {"SAIDA", nullptr}})}));
  const Saida out = roda(k, s);
  ASSERT_EQ(out.lines.size(), 2u);
  EXPECT_EQ(out.lines[0],
            "[C00]04[/C00][C01]10[/C01][C02]1[/C02][C03]1001[/C03][C04]5102[/C04][C05][/C05][C06]55[/C06][C07][/C07]"
            "[C08]05/03/2024[/C08][C09][/C09][C10]1234,50[/C10][C11]10,00[/C11][C12]1244,50[/C12][C13]1,10[/C13]"
            "[C14]2,20[/C14][C15]3,30[/C15][C16]1000,00[/C16][C17]180,00[/C17][C18]4,40[/C18][C19]5,50[/C19]"
            "[C20]6,60[/C20][C21]7,70[/C21][C22]8,80[/C22][C23]0[/C23][C24]0[/C24][C99]26[/C99]");
  // No party row: every column of line 05 is empty, the role is still written.
  EXPECT_EQ(
      out.lines[1],
      "[C00]05[/C00][C01]10[/C01][C02]1[/C02][C03]1[/C03][C04][/C04][C05][/C05][C06][/C06][C07][/C07][C99]07[/C99]");
}

TEST(OutgoingNotes, QuantitiesAreAmountsOfTwoDecimals) {
  const struct {
    json quantidade;
    const char* texto;
  } cases[] = {{1.5, "1,50"}, {0.333, "0,33"}, {1.005, "1,01"}, {-2, "-2,00"}, {nullptr, "0,00"}};
  const Kind& k = testing::kind(17);
  for (const auto& c : cases) {
    Snapshot s = ligado(k);
    lista(s, 17, 1);
    s.params("DspNF_Venda", {1, 1001}, json::array({testing::cabecalho(1001)}))
        .params("DspNF_Produto", {1, 1001}, json::array({testing::item(1001, 1, {{"QUANTIDADE", c.quantidade}})}));
    const Saida out = roda(k, s);
    ASSERT_EQ(out.lines.size(), 3u) << c.quantidade;
    EXPECT_EQ(out.lines[2], l06(17, 1, 1, c.texto)) << c.quantidade;
  }
}

TEST(OutgoingNotes, TheSinglePrecisionQuantityIsRoundedAsSinglePrecision) {
  // 2.675 as a double rounds up to 2,68; as a single it is 2.67499995... and rounds down.
  const Kind& k = testing::kind(10);
  Snapshot s = ligado(k);
  lista(s, 10, 1);
  s.params("DspNF_Venda", {1, 1001}, json::array({testing::cabecalho(1001)}))
      .params("DspNF_Produto", {1, 1001},
              json::array({testing::item(1001, 1, {{"COFINS_QUANTUNIDADE", 2.675}, {"PIS_QUANTUNIDADE", 2.675}})}));
  const Saida out = roda(k, s);
  ASSERT_EQ(out.lines.size(), 3u);
  EXPECT_NE(out.lines[2].find("[C30]2,68[/C30]"), std::string::npos);
  EXPECT_NE(out.lines[2].find("[C36]2,67[/C36]"), std::string::npos);
}

TEST(OutgoingNotes, AFailingSecondItemKeepsWhatCameBefore) {
  const Kind& k = testing::kind(11);
  Snapshot s = ligado(k);
  lista(s, 11, 2);
  nota(s, 1002, 1);
  s.params("DspNF_Venda", {1, 1001}, json::array({testing::cabecalho(1001)}))
      .params("DspNF_Cliente", {1, 1001}, json::array({testing::parte(1001)}))
      .params("DspNF_Produto", {1, 1001},
              json::array(
                  {testing::item(1001, 1), testing::item(1001, 2, {{"QUANTIDADE", "1,5"}}), testing::item(1001, 3)}));
  const Saida out = roda(k, s);
  EXPECT_EQ(out.error,
            "Erro ano Gerar Registro Linha 06 : '1,5' não é um valor de ponto flutuante válido (campo QUANTIDADE de "
            "TabNF_Produto, registro CDTIPONOTAFISCAL=1 CDNOTAFISCAL=1001 CDPRODUTO=502)");
  EXPECT_THAT(out.lines, ElementsAre(l04(11, 1, 1001), l05(11, 1, 1), l06(11, 1, 1)));
  EXPECT_EQ(out.progress, (Progress{{1, 2}}));
}

TEST(OutgoingNotes, FailuresOfTheRecordSourcePassUnchanged) {
  const Kind& k = testing::kind(9);
  const struct {
    const char* name;
    std::function<void(Snapshot&)> fault;
    std::size_t lines;
  } cases[] = {
      {"fiscal register", [](Snapshot& s) { s = Snapshot().error("DspRegistroInfoFiscal", {7}, "conexão recusada"); },
       0},
      {"note list",
       [](Snapshot& s) { s = ligado(testing::kind(9)).request_error("DspListaNotaFiscal", {2, 7, 9}, "conexão recusada"); },
       0},
      {"header", [](Snapshot& s) { s.error("DspNF_Venda", {1, 1001}, "conexão recusada"); }, 0},
      {"party", [](Snapshot& s) { s.error("DspNF_Cliente", {1, 1001}, "conexão recusada"); }, 1},
      {"items", [](Snapshot& s) { s.error("DspNF_Produto", {1, 1001}, "conexão recusada"); }, 2},
  };
  for (const auto& c : cases) {
    Snapshot s = ligado(k);
    c.fault(s);  // entries added before the note's answer it
    lista(s, 9, 1);
    nota(s, 1001, 1);
    const Saida out = roda(k, s);
    EXPECT_EQ(out.error, "conexão recusada") << c.name;
    EXPECT_EQ(out.lines.size(), c.lines) << c.name;
  }
}

TEST(OutgoingNotes, AMissingItemFieldFailsTheOpenUnprefixed) {
  const Kind& k = testing::kind(10);
  Snapshot s = ligado(k);
  lista(s, 10, 1);
  json sem_ncm = testing::item(1001, 1);
  sem_ncm.erase("NUMNCM");
  s.params("DspNF_Venda", {1, 1001}, json::array({testing::cabecalho(1001)}))
      .params("DspNF_Produto", {1, 1001}, json::array({sem_ncm}));
  EXPECT_EQ(roda(k, s).error, "Campo 'NUMNCM' não encontrado em TabNF_Produto");
}

TEST(OutgoingNotes, TheBaseModuleWritesKindCodeZero) {
  Snapshot s;
  nota(s, 1001, 0);
  testing::Run run(s);
  TDTM_A_NF modulo(run.conexao);
  run.configure(modulo);
  TStringList list;
  modulo.L04_InfoNotaFiscal(3, 1, 1001, list);
  modulo.L05_InstituicaoFornecedor(3, 1, 1001, list);
  modulo.L05_NF_Cliente(3, 1, 1001, list);
  EXPECT_THAT(testing::lines_of(list), ElementsAre(l04(0, 3, 1001), l05(0, 3, 2), l05(0, 3, 1)));
}

}  // namespace
}  // namespace infofiscal
