// Not yet written: the generator writes nothing.
#pragma once

#include "export/string_list.h"
#include "export/dtm_a_padrao.h"

namespace infofiscal {

class TDTM_A_Compra : public TDTM_A_Padrao {
 public:
  explicit TDTM_A_Compra(TDTM_ConexaoDS& conexao);
};

}  // namespace infofiscal
