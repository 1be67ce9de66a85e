#include "registers/outgoing/dtm_a_nf.h"

namespace infofiscal {

TDTM_A_NF::TDTM_A_NF(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

}  // namespace infofiscal
