#include "registers/master/dtm_a_tabproduto.h"

namespace infofiscal {

TDTM_A_TabProduto::TDTM_A_TabProduto(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabProduto::L12_RegistroProduto(TStringList&) {}

}  // namespace infofiscal
