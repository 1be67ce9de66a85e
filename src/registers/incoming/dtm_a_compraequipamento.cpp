#include "registers/incoming/dtm_a_compraequipamento.h"

namespace infofiscal {

TDTM_A_CompraEquipamento::TDTM_A_CompraEquipamento(TDTM_ConexaoDS& conexao) : TDTM_A_Compra(conexao) {
  FTipoProcesso = 1;
}

void TDTM_A_CompraEquipamento::L04_L05_L06_RegistroCompraEquipamento(TStringList&, int) {}

}  // namespace infofiscal
