#include "registers/outgoing/dtm_a_nf_numinutilizado.h"

namespace infofiscal {

TDTM_A_NF_NumInutilizado::TDTM_A_NF_NumInutilizado(TDTM_ConexaoDS& conexao) : TDTM_A_Padrao(conexao) {
  FTipoProcesso = 21;
}

void TDTM_A_NF_NumInutilizado::L04_RegistroNF_NumInutilizado(TStringList&) {}

}  // namespace infofiscal
