// Returns of product purchases (kind 9): the party is the supplier (line 05 role 2).
#pragma once

#include "base/string_list.h"
#include "registers/outgoing/dtm_a_nf_itens.h"

namespace infofiscal {

class TDTM_A_NF_DevCompraProduto : public TDTM_A_NF_Itens {
 public:
  explicit TDTM_A_NF_DevCompraProduto(TDTM_ConexaoDS& conexao);
  // Lines 04, 05 and 06 of every note of the kind, when REGDEVCOMPRAPRODUTO is "S".
  void L04_L05_L06_RegistroNF_DevCompraProduto(TStringList& AArquivo);
};

}  // namespace infofiscal
