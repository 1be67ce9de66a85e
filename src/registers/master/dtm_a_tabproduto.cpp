#include "registers/master/dtm_a_tabproduto.h"

#include "registers/master/familias.h"

namespace infofiscal {

namespace {

// Read in this order; the first "S" decides.
constexpr std::string_view kChaves[] = {
    "REGCOMPRAPRODUTO",        "REGVENDAPRODUTO",     "REGINVENTARIOFINALANO", "REGINVENTARIOFINALMES",
    "REGTRANSFPRODUTOCLIENTE", "REGDEVCOMPRAPRODUTO", "REGDEVVENDAPRODUTO",
};
const TabelaListaPropria kTabela = TabelaCatalogo({.dataset = "TabProduto",
                                                   .provider = "DspListaProduto",
                                                   .codigo = "CDPRODUTO",
                                                   .descricao = "DESCPRODUTO",
                                                   .tamanho_descricao = 100,
                                                   .tipo = "2",
                                                   .chaves = kChaves,
                                                   .cest = true});

}  // namespace

TDTM_A_TabProduto::TDTM_A_TabProduto(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
