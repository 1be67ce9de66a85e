#include "registers/header/dtm_a_tabcontador.h"

namespace infofiscal {

TDTM_A_TabContador::TDTM_A_TabContador(TDTM_ConexaoDS& conexao)
    : TDTM_FPadraoConsulta(conexao),
      TabContador("TabContador", "DspContador",
                  {
                      {"CDCONTADOR", FieldClass::Smallint, 0},
                      {"NOMECONTADOR", FieldClass::String, 100},
                      {"FONE", FieldClass::String, 50},
                      {"CPF", FieldClass::String, 20},
                      {"CRC", FieldClass::String, 20},
                      {"CNPJ", FieldClass::String, 20},
                      {"CEP", FieldClass::String, 10},
                      {"ENDERECO", FieldClass::String, 100},
                      {"ENDERECONUMERO", FieldClass::String, 30},
                      {"ENDERECOCOMPLEMENTO", FieldClass::String, 100},
                      {"BAIRRO", FieldClass::String, 60},
                      {"EMAIL", FieldClass::String, 60},
                      {"FAX", FieldClass::String, 20},
                      {"CODIBGE", FieldClass::Integer, 0},
                  }) {
  Bind(TabContador);
}

void TDTM_A_TabContador::ConsultarRegistro() {
  TabContador.Close();
  TabContador.Open();
}

void TDTM_A_TabContador::InformacaoContador(TStringList& AArquivo) {
  // Unlike line 02: the house number before the complement, the postal code after them.
  static const Column kColunas[] = {
      {1, Render::Text, "CDCONTADOR"},
      {2, Render::Text, "NOMECONTADOR"},
      {3, Render::Text, "CPF"},
      {4, Render::Text, "CRC"},
      {5, Render::Text, "CNPJ"},
      {6, Render::Text, "ENDERECO"},
      {7, Render::Text, "ENDERECONUMERO"},
      {8, Render::Text, "ENDERECOCOMPLEMENTO"},
      {9, Render::Text, "CEP"},
      {10, Render::Text, "BAIRRO"},
      {11, Render::Text, "FONE"},
      {12, Render::Text, "FAX"},
      {13, Render::Text, "EMAIL"},
      {14, Render::Text, "CODIBGE"},
  };
  ConsultarRegistro();
  UnderErrorRule("Erro ano Gerar Registro Linha 03 : ",
                 [&] { WriteLine(oLinha, 3, ColumnTable(TabContador, kColunas), 14, AArquivo); });
}

}  // namespace infofiscal
