// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "registers/outgoing/dtm_a_nf.h"

namespace infofiscal {

class TDTM_A_NF_TransferenciaProduto : public TDTM_A_NF {
 public:
  explicit TDTM_A_NF_TransferenciaProduto(TDTM_ConexaoDS& conexao);
  void L04_L05_L06_RegistroNF_TransfProduto(TStringList& AArquivo);
};

}  // namespace infofiscal
