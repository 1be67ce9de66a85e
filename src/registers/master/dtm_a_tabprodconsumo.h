// Lines 12 of kind 3: the consumption products, in every run whatever the switches.
#pragma once

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

class TDTM_A_TabProdConsumo : public TDTM_A_TabLista {
 public:
  explicit TDTM_A_TabProdConsumo(TDTM_ConexaoDS& conexao);

  // Provider "DspListaProdConsumo", no parameters.
  ClientDataSet& TabProdConsumo = Lista;

  void ConsRegistroEquipamento() { ConsLista(); }
  void L12_RegistroProdConsumo(TStringList& AArquivo) { GerarLista(AArquivo); }
};

}  // namespace infofiscal
