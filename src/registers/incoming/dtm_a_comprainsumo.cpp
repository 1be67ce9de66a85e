#include "registers/incoming/dtm_a_comprainsumo.h"

namespace infofiscal {

TDTM_A_CompraInsumo::TDTM_A_CompraInsumo(TDTM_ConexaoDS& conexao) : TDTM_A_Compra(conexao) {}

void TDTM_A_CompraInsumo::L04_L05_L06_RegistroCompraInsumo(TStringList&) {}

}  // namespace infofiscal
