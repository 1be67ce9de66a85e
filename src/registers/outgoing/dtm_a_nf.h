// The base of the outgoing-note modules: the note list of a kind, and the two per-note lines
// that do not depend on the kind, line 04 (the note header) and line 05 (its party).
#pragma once

#include <cstdint>

#include "registers/dtm_a_padrao.h"
#include "registers/register_line.h"
#include "base/string_list.h"

namespace infofiscal {

class TDTM_A_NF : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_NF(TDTM_ConexaoDS& conexao);

  // Provider "DspListaNotaFiscal": one row per note of the fiscal register and kind.
  ClientDataSet TabListaNotaFiscal;
  // Provider "DspNF_Venda", parameters ATR_CODTIPONOTAFISCAL, ATR_CODNOTAFISCAL: the header.
  ClientDataSet TabNF_Venda;
  // Provider "DspNF_Cliente", the same parameters: the customer or supplier of the note.
  ClientDataSet TabNF_Cliente;

  // Loads the note list by data request [kind of file, register, FTipoProcesso].
  void ConsListaNotaFiscal();
  void ConsRegistro_NotaFiscal(int ACodTipoNotaFiscal, int ACodNotaFiscal);
  void ConsRegistro_NF_Cliente(int ACodTipoNotaFiscal, int ACodNotaFiscal);

  // Each opens its dataset (a failure passes unchanged) and appends one line from its first row;
  // any other failure gets the line's prefix and adds nothing.
  // Line 04; a PDE other than 2 or 3 fails with "Erro na Nota Fiscal de Saida: <note>".
  void L04_InfoNotaFiscal(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo);
  // Line 05 with the party role 1 (customer).
  void L05_NF_Cliente(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo);
  // Line 05 with the party role 2 (supplier, for purchase returns).
  void L05_InstituicaoFornecedor(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo);

 private:
  void L05(const ColumnTable& colunas, int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal,
           TStringList& AArquivo);

  TLinhaRegistro oLinha;             // lines 04 and 05
  ColumnTable FColunas04;            // C03 to C23 of line 04
  ColumnTable FColunas05Cliente;     // C03 to C07 of line 05, role 1
  ColumnTable FColunas05Fornecedor;  // C03 to C07 of line 05, role 2
  int FPDE, FCodNota;                // field indexes in TabNF_Venda
};

}  // namespace infofiscal
