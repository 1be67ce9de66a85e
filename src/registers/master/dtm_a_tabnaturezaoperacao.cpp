#include "registers/master/dtm_a_tabnaturezaoperacao.h"

namespace infofiscal {

namespace {

constexpr FieldDef kCampos[] = {
    {"CDTABCFOP", FieldClass::Smallint, 0},
    {"DESCCFOP", FieldClass::String, 50},
};
constexpr Column kColunas[] = {
    {1, Render::Text, "CDTABCFOP"},
    {2, Render::Text, "DESCCFOP"},
};
constexpr TabelaLista kTabela{.dataset = "TabNaturezaOperacao",
                              .provider = "DspNaturezaOperacao",
                              .campos = kCampos,
                              .tipo = 15,
                              .colunas = kColunas,
                              .trailer = 2,
                              .prefixo = "Erro ano Gerar Registro Linha 15 : "};

}  // namespace

TDTM_A_TabNaturezaOperacao::TDTM_A_TabNaturezaOperacao(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela) {}

}  // namespace infofiscal
