#include "registers/outgoing/dtm_a_nf_transferenciaproduto.h"

namespace infofiscal {

namespace {
constexpr TTipoNFSaida kTipo{11, "REGTRANSFPRODUTOCLIENTE", /*fornecedor=*/false, /*faixa=*/false};
}  // namespace

TDTM_A_NF_TransferenciaProduto::TDTM_A_NF_TransferenciaProduto(TDTM_ConexaoDS& conexao)
    : TDTM_A_NF_Itens(conexao, kTipo) {}

void TDTM_A_NF_TransferenciaProduto::L04_L05_L06_RegistroNF_TransfProduto(TStringList& AArquivo) {
  RegistroNF(AArquivo);
}

}  // namespace infofiscal
