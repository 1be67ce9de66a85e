// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "export/dtm_a_padrao.h"

namespace infofiscal {

class TDTM_A_NF_NumInutilizado : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_NF_NumInutilizado(TDTM_ConexaoDS& conexao);
  void L04_RegistroNF_NumInutilizado(TStringList& AArquivo);
};

}  // namespace infofiscal
