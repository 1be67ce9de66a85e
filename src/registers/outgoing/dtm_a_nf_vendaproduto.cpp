#include "registers/outgoing/dtm_a_nf_vendaproduto.h"

namespace infofiscal {

namespace {
constexpr TTipoNFSaida kTipo{10, "REGVENDAPRODUTO", /*fornecedor=*/false, /*faixa=*/true};
}  // namespace

TDTM_A_NF_VendaProduto::TDTM_A_NF_VendaProduto(TDTM_ConexaoDS& conexao) : TDTM_A_NF_Itens(conexao, kTipo) {}

void TDTM_A_NF_VendaProduto::L04_L05_L06_RegistroNF_VendaProduto(TStringList& AArquivo) { RegistroNF(AArquivo); }

}  // namespace infofiscal
