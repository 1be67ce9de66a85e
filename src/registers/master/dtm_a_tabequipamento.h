// Lines 12 of kind 1: the equipment, when equipment purchases are asked for.
#pragma once

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

class TDTM_A_TabEquipamento : public TDTM_A_TabLista {
 public:
  explicit TDTM_A_TabEquipamento(TDTM_ConexaoDS& conexao);

  // Provider "DspListaEquipamento", no parameters.
  ClientDataSet& TabEquipamento = Lista;

  void ConsRegistroEquipamento() { ConsLista(); }
  void L12_RegistroEquipamento(TStringList& AArquivo) { GerarLista(AArquivo); }
};

}  // namespace infofiscal
