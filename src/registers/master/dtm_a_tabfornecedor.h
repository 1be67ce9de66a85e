// Lines 14 of kind 2: the suppliers, in every run whatever the switches.
#pragma once

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

class TDTM_A_TabFornecedor : public TDTM_A_TabLista {
 public:
  explicit TDTM_A_TabFornecedor(TDTM_ConexaoDS& conexao);

  // Provider "DspListaFornecedor", no parameters.
  ClientDataSet& TabFornecedor = Lista;

  void ConsListaFornecedor() { ConsLista(); }
  void L14_RegistroFornecedor(TStringList& AArquivo) { GerarLista(AArquivo); }
};

}  // namespace infofiscal
