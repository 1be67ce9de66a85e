#include "registers/master/dtm_a_tabcliente.h"

#include "registers/master/familias.h"

namespace infofiscal {

namespace {

const TabelaListaPropria kTabela =
    TabelaParte({.dataset = "TabCliente", .provider = "DspListaCliente", .codigo = "CDCLIENTE", .tipo = "1"});

}  // namespace

TDTM_A_TabCliente::TDTM_A_TabCliente(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
