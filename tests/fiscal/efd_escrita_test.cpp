// The EFD writer: blocks in file order whatever order their records come in, a block opened by
// its first record, a block written ahead waiting (on disk past its limit) for its turn, and the
// counts of the closing records.
#include <gtest/gtest.h>

#include "base/error.h"
#include "fiscal/efd_escrita.h"

namespace infofiscal::efd {
namespace {

// Block H and C written ahead of block 0, block E after D was closed.
std::string escreve(std::size_t em_memoria) {
  SaidaEmMemoria saida;
  EscritorEfd w(saida, em_memoria);
  w.registro("H005", {data(20240229), centesimos(1000), texto("01")});
  for (int i = 1; i <= 3; ++i)
    w.registro("C190", {texto("000"), texto("5102"), centesimos(1800), centesimos(i * 100), centesimos(0), centesimos(0),
                        centesimos(0), centesimos(0), centesimos(0), centesimos(0), vazio()});
  w.registro("0190", {texto("UN"), texto("Unidade é")});
  w.encerra('D');
  EXPECT_THROW(w.registro("C190", {texto("000"), texto("5102"), centesimos(0), centesimos(0), centesimos(0), centesimos(0),
                                   centesimos(0), centesimos(0), centesimos(0), centesimos(0), vazio()}),
               Error)
      << "block C is closed";
  w.registro("E100", {data(20240301), data(20240331)});
  w.conclui();
  return saida.bytes();
}

TEST(EfdEscrita, BlocksWrittenAheadWaitForTheirTurn) {
  const std::string arquivo = escreve(kAdiadoEmMemoria);
  EXPECT_EQ(escreve(1), arquivo) << "waiting on disk changes nothing";
  EXPECT_EQ(arquivo,
      "|0001|0|\r\n"
      "|0190|UN|Unidade \xE9|\r\n"
      "|0990|3|\r\n"
      "|B001|1|\r\n"
      "|B990|2|\r\n"
      "|C001|0|\r\n"
      "|C190|000|5102|18,00|1,00|0,00|0,00|0,00|0,00|0,00|0,00||\r\n"
      "|C190|000|5102|18,00|2,00|0,00|0,00|0,00|0,00|0,00|0,00||\r\n"
      "|C190|000|5102|18,00|3,00|0,00|0,00|0,00|0,00|0,00|0,00||\r\n"
      "|C990|5|\r\n"
      "|D001|1|\r\n"
      "|D990|2|\r\n"
      "|E001|0|\r\n"
      "|E100|01032024|31032024|\r\n"
      "|E990|3|\r\n"
      "|G001|1|\r\n"
      "|G990|2|\r\n"
      "|H001|0|\r\n"
      "|H005|29022024|10,00|01|\r\n"
      "|H990|3|\r\n"
      "|K001|1|\r\n"
      "|K990|2|\r\n"
      "|1001|1|\r\n"
      "|1990|2|\r\n"
      "|9001|0|\r\n"
      "|9900|0001|1|\r\n"
      "|9900|0190|1|\r\n"
      "|9900|0990|1|\r\n"
      "|9900|B001|1|\r\n"
      "|9900|B990|1|\r\n"
      "|9900|C001|1|\r\n"
      "|9900|C190|3|\r\n"
      "|9900|C990|1|\r\n"
      "|9900|D001|1|\r\n"
      "|9900|D990|1|\r\n"
      "|9900|E001|1|\r\n"
      "|9900|E100|1|\r\n"
      "|9900|E990|1|\r\n"
      "|9900|G001|1|\r\n"
      "|9900|G990|1|\r\n"
      "|9900|H001|1|\r\n"
      "|9900|H005|1|\r\n"
      "|9900|H990|1|\r\n"
      "|9900|K001|1|\r\n"
      "|9900|K990|1|\r\n"
      "|9900|1001|1|\r\n"
      "|9900|1990|1|\r\n"
      "|9900|9001|1|\r\n"
      "|9900|9900|26|\r\n"
      "|9900|9990|1|\r\n"
      "|9900|9999|1|\r\n"
      "|9990|29|\r\n"
      "|9999|53|\r\n");
}

}  // namespace
}  // namespace infofiscal::efd
