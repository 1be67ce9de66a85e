// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "registers/outgoing/dtm_a_nf.h"

namespace infofiscal {

class TDTM_A_NF_DevCompraProduto : public TDTM_A_NF {
 public:
  explicit TDTM_A_NF_DevCompraProduto(TDTM_ConexaoDS& conexao);
  void L04_L05_L06_RegistroNF_DevCompraProduto(TStringList& AArquivo);
};

}  // namespace infofiscal
