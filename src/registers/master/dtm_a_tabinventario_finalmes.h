// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "export/dtm_a_padrao.h"

namespace infofiscal {

class TDTM_A_TabInventario_FinalMes : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_TabInventario_FinalMes(TDTM_ConexaoDS& conexao);
  void L16_L17_RegistroInventario(TStringList& AArquivo);
};

}  // namespace infofiscal
