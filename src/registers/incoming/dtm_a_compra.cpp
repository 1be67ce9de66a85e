#include "registers/incoming/dtm_a_compra.h"

#include <algorithm>
#include <string>

#include "host/texto.h"
#include "informacao/esquema.h"
#include "registers/linha_item.h"

namespace infofiscal {

using namespace linha;

namespace {

// Line 04: C04, then C06 to C23, then C25 and C26 (C03 and C05 are cleaned, C24 is tested).
constexpr Column kL04_C04[] = {{L04::Cfop, Render::Text, "CDTABCFOP"}};
constexpr Column kL04_C06_C23[] = {
    {L04::Modelo, Render::Text, "MODELO"},
    {L04::Serie, Render::Text, "SERIE"},
    {L04::Emissao, Render::Text, "DATAEMISSAONF"},  // timestamp as text: the time only when not midnight
    {L04::EntradaSaida, Render::Text, "DATARECEBIMENTO"},
    {L04::Total, Render::Amount, "TOTALCOMPRA"},
    {L04::Desconto, Render::Amount, "DESCONTO"},
    {L04::TotalProdutos, Render::Amount, "TOTALPRODUTO"},
    {L04::Frete, Render::Amount, "FRETE"},
    {L04::Seguro, Render::Amount, "SEGURO"},
    {L04::OutrasDespesas, Render::Amount, "OUTRASDESPESAS"},
    {L04::IcmsBase, Render::Amount, "ICMS_BASECALCULO"},
    {L04::IcmsValor, Render::Amount, "ICMS_VALOR"},
    {L04::IcmsStBase, Render::Amount, "ICMS_ST_BASECALCULO"},
    {L04::IcmsStValor, Render::Amount, "ICMS_ST_VALOR"},
    {L04::IpiValor, Render::Amount, "IPI_VALOR"},
    {L04::PisValor, Render::Amount, "PIS_VALOR"},
    {L04::CofinsValor, Render::Amount, "COFINS_VALOR"},
    {L04::Fixo, Render::Constant, "1"},
};
constexpr Column kL04_C25_C26[] = {{L04::IbgeOrigem, Render::Text, "CDCIDADEORIGEMIBGE"},
                                   {L04::IbgeDestino, Render::Text, "CDCIDADEDESTINOIBGE"}};

// Line 05 after the kind, the row counter and the constant party role.
constexpr Column kL05_C04_C07[] = {
    {L05::Codigo, Render::Text, "CDFORNECEDOR"},
    {L05::CnpjCpf, Render::Text, "CNPJ_CPF"},
    {L05::Ie, Render::Text, "IE"},
    {L05::Uf, Render::Text, "CDESTADO"},
};

// Removed from the note number and the access key before they are written.
constexpr std::string_view kLimpeza = ". ";

std::vector<Column> colunas_itens(const TTipoCompra& tipo) {
  return colunas_item_06({tipo.descricao, "SIGLAUNIDADE", "OUTRASDESPESAS", tipo.tipo_item});
}

// Opens `dataset` on one purchase; a failure becomes `prefix` followed by its message.
void abre_compra(ClientDataSet& dataset, int ACodCompra, std::string_view prefix) {
  const auto abre = [&] { dataset.Reopen({ACodCompra}); };
  if (prefix.empty())
    abre();
  else
    UnderErrorRule(prefix, abre);
}

}  // namespace

TDTM_A_Compra::TDTM_A_Compra(TDTM_ConexaoDS& conexao)
    : TDTM_A_Padrao(conexao),
      TabListaCompra("TabListaCompra", "DspListaCompra",
                     {
                         {"CDCOMPRA", FieldClass::Integer, 0},
                         {"MODELO", FieldClass::String, 2},
                         {"NUMNF", FieldClass::String, 30},
                     }),
      TabCompra("TabCompra", "DspCompra",
                {
                    {"CDCOMPRA", FieldClass::Integer, 0},
                    {"CDFORNECEDOR", FieldClass::Integer, 0},
                    {"MODELO", FieldClass::String, 2},
                    {"SERIE", FieldClass::String, 3},
                    {"PDE", FieldClass::Smallint, 0},
                    {"CHAVENFEFORNECEDOR", FieldClass::String, 60},
                    {"TOTALCOMPRA", FieldClass::Float, 0},
                    {"DESCONTO", FieldClass::Float, 0},
                    {"TOTALPRODUTO", FieldClass::Float, 0},
                    {"FRETE", FieldClass::Float, 0},
                    {"SEGURO", FieldClass::Float, 0},
                    {"OUTRASDESPESAS", FieldClass::Float, 0},
                    {"ICMS_BASECALCULO", FieldClass::Float, 0},
                    {"ICMS_VALOR", FieldClass::Float, 0},
                    {"ICMS_ST_BASECALCULO", FieldClass::Float, 0},
                    {"ICMS_ST_VALOR", FieldClass::Float, 0},
                    {"IPI_VALOR", FieldClass::Float, 0},
                    {"PIS_VALOR", FieldClass::Float, 0},
                    {"COFINS_VALOR", FieldClass::Float, 0},
                    {"NUMNF", FieldClass::String, 30},
                    {"DATAEMISSAONF", FieldClass::TimeStamp, 0},
                    {"DATARECEBIMENTO", FieldClass::TimeStamp, 0},
                    {"CDTABCFOP", FieldClass::Smallint, 0},
                    {"CDCIDADEORIGEMIBGE", FieldClass::Integer, 0},
                    {"CDCIDADEDESTINOIBGE", FieldClass::Integer, 0},
                },
                1),
      TabCompraFornecedor("TabCompraFornecedor", "DspCompraFornecedor",
                          {
                              {"CDCOMPRA", FieldClass::Integer, 0},
                              {"CDFORNECEDOR", FieldClass::Integer, 0},
                              {"RAZAOSOCIAL", FieldClass::String, 100},
                              {"TIPOPESSOA", FieldClass::String, 1},
                              {"CNPJ_CPF", FieldClass::String, 20},
                              {"IE", FieldClass::String, 20},
                              {"CDESTADO", FieldClass::String, 2},
                              {"ENDERECO", FieldClass::String, 100},
                              {"ENDERECONUMERO", FieldClass::String, 30},
                              {"BAIRRO", FieldClass::String, 30},
                          },
                          1),
      FNumNF(TabCompra.FieldIndex("NUMNF")),
      FChaveNFe(TabCompra.FieldIndex("CHAVENFEFORNECEDOR")),
      FPDE(TabCompra.FieldIndex("PDE")),
      FColunasC04(TabCompra, kL04_C04),
      FColunasC06_C23(TabCompra, kL04_C06_C23),
      FColunasC25_C26(TabCompra, kL04_C25_C26),
      FColunasL05(TabCompraFornecedor, kL05_C04_C07) {
  Bind(TabListaCompra);
  Bind(TabCompra);
  Bind(TabCompraFornecedor);
}

void TDTM_A_Compra::ConsListaCompra() {
  TabListaCompra.DataRequest({std::int64_t{FCodRegistroFiscal}, std::int64_t{FTipoProcesso}});
}

void TDTM_A_Compra::ConsRegistro_Compra(int ACodCompra) {
  abre_compra(TabCompra, ACodCompra, "Erro ao Abrir Tabela de Compra : ");
}

void TDTM_A_Compra::ConsRegistro_InstituicaoFornecedor(int ACodCompra) {
  abre_compra(TabCompraFornecedor, ACodCompra, "Erro ao Abrir Tabela de InstituicaoFornecedor : ");
}

void TDTM_A_Compra::L04_InfoCompra(int ANumRegistro, int ACodCompra, TStringList& AArquivo) {
  ConsRegistro_Compra(ACodCompra);
  const std::string numero = clean_text(TabCompra.FieldAt(FNumNF).AsString(), kLimpeza);
  const std::string chave = clean_text(TabCompra.FieldAt(FChaveNFe).AsString(), kLimpeza);
  UnderErrorRule("Erro ano Gerar Registro Linha 04 : ", [&] {
    oLinha.Head(L04::kTipo);
    oLinha.Integer(L04::TipoNota, FTipoProcesso);
    oLinha.Integer(L04::Contador, ANumRegistro);
    oLinha.Text(L04::Numero, numero);
    FColunasC04.Write(oLinha);
    oLinha.Text(L04::Chave, chave);
    FColunasC06_C23.Write(oLinha);
    // Only a purchase in state 3 may be written; any other is a fault of the data, not a skip.
    if (TabCompra.FieldAt(FPDE).AsString() != "3") throw Error("Erro na NFe de Entrada: " + numero);
    oLinha.Integer(L04::Situacao, 0);
    FColunasC25_C26.Write(oLinha);
    oLinha.Trailer(L04::kTrailer);
    oLinha.AddTo(AArquivo);
  });
}

void TDTM_A_Compra::L05_Fornecedor(int ANumRegistro, int ACodCompra, TStringList& AArquivo) {
  ConsRegistro_InstituicaoFornecedor(ACodCompra);
  UnderErrorRule("Erro ano Gerar Registro Linha 05 : ", [&] {
    oLinha.Head(L05::kTipo);
    oLinha.Integer(L05::TipoNota, FTipoProcesso);
    oLinha.Integer(L05::Contador, ANumRegistro);
    oLinha.Integer(L05::Papel, 2);  // party role: supplier
    FColunasL05.Write(oLinha);
    oLinha.Trailer(L05::kTrailer);
    oLinha.AddTo(AArquivo);
  });
}

TDTM_A_Compra::ColunasItens::ColunasItens(const ClientDataSet& itens, const TTipoCompra& tipo)
    : codigo(itens.FieldIndex(tipo.codigo)), resto(itens, colunas_itens(tipo)) {}

ClientDataSet TDTM_A_Compra::DataSetItens(const TTipoCompra& tipo) {
  std::vector<FieldDef> campos = {
      {"CDCOMPRA", FieldClass::Integer, 0},
      {tipo.codigo, FieldClass::Integer, 0},
      {"ITEMCOMPRA", FieldClass::Smallint, 0},
      {tipo.descricao, FieldClass::String, tipo.tamanho_descricao},
      {"SIGLAUNIDADE", FieldClass::String, 10},
      {"QUANTIDADE", FieldClass::Float, 0},
      {"PRECOTOTAL", FieldClass::Float, 0},
      {"DESCONTO", FieldClass::Float, 0},
      {"FRETE", FieldClass::Float, 0},
      {"SEGURO", FieldClass::Float, 0},
      {"OUTRASDESPESAS", FieldClass::Float, 0},
      {"ICMS_CST", FieldClass::String, 5},
      {"ICMS_CFOP", FieldClass::String, 10},
      {"ICMS_BASECALCULO", FieldClass::Float, 0},
      {"ICMS_ALIQUOTA", FieldClass::Float, 0},
      {"ICMS_VALOR", FieldClass::Float, 0},
      {"ICMS_ST_BASECALCULO", FieldClass::Float, 0},
      {"ICMS_ST_VALOR", FieldClass::Float, 0},
      {"IPI_CST", FieldClass::String, 3},
      {"IPI_ENQUADRAMENTO", FieldClass::String, 3},
      {"IPI_BASECALCULO", FieldClass::Float, 0},
      {"IPI_VALOR", FieldClass::Float, 0},
      {"PIS_CST", FieldClass::String, 3},
      {"PIS_ALIQUOTA", FieldClass::Float, 0},
      {"PIS_BASECALCULO", FieldClass::Float, 0},
      {"PIS_QUANTUNIDADE", FieldClass::Float, 0},
      {"PIS_VALORUNIDADE", FieldClass::Float, 0},
      {"PIS_VALOR", FieldClass::Float, 0},
      {"COFINS_CST", FieldClass::String, 3},
      {"COFINS_ALIQUOTA", FieldClass::Float, 0},
      {"COFINS_BASECALCULO", FieldClass::Float, 0},
      {"COFINS_QUANTUNIDADE", FieldClass::Float, 0},
      {"COFINS_VALORUNIDADE", FieldClass::Float, 0},
      {"COFINS_VALOR", FieldClass::Float, 0},
      {"NUMNCM", FieldClass::String, 20},
      {"CODBARRA", FieldClass::String, tipo.tamanho_codbarra},
  };
  // An item is named by its purchase, its code and its number on the note.
  return ClientDataSet(std::string(tipo.tabela), std::string(tipo.provedor), std::move(campos), 1, 3);
}

void TDTM_A_Compra::RegistraCompras(TStringList& AArquivo, int ACodFiltro, const TTipoCompra& tipo) {
  ConsRegistroFiscal();
  if (!SwitchOn(tipo.chave)) return;
  ConsListaCompra();
  const int count = TabListaCompra.RecordCount();
  // Rows are numbered from 1 over the whole list; only those inside [primeira, ultima] are
  // considered, and a range of 2 narrows it to the fiscal register's bounds.
  std::int64_t primeira = 0, ultima = tipo.ultima_sem_faixa != 0 ? tipo.ultima_sem_faixa : count;
  if (TabRegistroFiscal.FieldByName("TIPOEXPORTACAO").AsInteger() == 2) {
    primeira = TabRegistroFiscal.FieldByName("TIPOEXPORTACAOINICIO").AsInteger();
    ultima = TabRegistroFiscal.FieldByName("TIPOEXPORTACAOFINAL").AsInteger();
  }
  const std::string filtro = std::to_string(ACodFiltro);
  const Field modelo = TabListaCompra.FieldByName("MODELO");
  const Field cod_compra = TabListaCompra.FieldByName("CDCOMPRA");
  const Field campo_filtro = TabListaCompra.FieldByName(tipo.campo_filtro);
  int linha = 0;
  for (; !TabListaCompra.Eof(); TabListaCompra.Next()) {
    ++linha;
    if (linha < primeira || linha > ultima) continue;
    FProcProgresso(linha, count);
    if (std::ranges::find(tipo.modelos, modelo.AsInteger()) == tipo.modelos.end()) continue;
    if (ACodFiltro != 0 && campo_filtro.AsString() != filtro) continue;
    const int codigo = static_cast<int>(cod_compra.AsInteger());
    L04_InfoCompra(linha, codigo, AArquivo);
    L05_Fornecedor(linha, codigo, AArquivo);
    ItensCompra(linha, codigo, AArquivo);
  }
}

void TDTM_A_Compra::ConsItensCompra(ClientDataSet& itens, const TTipoCompra& tipo, int ACodCompra) {
  abre_compra(itens, ACodCompra, tipo.erro_itens);
}

void TDTM_A_Compra::L06_Itens(ClientDataSet& itens, const ColunasItens& colunas, int ANumRegistro,
                              TStringList& AArquivo) {
  UnderErrorRule("Erro ano Gerar Registro Linha 06 : ", [&] {
    int item = 0;  // the stored ITEMCOMPRA is not written: C04 counts the note's rows
    for (; !itens.Eof(); itens.Next()) {
      oLinha.Head(L06::kTipo);
      oLinha.Integer(L06::TipoNota, FTipoProcesso);
      oLinha.Integer(L06::Contador, ANumRegistro);
      oLinha.FieldText(L06::Produto, itens.FieldAt(colunas.codigo));
      oLinha.Integer(L06::Item, ++item);
      colunas.resto.Write(oLinha);
      oLinha.Trailer(L06::kTrailer);
      oLinha.AddTo(AArquivo);
    }
  });
}

}  // namespace infofiscal
