// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "host/framework.h"

namespace infofiscal {

class TDTM_A_TabEmpresa : public TDTM_FPadraoConsulta {
 public:
  explicit TDTM_A_TabEmpresa(TDTM_ConexaoDS& conexao);
  void L02_InformacaoEmpresa(TStringList& AArquivo);
};

}  // namespace infofiscal
