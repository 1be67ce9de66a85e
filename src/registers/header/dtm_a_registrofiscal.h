// Line 01: the fiscal register of the run (kind of file, period, options).
#pragma once

#include <cstdint>

#include "registers/register_line.h"
#include "host/framework.h"

namespace infofiscal {

class TDTM_A_RegistroFiscal : public TDTM_FPadraoConsulta {
 public:
  explicit TDTM_A_RegistroFiscal(TDTM_ConexaoDS& conexao);

  // Provider "DspRegistroInfoFiscal", parameter ATR_REGISTROFISCAL.
  ClientDataSet TabRegistroInfoFiscal;

  void CodTipoRegistro(TRegistroFiscal value) { FCodTipoRegistro = value; }
  void CodRegistroFiscal(std::int32_t value) { FCodRegistroFiscal = value; }

  // Reopens TabRegistroInfoFiscal for FCodRegistroFiscal.
  void ConsultarRegistro();
  // Appends exactly one line 01.
  void L01_RegistroFiscal(TStringList& AArquivo);

 private:
  TRegistroFiscal FCodTipoRegistro = 0;
  std::int32_t FCodRegistroFiscal = 0;
  TLinhaRegistro oLinha;
};

}  // namespace infofiscal
