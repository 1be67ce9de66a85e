#include "registers/master/dtm_a_tabprodconsumo.h"

#include "registers/master/tabela_catalogo.h"

namespace infofiscal {

namespace {

const TabelaCatalogo kTabela({.dataset = "TabProdConsumo",
                                 .provider = "DspListaProdConsumo",
                                 .codigo = "CDPRODCONSUMO",
                                 .descricao = "DESCPRODUTO",
                                 .tamanho_descricao = 80,
                                 .tipo = "3"});

}  // namespace

TDTM_A_TabProdConsumo::TDTM_A_TabProdConsumo(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
