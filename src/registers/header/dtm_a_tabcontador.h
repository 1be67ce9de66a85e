// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "host/framework.h"

namespace infofiscal {

class TDTM_A_TabContador : public TDTM_FPadraoConsulta {
 public:
  explicit TDTM_A_TabContador(TDTM_ConexaoDS& conexao);
  void InformacaoContador(TStringList& AArquivo);
};

}  // namespace infofiscal
