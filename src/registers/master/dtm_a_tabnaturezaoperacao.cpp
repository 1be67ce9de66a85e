#include "registers/master/dtm_a_tabnaturezaoperacao.h"

namespace infofiscal {

TDTM_A_TabNaturezaOperacao::TDTM_A_TabNaturezaOperacao(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabNaturezaOperacao::L15_RegistroNaturezaOperacao(TStringList&) {}

}  // namespace infofiscal
