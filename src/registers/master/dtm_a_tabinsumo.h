// Inputs: read, counted and reported row by row, but no input line is added to the file (kind
// 3 belongs to the consumption products, and input items are not listed).
#pragma once

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

class TDTM_A_TabInsumo : public TDTM_A_TabLista {
 public:
  explicit TDTM_A_TabInsumo(TDTM_ConexaoDS& conexao);

  // Provider "DspListaInsumo", no parameters.
  ClientDataSet& TabInsumo = Lista;

  void ConsRegistroInsumo() { ConsLista(); }
  void L12_RegistroInsumo_(TStringList& AArquivo) { GerarLista(AArquivo); }
};

}  // namespace infofiscal
