#include "registers/outgoing/dtm_a_nf_devvendaproduto.h"

namespace infofiscal {

TDTM_A_NF_DevVendaProduto::TDTM_A_NF_DevVendaProduto(TDTM_ConexaoDS& conexao) : TDTM_A_NF(conexao) {
  FTipoProcesso = 12;
}

void TDTM_A_NF_DevVendaProduto::L04_L05_L06_RegistroNF_DevVendaProduto(TStringList&) {}

}  // namespace infofiscal
