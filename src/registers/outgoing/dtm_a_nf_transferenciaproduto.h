// Product transfers to clients (kind 11).
#pragma once

#include "base/string_list.h"
#include "registers/outgoing/dtm_a_nf_itens.h"

namespace infofiscal {

class TDTM_A_NF_TransferenciaProduto : public TDTM_A_NF_Itens {
 public:
  explicit TDTM_A_NF_TransferenciaProduto(TDTM_ConexaoDS& conexao);
  // Lines 04, 05 and 06 of every note of the kind, when REGTRANSFPRODUTOCLIENTE is "S".
  void L04_L05_L06_RegistroNF_TransfProduto(TStringList& AArquivo);
};

}  // namespace infofiscal
