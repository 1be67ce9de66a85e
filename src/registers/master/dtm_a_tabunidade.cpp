#include "registers/master/dtm_a_tabunidade.h"

namespace infofiscal {

TDTM_A_TabUnidade::TDTM_A_TabUnidade(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabUnidade::L13_RegistroUnidade(TStringList&) {}

}  // namespace infofiscal
