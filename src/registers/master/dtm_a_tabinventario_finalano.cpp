#include "registers/master/dtm_a_tabinventario_finalano.h"

namespace infofiscal {

TDTM_A_TabInventario_FinalAno::TDTM_A_TabInventario_FinalAno(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabInventario_FinalAno::L18_L19_RegistroInventario(TStringList&) {}

}  // namespace infofiscal
