#include "registers/header/dtm_a_tabempresa.h"

namespace infofiscal {

TDTM_A_TabEmpresa::TDTM_A_TabEmpresa(TDTM_ConexaoDS& conexao) : TDTM_FPadraoConsulta(conexao) {}

void TDTM_A_TabEmpresa::L02_InformacaoEmpresa(TStringList&) {}

}  // namespace infofiscal
