#include "registers/outgoing/dtm_a_nf_devcompraproduto.h"

namespace infofiscal {

namespace {
constexpr TTipoNFSaida kTipo{9, "REGDEVCOMPRAPRODUTO", /*fornecedor=*/true, /*faixa=*/false};
}  // namespace

TDTM_A_NF_DevCompraProduto::TDTM_A_NF_DevCompraProduto(TDTM_ConexaoDS& conexao) : TDTM_A_NF_Itens(conexao, kTipo) {}

void TDTM_A_NF_DevCompraProduto::L04_L05_L06_RegistroNF_DevCompraProduto(TStringList& AArquivo) {
  RegistroNF(AArquivo);
}

}  // namespace infofiscal
