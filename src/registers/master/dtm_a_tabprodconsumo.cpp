#include "registers/master/dtm_a_tabprodconsumo.h"

namespace infofiscal {

TDTM_A_TabProdConsumo::TDTM_A_TabProdConsumo(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabProdConsumo::L12_RegistroProdConsumo(TStringList&) {}

}  // namespace infofiscal
