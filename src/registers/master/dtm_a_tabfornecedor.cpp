#include "registers/master/dtm_a_tabfornecedor.h"

#include "registers/master/tabela_parte.h"

namespace infofiscal {

namespace {

const TabelaParte kTabela({.dataset = "TabFornecedor", .provider = "DspListaFornecedor", .codigo = "CDFORNECEDOR", .tipo = "2"});

}  // namespace

TDTM_A_TabFornecedor::TDTM_A_TabFornecedor(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
