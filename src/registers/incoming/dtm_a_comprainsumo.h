// Purchases of inputs: the list is walked for progress only; no line is written.
#pragma once

#include "base/string_list.h"
#include "registers/incoming/dtm_a_compra.h"

namespace infofiscal {

class TDTM_A_CompraInsumo : public TDTM_A_Compra {
 public:
  explicit TDTM_A_CompraInsumo(TDTM_ConexaoDS& conexao);

  // When REGCOMPRAINSUMO is "S", requests the purchase list (kind 0) and reports progress
  // (1, N) to (N-1, N) for a list of N rows: the first row is passed over. Writes nothing.
  void L04_L05_L06_RegistroCompraInsumo(TStringList& AArquivo);

  int TipoProcesso = 0;  // the module's own code; FTipoProcesso, which the request sends, stays 0
};

}  // namespace infofiscal
