// The short sales-return lines 04 (21 columns) and 05 (5 columns), driven as a host would.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "registers/outgoing/dtm_a_devvenda.h"
#include "registers/outgoing/notas.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::json;
using testing::Snapshot;

const char* const kL04 =
    "[C00]04[/C00][C01]0[/C01][C02]{R}[/C02][C03]{N}[/C03][C04]55[/C04][C05]1[/C05][C06]05/03/2024[/C06]"
    "[C07]1234,50[/C07][C08]10,00[/C08][C09]1244,50[/C09][C10]1,10[/C10][C11]2,20[/C11][C12]3,30[/C12]"
    "[C13]1000,00[/C13][C14]180,00[/C14][C15]4,40[/C15][C16]5,50[/C16][C17]6,60[/C17][C18]7,70[/C18]"
    "[C19]8,80[/C19][C20]0[/C20][C21]0[/C21][C99]21[/C99]";
const char* const kL05 =
    "[C00]05[/C00][C01]0[/C01][C02]{R}[/C02][C03]12.345.678/0001-90[/C03][C04]123456789[/C04][C05]SP[/C05][C99]05[/"
    "C99]";

std::string com(std::string line, int registro, int nota = 0) {
  line.replace(line.find("{R}"), 3, std::to_string(registro));
  if (const auto n = line.find("{N}"); n != std::string::npos) line.replace(n, 3, std::to_string(nota));
  return line;
}

// A sales-return note answered by data request [1, nota].
Snapshot& devolucao(Snapshot& s, int nota, const json& pde = 2) {
  return s.request("DspNF_Venda", {1, nota}, json::array({testing::cabecalho(nota, pde)}))
      .request("DspNF_Cliente", {1, nota}, json::array({testing::parte(nota)}));
}

// The loop a host writes: the list, then lines 04 and 05 of every note.
std::string exporta(const Snapshot& s, TStringList& list) {
  testing::Run run(s);
  TDTM_A_DevVenda modulo(run.conexao);
  run.configure(modulo);
  try {
    modulo.ConsListaNotaFiscal();
    int registro = 0;
    for (auto& l = modulo.TabListaNotaFiscal; !l.Eof(); l.Next()) {
      ++registro;
      const int tipo = static_cast<int>(l.FieldByName("CDTIPONOTAFISCAL").AsInteger());
      const int nota = static_cast<int>(l.FieldByName("CDNOTAFISCAL").AsInteger());
      modulo.Reg_04_InfoNotaFiscal(registro, tipo, nota, list);
      modulo.Reg_05_InstituicaoCliente(registro, tipo, nota, list);
    }
  } catch (const Error& e) {
    return e.what();
  }
  EXPECT_THAT(run.progress, IsEmpty());
  return "";
}

TEST(SalesReturns, TwoNotesInTheShortForm) {
  Snapshot s;
  testing::lista(s, 0, 2);  // the list is asked for with kind code 0
  devolucao(s, 1001);
  devolucao(s, 1002);
  TStringList list;
  EXPECT_EQ(exporta(s, list), "");
  EXPECT_THAT(testing::lines_of(list), ElementsAre(com(kL04, 1, 1001), com(kL05, 1), com(kL04, 2, 1002), com(kL05, 2)));
}

TEST(SalesReturns, OnlyAnIssuedNoteIsAccepted) {
  for (const json& pde : {json(3), json(1), json(nullptr)}) {
    Snapshot s;
    testing::lista(s, 0, 2);
    devolucao(s, 1001);
    devolucao(s, 1002, pde);
    TStringList list;
    EXPECT_EQ(exporta(s, list), "Erro ano Gerar Registro Linha 04 : Nota Fiscal de Saída (DevVenda) : 1002") << pde;
    EXPECT_THAT(testing::lines_of(list), ElementsAre(com(kL04, 1, 1001), com(kL05, 1))) << pde;
  }
}

TEST(SalesReturns, FailuresOfTheRequestsPassUnchanged) {
  const struct {
    const char* name;
    const char* provider;
    json request;
    std::size_t lines;
  } cases[] = {
      {"list", "DspListaNotaFiscal", {2, 7, 0}, 0},
      {"header", "DspNF_Venda", {1, 1001}, 0},
      {"party", "DspNF_Cliente", {1, 1001}, 1},
  };
  for (const auto& c : cases) {
    Snapshot s;
    s.request_error(c.provider, c.request, "conexão recusada");
    testing::lista(s, 0, 1);
    devolucao(s, 1001);
    TStringList list;
    EXPECT_EQ(exporta(s, list), "conexão recusada") << c.name;
    EXPECT_EQ(list.Count(), c.lines) << c.name;
  }
}

TEST(SalesReturns, TheHeaderIsNotAnsweredByParameters) {
  // Answers for a parameter open are not seen: the header comes back empty and is rejected.
  Snapshot s;
  testing::lista(s, 0, 1);
  testing::nota(s, 1001, 0);
  TStringList list;
  EXPECT_EQ(exporta(s, list), "Erro ano Gerar Registro Linha 04 : Nota Fiscal de Saída (DevVenda) : ");
}

}  // namespace
}  // namespace infofiscal
