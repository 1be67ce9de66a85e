// Lines 16 and 17: the month-end inventory, when REGINVENTARIOFINALMES is "S".
#pragma once

#include "registers/master/dtm_a_tabinventario.h"

namespace infofiscal {

class TDTM_A_TabInventario_FinalMes : public TDTM_A_TabInventario {
 public:
  explicit TDTM_A_TabInventario_FinalMes(TDTM_ConexaoDS& conexao);

  void L16_L17_RegistroInventario(TStringList& AArquivo) { GerarInventario(AArquivo); }
  void L16_RegistroInventario(TStringList& AArquivo) { LinhaInventario(AArquivo); }
  void L17_RegistroProdInventario(TStringList& AArquivo) { LinhasProduto(AArquivo); }
};

}  // namespace infofiscal
