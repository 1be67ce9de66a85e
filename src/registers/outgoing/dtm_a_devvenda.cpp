#include "registers/outgoing/dtm_a_devvenda.h"

#include "informacao/esquema.h"
#include "registers/outgoing/nf_saida.h"

namespace infofiscal {

using namespace linha;

namespace {

// No CFOP, access key or exit date; the model stands in C04.
std::vector<Column> colunas_04() {
  std::vector<Column> c = {
      {L04Devolucao::Numero, Render::Text, "CDNOTAFISCAL"},
      {L04Devolucao::Modelo, Render::Constant, "55"},
      {L04Devolucao::Serie, Render::Text, "NUMSERIE"},
      {L04Devolucao::Emissao, Render::Text, "EMISSAO"},
  };
  for (const Column& v : nf_saida::valores_nota(L04Devolucao::Total)) c.push_back(v);
  c.push_back({L04Devolucao::Fixo, Render::Constant, "0"});
  return c;
}

constexpr Column kColunas05[] = {
    {L05Devolucao::CnpjCpf, Render::Text, "CNPJ_CPF"},
    {L05Devolucao::Ie, Render::Text, "IE"},
    {L05Devolucao::Uf, Render::Text, "CDESTADO"},
};

void requisita(ClientDataSet& dataset, int tipo, int nota) {
  dataset.Close();
  dataset.DataRequest({std::int64_t{tipo}, std::int64_t{nota}});
}

}  // namespace

// The party's city and country codes are both the server column CODIBGE.
TDTM_A_DevVenda::TDTM_A_DevVenda(TDTM_ConexaoDS& conexao)
    : TDTM_A_Padrao(conexao),
      // A note is named by its type and number.
      TabListaNotaFiscal("TabListaNotaFiscal", "DspListaNotaFiscal", nf_saida::lista_campos(), 0, 2),
      TabNF_Venda("TabNF_Venda", "DspNF_Venda", nf_saida::venda_campos(FieldClass::Integer), 0, 2),
      TabNF_Cliente("TabNF_Cliente", "DspNF_Cliente",
                    nf_saida::cliente_campos({{"CODIBGE", FieldClass::Integer, 0}}), 0, 2),
      FColunas04(TabNF_Venda, colunas_04()),
      FColunas05(TabNF_Cliente, kColunas05),
      FPDE(TabNF_Venda.FieldIndex("PDE")),
      FCodNota(TabNF_Venda.FieldIndex("CDNOTAFISCAL")) {
  Bind(TabListaNotaFiscal);
  Bind(TabNF_Venda);
  Bind(TabNF_Cliente);
}

void TDTM_A_DevVenda::ConsListaNotaFiscal() {
  nf_saida::carrega_lista(TabListaNotaFiscal, FCodTipoRegistroFiscal, FCodRegistroFiscal, FTipoProcesso);
}

void TDTM_A_DevVenda::ConsRegistro_NotaFiscal(int ACodTipoNotaFiscal, int ACodNotaFiscal) {
  requisita(TabNF_Venda, ACodTipoNotaFiscal, ACodNotaFiscal);
}

void TDTM_A_DevVenda::ConsRegistro_InstituicaoCliente(int ACodTipoNotaFiscal, int ACodNotaFiscal) {
  requisita(TabNF_Cliente, ACodTipoNotaFiscal, ACodNotaFiscal);
}

void TDTM_A_DevVenda::Reg_04_InfoNotaFiscal(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal,
                                            TStringList& AArquivo) {
  ConsRegistro_NotaFiscal(ACodTipoNotaFiscal, ACodNotaFiscal);
  nf_saida::escreve_linha(
      oLinha, L04Devolucao::kTipo, FTipoProcesso, ANumRegistro, FColunas04, L04Devolucao::kTrailer, AArquivo, [&] {
        if (TabNF_Venda.FieldAt(FPDE).AsString() != "2")
          throw Error("Nota Fiscal de Saída (DevVenda) : " + TabNF_Venda.FieldAt(FCodNota).AsString());
        oLinha.Integer(L04Devolucao::Situacao, 0);
      });
}

void TDTM_A_DevVenda::Reg_05_InstituicaoCliente(int ANumRegistro, int ACodTipoNotaFiscal, int ACodNotaFiscal,
                                                TStringList& AArquivo) {
  ConsRegistro_InstituicaoCliente(ACodTipoNotaFiscal, ACodNotaFiscal);
  nf_saida::escreve_linha(oLinha, L05Devolucao::kTipo, FTipoProcesso, ANumRegistro, FColunas05, L05Devolucao::kTrailer,
                          AArquivo, [] {});
}

}  // namespace infofiscal
