#include "registers/incoming/dtm_a_compraproduto.h"

namespace infofiscal {

TDTM_A_CompraProduto::TDTM_A_CompraProduto(TDTM_ConexaoDS& conexao) : TDTM_A_Compra(conexao) {
  FTipoProcesso = 2;
}

void TDTM_A_CompraProduto::L04_L05_L06_RegistroCompraProduto(TStringList&, int) {}

}  // namespace infofiscal
