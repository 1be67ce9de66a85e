// Lines 14 of kind 1: the clients, in every run whatever the switches.
#pragma once

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

class TDTM_A_TabCliente : public TDTM_A_TabLista {
 public:
  explicit TDTM_A_TabCliente(TDTM_ConexaoDS& conexao);

  // Provider "DspListaCliente", no parameters.
  ClientDataSet& TabCliente = Lista;

  void ConsListaUnidade() { ConsLista(); }
  void L14_RegistroCliente(TStringList& AArquivo) { GerarLista(AArquivo); }
};

}  // namespace infofiscal
