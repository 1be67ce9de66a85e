#include "registers/master/dtm_a_tabunidade.h"

namespace infofiscal {

namespace {

constexpr FieldDef kCampos[] = {
    {"CDUNIDADE", FieldClass::Smallint, 0},
    {"SIGLAUNIDADE", FieldClass::String, 10},
    {"DESCUNIDADE", FieldClass::String, 20},
};
constexpr Column kColunas[] = {
    {1, Render::Text, "CDUNIDADE"},
    {2, Render::Text, "SIGLAUNIDADE"},
    {3, Render::Text, "DESCUNIDADE"},
};
constexpr TabelaLista kTabela{.dataset = "TabUnidade",
                              .provider = "DspListaUnidade",
                              .campos = kCampos,
                              .tipo = 13,
                              .colunas = kColunas,
                              .trailer = 3,
                              .prefixo = "Erro ano Gerar Registro Linha 13 : "};

}  // namespace

TDTM_A_TabUnidade::TDTM_A_TabUnidade(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela) {}

}  // namespace infofiscal
