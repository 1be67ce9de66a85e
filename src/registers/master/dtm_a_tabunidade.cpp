#include "registers/master/dtm_a_tabunidade.h"

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

namespace {

constexpr FieldDef kCampos[] = {
    {"CDUNIDADE", FieldClass::Smallint, 0},
    {"SIGLAUNIDADE", FieldClass::String, 10},
    {"DESCUNIDADE", FieldClass::String, 20},
};
constexpr Column kColunas[] = {
    {L13::Codigo, Render::Text, "CDUNIDADE"},
    {L13::Sigla, Render::Text, "SIGLAUNIDADE"},
    {L13::Descricao, Render::Text, "DESCUNIDADE"},
};
constexpr TabelaLista kTabela{.dataset = "TabUnidade",
                              .provider = "DspListaUnidade",
                              .campos = kCampos,
                              .tipo = L13::kTipo,
                              .colunas = kColunas,
                              .trailer = L13::kTrailer,
                              .prefixo = "Erro ano Gerar Registro Linha 13 : "};

}  // namespace

TDTM_A_TabUnidade::TDTM_A_TabUnidade(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela) {}

}  // namespace infofiscal
