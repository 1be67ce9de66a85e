#include "registers/master/dtm_a_tabinventario_finalmes.h"

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

namespace {

constexpr FieldDef kInventario[] = {
    {"CDINVENTARIOEMP", FieldClass::Integer, 0},
    {"CDTIPOINVENTARIO", FieldClass::Integer, 0},
    {"DATAINVENTARIO", FieldClass::TimeStamp, 0},
    {"TOTALINVENTARIO", FieldClass::Float, 0},
    {"PDE", FieldClass::Smallint, 0},
};
constexpr FieldDef kProduto[] = {
    {"CDINVENTARIO", FieldClass::Integer, 0},     {"CDPRODUTO", FieldClass::Integer, 0},
    {"QUANTIDADE", FieldClass::Float, 0},         {"PRECOFABRICA", FieldClass::Float, 0},
    {"PRECOTOTAL", FieldClass::Float, 0},         {"SIGLAUNIDADE", FieldClass::String, 10},
    {"CDTIPOINVENTARIO", FieldClass::Integer, 0},
};
constexpr TabelaInventario kTabela{.chave = "REGINVENTARIOFINALMES",
                                   .provider_inventario = "DspInventario_FM",
                                   .campos_inventario = kInventario,
                                   .provider_produto = "DspInventarioProduto_FM",
                                   .campos_produto = kProduto,
                                   .chave_produto = 2,  // CDINVENTARIO, CDPRODUTO
                                   .linha_inventario = L16::kTipo,
                                   .prefixo_inventario = "Erro ano Gerar Registro Linha 16 : ",
                                   .linha_produto = L17::kTipo,
                                   .prefixo_produto = "Erro ano Gerar Registro Linha 17 : "};

}  // namespace

TDTM_A_TabInventario_FinalMes::TDTM_A_TabInventario_FinalMes(TDTM_ConexaoDS& conexao)
    : TDTM_A_TabInventario(conexao, kTabela) {}

}  // namespace infofiscal
