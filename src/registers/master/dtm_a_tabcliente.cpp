#include "registers/master/dtm_a_tabcliente.h"

#include "registers/master/tabela_parte.h"

namespace infofiscal {

namespace {

const TabelaParte kTabela({.dataset = "TabCliente", .provider = "DspListaCliente", .codigo = "CDCLIENTE", .tipo = "1"});

}  // namespace

TDTM_A_TabCliente::TDTM_A_TabCliente(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
