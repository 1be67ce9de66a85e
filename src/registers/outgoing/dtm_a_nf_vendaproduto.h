// Product sales (kind 10), the one kind that honours the row range of the fiscal register.
#pragma once

#include "base/string_list.h"
#include "registers/outgoing/dtm_a_nf_itens.h"

namespace infofiscal {

class TDTM_A_NF_VendaProduto : public TDTM_A_NF_Itens {
 public:
  explicit TDTM_A_NF_VendaProduto(TDTM_ConexaoDS& conexao);
  // Lines 04, 05 and 06 of every note of the kind, when REGVENDAPRODUTO is "S".
  void L04_L05_L06_RegistroNF_VendaProduto(TStringList& AArquivo);
};

}  // namespace infofiscal
