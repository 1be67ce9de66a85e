// Line 03: the company's accountant.
#pragma once

#include "registers/register_line.h"
#include "base/string_list.h"
#include "host/framework.h"

namespace infofiscal {

class TDTM_A_TabContador : public TDTM_FPadraoConsulta {
 public:
  explicit TDTM_A_TabContador(TDTM_ConexaoDS& conexao);

  // Provider "DspContador", no parameters: the server decides which accountant it returns.
  ClientDataSet TabContador;

  // Reopens TabContador. A failure passes unchanged.
  void ConsultarRegistro();
  // Appends exactly one line 03, from the first row (all columns empty when there is none).
  void InformacaoContador(TStringList& AArquivo);

 private:
  TLinhaRegistro oLinha;
};

}  // namespace infofiscal
