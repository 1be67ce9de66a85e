// Purchases of consumption products: lines 04, 05 and 06 of every note of the kind.
#pragma once

#include "base/string_list.h"
#include "registers/incoming/dtm_a_compra.h"

namespace infofiscal {

class TDTM_A_CompraProdConsumo : public TDTM_A_Compra {
 public:
  explicit TDTM_A_CompraProdConsumo(TDTM_ConexaoDS& conexao);

  // Provider "DspCompraProdConsumo", parameter ATR_CODCOMPRA: the items of one purchase.
  ClientDataSet TabCompraProdConsumo;

  // Writes the notes of the kind when REGCOMPRAPRODCONSUMO is "S"; ACodCompra, when not 0,
  // keeps only the note whose note number it is.
  void L04_L05_L06_RegistroCompraProdConsumo(TStringList& AArquivo, int ACodCompra);
  // Reopens TabCompraProdConsumo on one purchase.
  void ConsRegistro_CompraProdConsumo(int ACodCompra);
  // One line 06 per item of one purchase.
  void L06_CompraProdConsumo(int ANumRegistro, int ACodCompra, TStringList& AArquivo);

 private:
  void ItensCompra(int ANumRegistro, int ACodCompra, TStringList& AArquivo) override {
    L06_CompraProdConsumo(ANumRegistro, ACodCompra, AArquivo);
  }

  ColunasItens oColunas;
};

}  // namespace infofiscal
