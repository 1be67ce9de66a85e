#include "registers/master/dtm_a_tabfornecedor.h"

namespace infofiscal {

TDTM_A_TabFornecedor::TDTM_A_TabFornecedor(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {}

void TDTM_A_TabFornecedor::L14_RegistroFornecedor(TStringList&) {}

}  // namespace infofiscal
