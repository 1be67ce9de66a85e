#include "registers/master/dtm_a_tabequipamento.h"

#include "registers/master/familias.h"

namespace infofiscal {

namespace {

constexpr std::string_view kChaves[] = {"REGCOMPRAEQUIPAMENTO"};
const TabelaListaPropria kTabela = TabelaCatalogo({.dataset = "TabEquipamento",
                                                   .provider = "DspListaEquipamento",
                                                   .codigo = "CDEQUIPAMENTO",
                                                   .descricao = "DESCEQUIPAMENTO",
                                                   .tamanho_descricao = 80,
                                                   .tipo = "1",
                                                   .chaves = kChaves});

}  // namespace

TDTM_A_TabEquipamento::TDTM_A_TabEquipamento(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela.Lista()) {}

}  // namespace infofiscal
