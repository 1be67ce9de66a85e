#include "registers/master/dtm_a_tabinsumo.h"

#include "registers/master/familias.h"

namespace infofiscal {

namespace {

const TabelaListaPropria kTabela = TabelaCatalogo({.dataset = "TabInsumo",
                                                   .provider = "DspListaInsumo",
                                                   .codigo = "CDINSUMO",
                                                   .descricao = "DESCINSUMO",
                                                   .tamanho_descricao = 80,
                                                   .tipo = "3",
                                                   .adiciona = false});

}  // namespace

TDTM_A_TabInsumo::TDTM_A_TabInsumo(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
