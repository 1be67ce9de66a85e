#include "registers/master/dtm_a_tabprodconsumo.h"

#include "registers/master/familias.h"

namespace infofiscal {

namespace {

const TabelaListaPropria kTabela = TabelaCatalogo({.dataset = "TabProdConsumo",
                                                   .provider = "DspListaProdConsumo",
                                                   .codigo = "CDPRODCONSUMO",
                                                   .descricao = "DESCPRODUTO",
                                                   .tamanho_descricao = 80,
                                                   .tipo = "3"});

}  // namespace

TDTM_A_TabProdConsumo::TDTM_A_TabProdConsumo(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
