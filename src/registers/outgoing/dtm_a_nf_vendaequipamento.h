// Equipment sales (kind 17). With ACodNotaFiscal not 0 only that note is written, and only its row
// reports progress.
#pragma once

#include "base/string_list.h"
#include "registers/outgoing/dtm_a_nf_itens.h"

namespace infofiscal {

class TDTM_A_NF_VendaEquipamento : public TDTM_A_NF_Itens {
 public:
  explicit TDTM_A_NF_VendaEquipamento(TDTM_ConexaoDS& conexao);
  // Lines 04, 05 and 06 of every note of the kind, when REGVENDAEQUIPAMENTO is "S".
  void L04_L05_L06_RegistroNF_VendaEquipamento(TStringList& AArquivo, int ACodNotaFiscal);
};

}  // namespace infofiscal
