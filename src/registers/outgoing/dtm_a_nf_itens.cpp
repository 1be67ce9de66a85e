#include "registers/outgoing/dtm_a_nf_itens.h"

#include "informacao/esquema.h"
#include "registers/linha_item.h"
#include "registers/outgoing/nf_saida.h"

namespace infofiscal {

using namespace linha;

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

constexpr Column kProduto[] = {{L06::Produto, Render::Text, "CDPRODUTO"}};

}  // namespace

TDTM_A_NF_Itens::TDTM_A_NF_Itens(TDTM_ConexaoDS& conexao, const TTipoNFSaida& tipo)
    : TDTM_A_NF(conexao),
      TabNF_Produto("TabNF_Produto", "DspNF_Produto", produto_campos(), 2, 3),
      FTipo(tipo),
      FProduto(TabNF_Produto, kProduto),
      // The item type (C15) is 2 for every outgoing kind, equipment sales included.
      FColunas06(TabNF_Produto, colunas_item_06({"DESCPRODUTO", "UNIDADE", "OUTRASDESP", "2"})) {
  Bind(TabNF_Produto);
  FTipoProcesso = tipo.tipo_processo;
}

void TDTM_A_NF_Itens::ConsRegistro_Produto(int ACodTipoNotaFiscal, int ACodNotaFiscal) {
  nf_saida::consulta_nota(TabNF_Produto, ACodTipoNotaFiscal, ACodNotaFiscal);
}

void TDTM_A_NF_Itens::L06_Produto(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo) {
  ConsRegistro_Produto(ACodTipoNotaFiscal, ACodNotaFiscal);
  UnderErrorRule(nf_saida::prefixo(L06::kTipo), [&] {
    int item = 0;
    while (!TabNF_Produto.Eof()) {
      ++item;
      nf_saida::abre_linha(oLinha, L06::kTipo, FTipoProcesso, ANumRegistro);
      FProduto.Write(oLinha);
      oLinha.Integer(L06::Item, item);
      FColunas06.Write(oLinha);
      oLinha.Trailer(L06::kTrailer);
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
