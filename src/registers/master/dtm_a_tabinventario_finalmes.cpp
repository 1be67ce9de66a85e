#include "registers/master/dtm_a_tabinventario_finalmes.h"

namespace infofiscal {

TDTM_A_TabInventario_FinalMes::TDTM_A_TabInventario_FinalMes(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabInventario_FinalMes::L16_L17_RegistroInventario(TStringList&) {}

}  // namespace infofiscal
