#include "registers/outgoing/dtm_a_nf_vendaproduto.h"

namespace infofiscal {

TDTM_A_NF_VendaProduto::TDTM_A_NF_VendaProduto(TDTM_ConexaoDS& conexao) : TDTM_A_NF(conexao) {
  FTipoProcesso = 10;
}

void TDTM_A_NF_VendaProduto::L04_L05_L06_RegistroNF_VendaProduto(TStringList&) {}

}  // namespace infofiscal
