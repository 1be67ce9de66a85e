#include "registers/master/dtm_a_tabinsumo.h"

namespace infofiscal {

TDTM_A_TabInsumo::TDTM_A_TabInsumo(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabInsumo::L12_RegistroInsumo_(TStringList&) {}

}  // namespace infofiscal
