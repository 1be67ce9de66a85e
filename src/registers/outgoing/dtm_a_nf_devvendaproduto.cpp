#include "registers/outgoing/dtm_a_nf_devvendaproduto.h"

namespace infofiscal {

namespace {
constexpr TTipoNFSaida kTipo{12, "REGDEVVENDAPRODUTO", /*fornecedor=*/false, /*faixa=*/false};
}  // namespace

TDTM_A_NF_DevVendaProduto::TDTM_A_NF_DevVendaProduto(TDTM_ConexaoDS& conexao) : TDTM_A_NF_Itens(conexao, kTipo) {}

void TDTM_A_NF_DevVendaProduto::L04_L05_L06_RegistroNF_DevVendaProduto(TStringList& AArquivo) { RegistroNF(AArquivo); }

}  // namespace infofiscal
