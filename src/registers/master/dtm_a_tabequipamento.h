// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "export/dtm_a_padrao.h"

namespace infofiscal {

class TDTM_A_TabEquipamento : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_TabEquipamento(TDTM_ConexaoDS& conexao);
  void L12_RegistroEquipamento(TStringList& AArquivo);
};

}  // namespace infofiscal
