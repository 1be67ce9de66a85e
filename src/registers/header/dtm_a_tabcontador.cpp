#include "registers/header/dtm_a_tabcontador.h"

namespace infofiscal {

TDTM_A_TabContador::TDTM_A_TabContador(TDTM_ConexaoDS& conexao) : TDTM_FPadraoConsulta(conexao) {}

void TDTM_A_TabContador::InformacaoContador(TStringList&) {}

}  // namespace infofiscal
