#include "registers/master/dtm_a_tabcliente.h"

namespace infofiscal {

TDTM_A_TabCliente::TDTM_A_TabCliente(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabCliente::L14_RegistroCliente(TStringList&) {}

}  // namespace infofiscal
