// What the five outgoing-note kinds have in common: the item dataset of a note, the item
// line 06 and the driver that writes lines 04, 05 and 06 note by note. A kind is one row of
// differences (TTipoNFSaida).
#pragma once

#include <cstdint>
#include <string_view>

#include "registers/outgoing/dtm_a_nf.h"

namespace infofiscal {

// How one kind of outgoing note differs from the others.
struct TTipoNFSaida {
  std::uint8_t tipo_processo;  // FTipoProcesso, sent with the list request and written in C01
  std::string_view chave;      // switch field of TabRegistroFiscal that turns the kind on
  bool fornecedor;             // the party is a supplier: line 05 with role 2
  bool faixa;                  // honours the row range TIPOEXPORTACAO / _INICIO / _FINAL
};

class TDTM_A_NF_Itens : public TDTM_A_NF {
 public:
  // Provider "DspNF_Produto", parameters ATR_CODTIPONOTAFISCAL, ATR_CODNOTAFISCAL.
  ClientDataSet TabNF_Produto;

  void ConsRegistro_Produto(int ACodTipoNotaFiscal, int ACodNotaFiscal);
  // One line 06 per item row of the note, C04 counting the items from 1. A failure after the
  // open gets the prefix "Erro ano Gerar Registro Linha 06 : "; earlier items stay written.
  void L06_Produto(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo);

 protected:
  TDTM_A_NF_Itens(TDTM_ConexaoDS& conexao, const TTipoNFSaida& tipo);

  // The kind's driver: when the switch is "S", loads the note list and, row by row, counts the
  // row, reports (row, count) and writes lines 04, 05 and 06 of the selected notes. With
  // ACodNotaFiscal not 0 a row of another note is passed over without a report; a row outside
  // the range (kinds with `faixa`) is reported but not written.
  void RegistroNF(TStringList& AArquivo, int ACodNotaFiscal = 0);

 private:
  struct Faixa {
    std::int64_t de, ate;
  };
  Faixa FaixaDeNotas(int count) const;

  const TTipoNFSaida& FTipo;
  TLinhaRegistro oLinha;   // line 06; the base's builder keeps lines 04 and 05
  ColumnTable FProduto;    // C03 of line 06
  ColumnTable FColunas06;  // C05 to C38 of line 06
};

}  // namespace infofiscal
