#include "registers/master/dtm_a_tabequipamento.h"

namespace infofiscal {

TDTM_A_TabEquipamento::TDTM_A_TabEquipamento(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabEquipamento::L12_RegistroEquipamento(TStringList&) {}

}  // namespace infofiscal
