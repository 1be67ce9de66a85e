// Purchases of products: lines 04, 05 and 06 of every note of the kind.
#pragma once

#include "base/string_list.h"
#include "registers/incoming/dtm_a_compra.h"

namespace infofiscal {

class TDTM_A_CompraProduto : public TDTM_A_Compra {
 public:
  explicit TDTM_A_CompraProduto(TDTM_ConexaoDS& conexao);

  // Provider "DsCompraProduto", parameter ATR_COMPRA: the items of one purchase.
  ClientDataSet TabCompraProduto;

  // Writes the notes of the kind when REGCOMPRAPRODUTO is "S"; ACodNFeCompra, when not 0,
  // keeps only the note whose note number it is.
  void L04_L05_L06_RegistroCompraProduto(TStringList& AArquivo, int ACodNFeCompra);
  // Reopens TabCompraProduto on one purchase.
  void ConsRegistro_CompraProduto(int ACodCompra);
  // One line 06 per item of one purchase.
  void Reg_06_CompraProduto(int ANumRegistro, int ACodCompra, TStringList& AArquivo);

 private:
  void ItensCompra(int ANumRegistro, int ACodCompra, TStringList& AArquivo) override {
    Reg_06_CompraProduto(ANumRegistro, ACodCompra, AArquivo);
  }

  ColunasItens oColunas;
};

}  // namespace infofiscal
