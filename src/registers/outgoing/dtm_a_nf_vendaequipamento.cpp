#include "registers/outgoing/dtm_a_nf_vendaequipamento.h"

namespace infofiscal {

TDTM_A_NF_VendaEquipamento::TDTM_A_NF_VendaEquipamento(TDTM_ConexaoDS& conexao) : TDTM_A_NF(conexao) {
  FTipoProcesso = 17;
}

void TDTM_A_NF_VendaEquipamento::L04_L05_L06_RegistroNF_VendaEquipamento(TStringList&, int) {}

}  // namespace infofiscal
