#include "registers/outgoing/dtm_a_nf_transferenciaproduto.h"

namespace infofiscal {

TDTM_A_NF_TransferenciaProduto::TDTM_A_NF_TransferenciaProduto(TDTM_ConexaoDS& conexao) : TDTM_A_NF(conexao) {
  FTipoProcesso = 11;
}

void TDTM_A_NF_TransferenciaProduto::L04_L05_L06_RegistroNF_TransfProduto(TStringList&) {}

}  // namespace infofiscal
