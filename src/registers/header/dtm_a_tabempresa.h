// Line 02: the company the fiscal file is produced for (identity, tax numbers, address).
#pragma once

#include "registers/register_line.h"
#include "base/string_list.h"
#include "host/framework.h"

namespace infofiscal {

class TDTM_A_TabEmpresa : public TDTM_FPadraoConsulta {
 public:
  explicit TDTM_A_TabEmpresa(TDTM_ConexaoDS& conexao);

  // Provider "DspEmpresa", parameter ATR_CODEMPRESA.
  ClientDataSet TabEmpresa;

  // Reopens TabEmpresa for the company the user is working in. A failure passes unchanged.
  void ConsultarRegistro();
  // Appends exactly one line 02, from the first row (all columns empty when there is none).
  void L02_InformacaoEmpresa(TStringList& AArquivo);

 private:
  TLinhaRegistro oLinha;
};

}  // namespace infofiscal
