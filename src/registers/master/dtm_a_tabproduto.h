// Lines 12 of kind 2: the products, when any operation on products is asked for; C06 carries
// the CEST.
#pragma once

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

class TDTM_A_TabProduto : public TDTM_A_TabLista {
 public:
  explicit TDTM_A_TabProduto(TDTM_ConexaoDS& conexao);

  // Provider "DspListaProduto", no parameters.
  ClientDataSet& TabProduto = Lista;

  void ConsRegistroProduto() { ConsLista(); }
  void L12_RegistroProduto(TStringList& AArquivo) { GerarLista(AArquivo); }
};

}  // namespace infofiscal
