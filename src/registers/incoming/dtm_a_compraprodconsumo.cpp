#include "registers/incoming/dtm_a_compraprodconsumo.h"

namespace infofiscal {

TDTM_A_CompraProdConsumo::TDTM_A_CompraProdConsumo(TDTM_ConexaoDS& conexao) : TDTM_A_Compra(conexao) {
  FTipoProcesso = 4;
}

void TDTM_A_CompraProdConsumo::L04_L05_L06_RegistroCompraProdConsumo(TStringList&, int) {}

}  // namespace infofiscal
