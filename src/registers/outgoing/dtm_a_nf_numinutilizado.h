// Lines 04 of the voided note numbers: one per number, as a note of kind 21 with model 55,
// zero amounts and situation 5; no line 05 or 06 follows.
#pragma once

#include <cstdint>

#include "registers/dtm_a_padrao.h"
#include "registers/register_line.h"
#include "base/string_list.h"

namespace infofiscal {

class TDTM_A_NF_NumInutilizado : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_NF_NumInutilizado(TDTM_ConexaoDS& conexao);

  // Provider "DspListaNFeInutilizado", loaded by a data request [kind of file, register].
  ClientDataSet TabNFeInutilizada;

  // The driver, in every run (no switch): one line 04 per voided number, in packet order.
  // The fiscal register, the list request and the progress callback stand outside the error
  // rule; only the writing of each line is under it.
  void L04_RegistroNF_NumInutilizado(TStringList& AArquivo);
  // The line 04 of the current voided number, `ANumRegistro` in C02.
  void L04_NF_Inutilizado(std::int32_t ANumRegistro, TStringList& AArquivo);

 private:
  TLinhaRegistro oLinha;
};

}  // namespace infofiscal
