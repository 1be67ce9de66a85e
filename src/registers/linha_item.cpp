#include "registers/linha_item.h"

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

std::vector<Column> colunas_item_06(const CamposItem06& campos) {
  // In every tax group the base comes before the rate, unlike the datasets' declared order.
  return {
      {L06::Descricao, Render::Text, campos.descricao},
      {L06::Unidade, Render::Text, campos.unidade},
      {L06::Quantidade, Render::Amount, "QUANTIDADE"},
      {L06::PrecoTotal, Render::Amount, "PRECOTOTAL"},
      {L06::Desconto, Render::Amount, "DESCONTO"},
      {L06::Frete, Render::Amount, "FRETE"},
      {L06::Seguro, Render::Amount, "SEGURO"},
      {L06::OutrasDespesas, Render::Amount, campos.outras_despesas},
      {L06::Ncm, Render::Text, "NUMNCM"},
      {L06::CodigoBarras, Render::Text, "CODBARRA"},
      {L06::TipoItem, Render::Constant, campos.tipo_item},
      {L06::IcmsCst, Render::Text, "ICMS_CST"},
      {L06::Cfop, Render::Text, "ICMS_CFOP"},
      {L06::IcmsBase, Render::Amount, "ICMS_BASECALCULO"},
      {L06::IcmsAliquota, Render::Amount, "ICMS_ALIQUOTA"},
      {L06::IcmsValor, Render::Amount, "ICMS_VALOR"},
      {L06::IcmsStBase, Render::Amount, "ICMS_ST_BASECALCULO"},
      {L06::IcmsStValor, Render::Amount, "ICMS_ST_VALOR"},
      {L06::IpiCst, Render::Text, "IPI_CST"},
      {L06::IpiEnquadramento, Render::Text, "IPI_ENQUADRAMENTO"},
      {L06::IpiBase, Render::Amount, "IPI_BASECALCULO"},
      {L06::IpiValor, Render::Amount, "IPI_VALOR"},
      {L06::PisCst, Render::Text, "PIS_CST"},
      {L06::PisBase, Render::Amount, "PIS_BASECALCULO"},
      {L06::PisAliquota, Render::Amount, "PIS_ALIQUOTA"},
      {L06::PisQuantidade, Render::Amount, "PIS_QUANTUNIDADE"},
      {L06::PisValorUnidade, Render::Amount, "PIS_VALORUNIDADE"},
      {L06::PisValor, Render::Amount, "PIS_VALOR"},
      {L06::CofinsCst, Render::Text, "COFINS_CST"},
      {L06::CofinsBase, Render::Amount, "COFINS_BASECALCULO"},
      {L06::CofinsAliquota, Render::Amount, "COFINS_ALIQUOTA"},
      {L06::CofinsQuantidade, Render::Amount, "COFINS_QUANTUNIDADE"},
      {L06::CofinsValorUnidade, Render::Amount, "COFINS_VALORUNIDADE"},
      {L06::CofinsValor, Render::Amount, "COFINS_VALOR"},
  };
}

}  // namespace infofiscal
