// Lines 13: the units of measure, in every run whatever the switches.
#pragma once

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

class TDTM_A_TabUnidade : public TDTM_A_TabLista {
 public:
  explicit TDTM_A_TabUnidade(TDTM_ConexaoDS& conexao);

  // Provider "DspListaUnidade", no parameters.
  ClientDataSet& TabUnidade = Lista;

  void ConsListaUnidade() { ConsLista(); }
  void L13_RegistroUnidade(TStringList& AArquivo) { GerarLista(AArquivo); }
};

}  // namespace infofiscal
