#include "registers/linha_item.h"

namespace infofiscal {

std::vector<Column> colunas_item_06(const CamposItem06& campos) {
  // In every tax group the base comes before the rate, unlike the datasets' declared order.
  return {
      {5, Render::Text, campos.descricao},
      {6, Render::Text, campos.unidade},
      {7, Render::Amount, "QUANTIDADE"},
      {8, Render::Amount, "PRECOTOTAL"},
      {9, Render::Amount, "DESCONTO"},
      {10, Render::Amount, "FRETE"},
      {11, Render::Amount, "SEGURO"},
      {12, Render::Amount, campos.outras_despesas},
      {13, Render::Text, "NUMNCM"},
      {14, Render::Text, "CODBARRA"},
      {15, Render::Constant, campos.tipo_item},
      {16, Render::Text, "ICMS_CST"},
      {17, Render::Text, "ICMS_CFOP"},
      {18, Render::Amount, "ICMS_BASECALCULO"},
      {19, Render::Amount, "ICMS_ALIQUOTA"},
      {20, Render::Amount, "ICMS_VALOR"},
      {21, Render::Amount, "ICMS_ST_BASECALCULO"},
      {22, Render::Amount, "ICMS_ST_VALOR"},
      {23, Render::Text, "IPI_CST"},
      {24, Render::Text, "IPI_ENQUADRAMENTO"},
      {25, Render::Amount, "IPI_BASECALCULO"},
      {26, Render::Amount, "IPI_VALOR"},
      {27, Render::Text, "PIS_CST"},
      {28, Render::Amount, "PIS_BASECALCULO"},
      {29, Render::Amount, "PIS_ALIQUOTA"},
      {30, Render::Amount, "PIS_QUANTUNIDADE"},
      {31, Render::Amount, "PIS_VALORUNIDADE"},
      {32, Render::Amount, "PIS_VALOR"},
      {33, Render::Text, "COFINS_CST"},
      {34, Render::Amount, "COFINS_BASECALCULO"},
      {35, Render::Amount, "COFINS_ALIQUOTA"},
      {36, Render::Amount, "COFINS_QUANTUNIDADE"},
      {37, Render::Amount, "COFINS_VALORUNIDADE"},
      {38, Render::Amount, "COFINS_VALOR"},
  };
}

}  // namespace infofiscal
