#include "registers/incoming/dtm_a_compra.h"

namespace infofiscal {

TDTM_A_Compra::TDTM_A_Compra(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

}  // namespace infofiscal
