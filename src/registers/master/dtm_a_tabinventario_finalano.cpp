#include "registers/master/dtm_a_tabinventario_finalano.h"

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

namespace {

constexpr FieldDef kInventario[] = {
    {"CDTIPOINVENTARIO", FieldClass::Integer, 0},
    {"CDINVENTARIOEMP", FieldClass::Integer, 0},
    {"DATAINVENTARIO", FieldClass::TimeStamp, 0},
    {"TOTALINVENTARIO", FieldClass::Float, 0},
    {"PDE", FieldClass::Smallint, 0},
};
constexpr FieldDef kProduto[] = {
    {"CDINVENTARIO", FieldClass::Integer, 0}, {"CDTIPOINVENTARIO", FieldClass::Integer, 0},
    {"CDPRODUTO", FieldClass::Integer, 0},    {"QUANTIDADE", FieldClass::Float, 0},
    {"PRECOFABRICA", FieldClass::Float, 0},   {"PRECOTOTAL", FieldClass::Float, 0},
    {"SIGLAUNIDADE", FieldClass::String, 10},
};
constexpr TabelaInventario kTabela{.chave = "REGINVENTARIOFINALANO",
                                   .provider_inventario = "DspInventario_FA",
                                   .campos_inventario = kInventario,
                                   .provider_produto = "DspInventarioProduto_FA",
                                   .campos_produto = kProduto,
                                   .chave_produto = 3,  // CDINVENTARIO, CDTIPOINVENTARIO, CDPRODUTO
                                   .linha_inventario = L18::kTipo,
                                   .prefixo_inventario = "Erro ano Gerar Registro Linha 18 : ",
                                   .linha_produto = L19::kTipo,
                                   .prefixo_produto = "Erro ano Gerar Registro Linha 19 : "};

}  // namespace

TDTM_A_TabInventario_FinalAno::TDTM_A_TabInventario_FinalAno(TDTM_ConexaoDS& conexao)
    : TDTM_A_TabInventario(conexao, kTabela) {}

}  // namespace infofiscal
