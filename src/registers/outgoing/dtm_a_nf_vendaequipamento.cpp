#include "registers/outgoing/dtm_a_nf_vendaequipamento.h"

namespace infofiscal {

namespace {
constexpr TTipoNFSaida kTipo{17, "REGVENDAEQUIPAMENTO", /*fornecedor=*/false, /*faixa=*/false};
}  // namespace

TDTM_A_NF_VendaEquipamento::TDTM_A_NF_VendaEquipamento(TDTM_ConexaoDS& conexao) : TDTM_A_NF_Itens(conexao, kTipo) {}

void TDTM_A_NF_VendaEquipamento::L04_L05_L06_RegistroNF_VendaEquipamento(TStringList& AArquivo, int ACodNotaFiscal) {
  RegistroNF(AArquivo, ACodNotaFiscal);
}

}  // namespace infofiscal
