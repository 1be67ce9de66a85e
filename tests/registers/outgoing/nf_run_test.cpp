// The outgoing kinds inside a whole run: their order, and the single note reaching equipment
// sales only.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/obj_exportainfofiscal.h"
#include "registers/outgoing/notas.h"

namespace infofiscal {
namespace {

using testing::json;
using testing::l04;
using testing::l05;
using testing::l06;

TEST(OutgoingNotesInARun, KindsFollowTheStepsAndOnlyEquipmentSalesTakeTheSingleNote) {
  json switches = {{"CDMES", 3}, {"ANO", 2024}};
  for (const testing::Kind& k : testing::kinds()) switches[k.chave] = "S";
  testing::Snapshot s = testing::Snapshot().registro(7, switches);
  for (const testing::Kind& k : testing::kinds()) testing::lista(s, k.tipo, 2);
  testing::nota(s, 1001, 0);
  testing::nota(s, 1002, 1);

  testing::Run run(s);
  TOBJ_ExportaInfoFiscal orquestrador(run.conexao);
  orquestrador.CodTipoRegistroFiscal(2);
  orquestrador.CodRegistroFiscal(7);
  orquestrador.Executar(0, 1002);

  std::vector<std::string> notas;
  for (const std::string& line : testing::lines_of(orquestrador.oArquivo))
    if (line.starts_with("[C00]04[/C00]") || line.starts_with("[C00]05[/C00]") || line.starts_with("[C00]06[/C00]"))
      notas.push_back(line);
  std::vector<std::string> expected = {l04(17, 2, 1002), l05(17, 2, 1), l06(17, 2, 1)};
  for (const int tipo : {10, 11, 9, 12}) {
    const int papel = testing::kind(tipo).papel;
    for (const std::string& l :
         {l04(tipo, 1, 1001), l05(tipo, 1, papel), l04(tipo, 2, 1002), l05(tipo, 2, papel), l06(tipo, 2, 1)})
      expected.push_back(l);
  }
  EXPECT_EQ(notas, expected);
}

}  // namespace
}  // namespace infofiscal
