// Lines 18 and 19: the year-end inventory, when REGINVENTARIOFINALANO is "S".
#pragma once

#include "registers/master/dtm_a_tabinventario.h"

namespace infofiscal {

class TDTM_A_TabInventario_FinalAno : public TDTM_A_TabInventario {
 public:
  explicit TDTM_A_TabInventario_FinalAno(TDTM_ConexaoDS& conexao);

  void L18_L19_RegistroInventario(TStringList& AArquivo) { GerarInventario(AArquivo); }
  void L18_RegistroInventario(TStringList& AArquivo) { LinhaInventario(AArquivo); }
  void L19_RegistroProdInventario(TStringList& AArquivo) { LinhasProduto(AArquivo); }
};

}  // namespace infofiscal
