// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "export/dtm_a_padrao.h"

namespace infofiscal {

class TDTM_A_TabFornecedor : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_TabFornecedor(TDTM_ConexaoDS& conexao);
  void L14_RegistroFornecedor(TStringList& AArquivo);
};

}  // namespace infofiscal
