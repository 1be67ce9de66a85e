#include "registers/outgoing/dtm_a_nf_devcompraproduto.h"

namespace infofiscal {

TDTM_A_NF_DevCompraProduto::TDTM_A_NF_DevCompraProduto(TDTM_ConexaoDS& conexao) : TDTM_A_NF(conexao) {
  FTipoProcesso = 9;
}

void TDTM_A_NF_DevCompraProduto::L04_L05_L06_RegistroNF_DevCompraProduto(TStringList&) {}

}  // namespace infofiscal
