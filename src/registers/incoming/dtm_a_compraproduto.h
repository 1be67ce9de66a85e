// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "registers/incoming/dtm_a_compra.h"

namespace infofiscal {

class TDTM_A_CompraProduto : public TDTM_A_Compra {
 public:
  explicit TDTM_A_CompraProduto(TDTM_ConexaoDS& conexao);
  void L04_L05_L06_RegistroCompraProduto(TStringList& AArquivo, int ACodNFeCompra);
};

}  // namespace infofiscal
