#include "registers/outgoing/dtm_a_nf.h"

#include "registers/outgoing/nf_saida.h"

namespace infofiscal {

namespace {

std::vector<Column> colunas_04() {
  std::vector<Column> c = {
      {3, Render::Text, "CDNOTAFISCAL"}, {4, Render::Text, "CDTABCFOP"}, {5, Render::Text, "CHAVENFE"},
      {6, Render::Constant, "55"},       {7, Render::Text, "NUMSERIE"},  {8, Render::Text, "EMISSAO"},
      {9, Render::Text, "SAIDA"},
  };
  for (const Column& v : nf_saida::valores_nota(10)) c.push_back(v);
  c.push_back({23, Render::Constant, "0"});
  return c;
}

// C03 is the party role: 1 a customer, 2 a supplier.
std::vector<Column> colunas_05(std::string_view papel) {
  return {
      {3, Render::Constant, papel}, {4, Render::Text, "CDCLIENTE"}, {5, Render::Text, "CNPJ_CPF"},
      {6, Render::Text, "IE"},      {7, Render::Text, "CDESTADO"},
  };
}

}  // namespace

TDTM_A_NF::TDTM_A_NF(TDTM_ConexaoDS& conexao)
    : TDTM_A_Padrao(conexao),
      // A note is named by its type and number.
      TabListaNotaFiscal("TabListaNotaFiscal", "DspListaNotaFiscal", nf_saida::lista_campos(), 0, 2),
      TabNF_Venda("TabNF_Venda", "DspNF_Venda", nf_saida::venda_campos(FieldClass::Smallint), 2, 2),
      TabNF_Cliente(
          "TabNF_Cliente", "DspNF_Cliente",
          nf_saida::cliente_campos({{"IBGE_CIDADE", FieldClass::Integer, 0}, {"IBGE_PAIS", FieldClass::Integer, 0}}),
          2, 2),
      FColunas04(TabNF_Venda, colunas_04()),
      FColunas05Cliente(TabNF_Cliente, colunas_05("1")),
      FColunas05Fornecedor(TabNF_Cliente, colunas_05("2")),
      FPDE(TabNF_Venda.FieldIndex("PDE")),
      FCodNota(TabNF_Venda.FieldIndex("CDNOTAFISCAL")) {
  Bind(TabListaNotaFiscal);
  Bind(TabNF_Venda);
  Bind(TabNF_Cliente);
}

void TDTM_A_NF::ConsListaNotaFiscal() {
  nf_saida::carrega_lista(TabListaNotaFiscal, FCodTipoRegistroFiscal, FCodRegistroFiscal, FTipoProcesso);
}

void TDTM_A_NF::ConsRegistro_NotaFiscal(int ACodTipoNotaFiscal, int ACodNotaFiscal) {
  nf_saida::consulta_nota(TabNF_Venda, ACodTipoNotaFiscal, ACodNotaFiscal);
}

void TDTM_A_NF::ConsRegistro_NF_Cliente(int ACodTipoNotaFiscal, int ACodNotaFiscal) {
  nf_saida::consulta_nota(TabNF_Cliente, ACodTipoNotaFiscal, ACodNotaFiscal);
}

void TDTM_A_NF::L04_InfoNotaFiscal(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal,
                                   TStringList& AArquivo) {
  ConsRegistro_NotaFiscal(ACodTipoNotaFiscal, ACodNotaFiscal);
  nf_saida::escreve_linha(oLinha, 4, FTipoProcesso, ANumRegistro, FColunas04, 26, AArquivo, [&] {
    // C24, the situation: an issued note (2) is 0, a cancelled one (3) is 2; no other state
    // may reach the file. C25 and C26 are never written although the trailer counts them.
    const Field pde = TabNF_Venda.FieldAt(FPDE);
    const std::string situacao = pde.AsString();
    if (situacao == "2") oLinha.Integer(24, 0);
    if (situacao == "3") oLinha.Integer(24, 2);
    const std::int64_t estado = pde.AsInteger();
    if (estado != 2 && estado != 3)
      throw Error("Erro na Nota Fiscal de Saida: " + TabNF_Venda.FieldAt(FCodNota).AsString());
  });
}

void TDTM_A_NF::L05_NF_Cliente(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal, TStringList& AArquivo) {
  L05(FColunas05Cliente, ANumRegistro, ACodTipoNotaFiscal, ACodNotaFiscal, AArquivo);
}

void TDTM_A_NF::L05_InstituicaoFornecedor(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal,
                                          TStringList& AArquivo) {
  L05(FColunas05Fornecedor, ANumRegistro, ACodTipoNotaFiscal, ACodNotaFiscal, AArquivo);
}

void TDTM_A_NF::L05(const ColumnTable& colunas, int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal,
                    TStringList& AArquivo) {
  ConsRegistro_NF_Cliente(ACodTipoNotaFiscal, ACodNotaFiscal);
  nf_saida::escreve_linha(oLinha, 5, FTipoProcesso, ANumRegistro, colunas, 7, AArquivo, [] {});
}

}  // namespace infofiscal
