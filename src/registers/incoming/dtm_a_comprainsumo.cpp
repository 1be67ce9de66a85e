#include "registers/incoming/dtm_a_comprainsumo.h"

namespace infofiscal {

TDTM_A_CompraInsumo::TDTM_A_CompraInsumo(TDTM_ConexaoDS& conexao) : TDTM_A_Compra(conexao) {}

void TDTM_A_CompraInsumo::L04_L05_L06_RegistroCompraInsumo(TStringList&) {
  ConsRegistroFiscal();
  if (!SwitchOn("REGCOMPRAINSUMO")) return;
  ConsListaCompra();
  const int count = TabListaCompra.RecordCount();
  TabListaCompra.Next();  // the first row is passed over before counting
  for (int linha = 1; !TabListaCompra.Eof(); ++linha, TabListaCompra.Next()) FProcProgresso(linha, count);
}

}  // namespace infofiscal
