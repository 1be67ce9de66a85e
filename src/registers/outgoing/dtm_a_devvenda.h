// Sales-return notes in the short form: line 04 with 21 columns and line 05 with 5, header and
// party fetched by data request. Offered to a host; the export run does not use it (its
// sales returns come from TDTM_A_NF_DevVendaProduto). A caller loads the list and, per note,
// calls Reg_04_InfoNotaFiscal and Reg_05_InstituicaoCliente itself.
#pragma once

#include "registers/dtm_a_padrao.h"
#include "registers/register_line.h"
#include "base/string_list.h"

namespace infofiscal {

class TDTM_A_DevVenda : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_DevVenda(TDTM_ConexaoDS& conexao);

  // Provider "DspListaNotaFiscal", loaded with kind code 0.
  ClientDataSet TabListaNotaFiscal;
  // Providers "DspNF_Venda" and "DspNF_Cliente", loaded by data request [type code, note code].
  ClientDataSet TabNF_Venda;
  ClientDataSet TabNF_Cliente;

  void ConsListaNotaFiscal();
  void ConsRegistro_NotaFiscal(int ACodTipoNotaFiscal, int ACodNotaFiscal);
  void ConsRegistro_InstituicaoCliente(int ACodTipoNotaFiscal, int ACodNotaFiscal);

  // Line 04; only an issued note (PDE 2) is accepted, any other fails with
  // "Nota Fiscal de Saída (DevVenda) : <note>" under the line's prefix.
  void Reg_04_InfoNotaFiscal(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo);
  // Line 05: CNPJ or CPF, state registration, state.
  void Reg_05_InstituicaoCliente(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo);

 private:
  TLinhaRegistro oLinha;
  ColumnTable FColunas04;  // C03 to C20 of line 04
  ColumnTable FColunas05;  // C03 to C05 of line 05
  int FPDE, FCodNota;      // field indexes in TabNF_Venda
};

}  // namespace infofiscal
