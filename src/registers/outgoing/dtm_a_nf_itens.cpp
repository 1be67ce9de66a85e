#include "registers/outgoing/dtm_a_nf_itens.h"

#include "registers/outgoing/nf_saida.h"

namespace infofiscal {

namespace {

std::vector<FieldDef> produto_campos() {
  return {
      {"CDTIPONOTAFISCAL", FieldClass::Smallint, 0},
      {"CDNOTAFISCAL", FieldClass::Integer, 0},
      {"CDPRODUTO", FieldClass::Integer, 0},
      {"CDLOTE", FieldClass::Integer, 0},
      {"ITEMNOTAFISCAL", FieldClass::Smallint, 0},
      {"DESCPRODUTO", FieldClass::String, 100},
      {"UNIDADE", FieldClass::String, 20},
      {"QUANTIDADE", FieldClass::Float, 0},
      {"PRECOTOTAL", FieldClass::Float, 0},
      {"DESCONTO", FieldClass::Float, 0},
      {"FRETE", FieldClass::Float, 0},
      {"SEGURO", FieldClass::Float, 0},
      {"OUTRASDESP", FieldClass::Float, 0},
      {"ICMS_CST", FieldClass::String, 5},
      {"ICMS_BASECALCULO", FieldClass::Float, 0},
      {"ICMS_ALIQUOTA", FieldClass::Float, 0},
      {"ICMS_VALOR", FieldClass::Float, 0},
      {"ICMS_ST_BASECALCULO", FieldClass::Float, 0},
      {"ICMS_ST_VALOR", FieldClass::Float, 0},
      {"PIS_CST", FieldClass::String, 3},
      {"COFINS_CST", FieldClass::String, 3},
      {"ICMS_CFOP", FieldClass::String, 10},
      {"IPI_CST", FieldClass::String, 3},
      {"IPI_ENQUADRAMENTO", FieldClass::String, 3},
      {"IPI_BASECALCULO", FieldClass::Float, 0},
      {"IPI_VALOR", FieldClass::Float, 0},
      {"CODBARRA", FieldClass::String, 20},
      {"PIS_ALIQUOTA", FieldClass::Float, 0},
      {"PIS_BASECALCULO", FieldClass::Float, 0},
      {"PIS_VALOR", FieldClass::Float, 0},
      {"PIS_QUANTUNIDADE", FieldClass::Float, 0},
      {"PIS_VALORUNIDADE", FieldClass::Float, 0},
      {"COFINS_ALIQUOTA", FieldClass::Float, 0},
      {"COFINS_QUANTUNIDADE", FieldClass::Single, 0},
      {"COFINS_VALORUNIDADE", FieldClass::Float, 0},
      {"COFINS_BASECALCULO", FieldClass::Float, 0},
      {"COFINS_VALOR", FieldClass::Float, 0},
      {"NUMNCM", FieldClass::String, 20},
  };
}

constexpr Column kProduto[] = {{3, Render::Text, "CDPRODUTO"}};

// Bases come before rates, for ICMS as for PIS and COFINS; the item type (C15) is 2 for every
// outgoing kind, equipment sales included.
constexpr Column kColunas06[] = {
    {5, Render::Text, "DESCPRODUTO"},
    {6, Render::Text, "UNIDADE"},
    {7, Render::Amount, "QUANTIDADE"},
    {8, Render::Amount, "PRECOTOTAL"},
    {9, Render::Amount, "DESCONTO"},
    {10, Render::Amount, "FRETE"},
    {11, Render::Amount, "SEGURO"},
    {12, Render::Amount, "OUTRASDESP"},
    {13, Render::Text, "NUMNCM"},
    {14, Render::Text, "CODBARRA"},
    {15, Render::Constant, "2"},
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

}  // namespace

TDTM_A_NF_Itens::TDTM_A_NF_Itens(TDTM_ConexaoDS& conexao, const TTipoNFSaida& tipo)
    : TDTM_A_NF(conexao),
      TabNF_Produto("TabNF_Produto", "DspNF_Produto", produto_campos(), 2),
      FTipo(tipo),
      FProduto(TabNF_Produto, kProduto),
      FColunas06(TabNF_Produto, kColunas06) {
  Bind(TabNF_Produto);
  FTipoProcesso = tipo.tipo_processo;
}

void TDTM_A_NF_Itens::ConsRegistro_Produto(int ACodTipoNotaFiscal, int ACodNotaFiscal) {
  nf_saida::consulta_nota(TabNF_Produto, ACodTipoNotaFiscal, ACodNotaFiscal);
}

void TDTM_A_NF_Itens::L06_Produto(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo) {
  ConsRegistro_Produto(ACodTipoNotaFiscal, ACodNotaFiscal);
  UnderErrorRule(nf_saida::prefixo(6), [&] {
    int item = 0;
    while (!TabNF_Produto.Eof()) {
      ++item;
      nf_saida::abre_linha(oLinha, 6, FTipoProcesso, ANumRegistro);
      FProduto.Write(oLinha);
      oLinha.Integer(4, item);
      FColunas06.Write(oLinha);
      oLinha.Trailer(38);
      oLinha.AddTo(AArquivo);
      TabNF_Produto.Next();
    }
  });
}

TDTM_A_NF_Itens::Faixa TDTM_A_NF_Itens::FaixaDeNotas(int count) const {
  const auto campo = [this](std::string_view nome) { return TabRegistroFiscal.FieldByName(nome).AsInteger(); };
  if (FTipo.faixa && campo("TIPOEXPORTACAO") == 2) return {campo("TIPOEXPORTACAOINICIO"), campo("TIPOEXPORTACAOFINAL")};
  return {0, count};
}

void TDTM_A_NF_Itens::RegistroNF(TStringList& AArquivo, int ACodNotaFiscal) {
  ConsRegistroFiscal();
  if (!SwitchOn(FTipo.chave)) return;
  ConsListaNotaFiscal();
  const int count = TabListaNotaFiscal.RecordCount();
  const Faixa faixa = FaixaDeNotas(count);
  const Field tipo_nota = TabListaNotaFiscal.FieldByName("CDTIPONOTAFISCAL");
  const Field nota = TabListaNotaFiscal.FieldByName("CDNOTAFISCAL");
  int registro = 0;  // counts every row, also the rows passed over
  for (; !TabListaNotaFiscal.Eof(); TabListaNotaFiscal.Next()) {
    ++registro;
    if (ACodNotaFiscal != 0 && nota.AsInteger() != ACodNotaFiscal) continue;
    FProcProgresso(registro, count);
    if (registro < faixa.de || registro > faixa.ate) continue;
    const int cod_tipo = static_cast<int>(tipo_nota.AsInteger());
    const int cod_nota = static_cast<int>(nota.AsInteger());
    L04_InfoNotaFiscal(registro, cod_tipo, cod_nota, AArquivo);
    if (FTipo.fornecedor)
      L05_InstituicaoFornecedor(registro, cod_tipo, cod_nota, AArquivo);
    else
      L05_NF_Cliente(registro, cod_tipo, cod_nota, AArquivo);
    L06_Produto(registro, cod_tipo, cod_nota, AArquivo);
  }
}

}  // namespace infofiscal
