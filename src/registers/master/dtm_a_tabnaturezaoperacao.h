// Lines 15: the natures of operation (fiscal operation codes), in every run whatever the
// switches.
#pragma once

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

class TDTM_A_TabNaturezaOperacao : public TDTM_A_TabLista {
 public:
  explicit TDTM_A_TabNaturezaOperacao(TDTM_ConexaoDS& conexao);

  // Provider "DspNaturezaOperacao", no parameters.
  ClientDataSet& TabNaturezaOperacao = Lista;

  void ConsListaFornecedor() { ConsLista(); }
  void L15_RegistroNaturezaOperacao(TStringList& AArquivo) { GerarLista(AArquivo); }
};

}  // namespace infofiscal
