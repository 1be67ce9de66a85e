// Returns of product sales (kind 12).
#pragma once

#include "base/string_list.h"
#include "registers/outgoing/dtm_a_nf_itens.h"

namespace infofiscal {

class TDTM_A_NF_DevVendaProduto : public TDTM_A_NF_Itens {
 public:
  explicit TDTM_A_NF_DevVendaProduto(TDTM_ConexaoDS& conexao);
  // Lines 04, 05 and 06 of every note of the kind, when REGDEVVENDAPRODUTO is "S".
  void L04_L05_L06_RegistroNF_DevVendaProduto(TStringList& AArquivo);
};

}  // namespace infofiscal
