// Purchases of equipment: lines 04, 05 and 06 of every note of the kind.
#pragma once

#include "base/string_list.h"
#include "registers/incoming/dtm_a_compra.h"

namespace infofiscal {

class TDTM_A_CompraEquipamento : public TDTM_A_Compra {
 public:
  explicit TDTM_A_CompraEquipamento(TDTM_ConexaoDS& conexao);

  // Provider "DspCompraEquipamento", parameter ATR_CODCOMPRA: the items of one purchase.
  ClientDataSet TabCompraEquipamento;

  // Writes the notes of the kind when REGCOMPRAEQUIPAMENTO is "S"; ACodNFeCompra, when not 0,
  // keeps only the note whose purchase code it is.
  void L04_L05_L06_RegistroCompraEquipamento(TStringList& AArquivo, int ACodNFeCompra);
  // Reopens TabCompraEquipamento on one purchase.
  void ConsRegistro_CompraEquipamento(int ACodCompra);
  // One line 06 per item of one purchase.
  void L06_CompraEquipamento(int ANumRegistro, int ACodCompra, TStringList& AArquivo);

 private:
  void ItensCompra(int ANumRegistro, int ACodCompra, TStringList& AArquivo) override {
    L06_CompraEquipamento(ANumRegistro, ACodCompra, AArquivo);
  }

  ColunasItens oColunas;
};

}  // namespace infofiscal
