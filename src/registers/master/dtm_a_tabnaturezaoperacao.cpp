#include "registers/master/dtm_a_tabnaturezaoperacao.h"

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

namespace {

constexpr FieldDef kCampos[] = {
    {"CDTABCFOP", FieldClass::Smallint, 0},
    {"DESCCFOP", FieldClass::String, 50},
};
constexpr Column kColunas[] = {
    {L15::Cfop, Render::Text, "CDTABCFOP"},
    {L15::Descricao, Render::Text, "DESCCFOP"},
};
constexpr TabelaLista kTabela{.dataset = "TabNaturezaOperacao",
                              .provider = "DspNaturezaOperacao",
                              .campos = kCampos,
                              .tipo = L15::kTipo,
                              .colunas = kColunas,
                              .trailer = L15::kTrailer,
                              .prefixo = "Erro ano Gerar Registro Linha 15 : "};

}  // namespace

TDTM_A_TabNaturezaOperacao::TDTM_A_TabNaturezaOperacao(TDTM_ConexaoDS& conexao) : TDTM_A_TabLista(conexao, kTabela) {}

}  // namespace infofiscal
