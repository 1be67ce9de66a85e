#include "registers/outgoing/dtm_a_nf.h"

#include "informacao/esquema.h"
#include "registers/outgoing/nf_saida.h"

namespace infofiscal {

using namespace linha;

namespace {

std::vector<Column> colunas_04() {
  std::vector<Column> c = {
      {L04::Numero, Render::Text, "CDNOTAFISCAL"}, {L04::Cfop, Render::Text, "CDTABCFOP"},
      {L04::Chave, Render::Text, "CHAVENFE"},      {L04::Modelo, Render::Constant, "55"},
      {L04::Serie, Render::Text, "NUMSERIE"},      {L04::Emissao, Render::Text, "EMISSAO"},
      {L04::EntradaSaida, Render::Text, "SAIDA"},
  };
  for (const Column& v : nf_saida::valores_nota(L04::Total)) c.push_back(v);
  c.push_back({L04::Fixo, Render::Constant, "0"});
  return c;
}

// C03 is the party role: 1 a customer, 2 a supplier.
std::vector<Column> colunas_05(std::string_view papel) {
  return {
      {L05::Papel, Render::Constant, papel},    {L05::Codigo, Render::Text, "CDCLIENTE"},
      {L05::CnpjCpf, Render::Text, "CNPJ_CPF"}, {L05::Ie, Render::Text, "IE"},
      {L05::Uf, Render::Text, "CDESTADO"},
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
  nf_saida::escreve_linha(oLinha, L04::kTipo, FTipoProcesso, ANumRegistro, FColunas04, L04::kTrailer, AArquivo, [&] {
    // C24, the situation: an issued note (2) is 0, a cancelled one (3) is 2; no other state
    // may reach the file. C25 and C26 are never written although the trailer counts them.
    const Field pde = TabNF_Venda.FieldAt(FPDE);
    const std::string situacao = pde.AsString();
    if (situacao == "2") oLinha.Integer(L04::Situacao, 0);
    if (situacao == "3") oLinha.Integer(L04::Situacao, 2);
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
  nf_saida::escreve_linha(oLinha, L05::kTipo, FTipoProcesso, ANumRegistro, colunas, L05::kTrailer, AArquivo, [] {});
}

}  // namespace infofiscal
