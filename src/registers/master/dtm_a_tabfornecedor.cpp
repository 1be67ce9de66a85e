#include "registers/master/dtm_a_tabfornecedor.h"

#include "registers/master/familias.h"

namespace infofiscal {

namespace {

const TabelaListaPropria kTabela =
    TabelaParte({.dataset = "TabFornecedor", .provider = "DspListaFornecedor", .codigo = "CDFORNECEDOR", .tipo = "2"});

}  // namespace

TDTM_A_TabFornecedor::TDTM_A_TabFornecedor(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
