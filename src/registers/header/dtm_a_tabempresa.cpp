#include "registers/header/dtm_a_tabempresa.h"

namespace infofiscal {

TDTM_A_TabEmpresa::TDTM_A_TabEmpresa(TDTM_ConexaoDS& conexao)
    : TDTM_FPadraoConsulta(conexao),
      TabEmpresa("TabEmpresa", "DspEmpresa",
                 {
                     {"CDEMPRESA", FieldClass::Smallint, 0},
                     {"RAZAOSOCIAL", FieldClass::String, 100},
                     {"NOMEFANTASIA", FieldClass::String, 60},
                     {"CNPJ", FieldClass::String, 18},
                     {"IE", FieldClass::String, 20},
                     {"IM", FieldClass::String, 20},
                     {"SUFRAMA", FieldClass::String, 20},
                     {"NOMECIDADE", FieldClass::String, 60},
                     {"CDESTADO", FieldClass::String, 2},
                     {"ENDERECO", FieldClass::String, 100},
                     {"ENDERECONUMERO", FieldClass::String, 30},
                     {"ENDERECOCOMPLEMENTO", FieldClass::String, 100},
                     {"BAIRRO", FieldClass::String, 30},
                     {"IBGE_CIDADE", FieldClass::Integer, 0},
                     {"IBGE_PAIS", FieldClass::Integer, 0},
                     {"CEP", FieldClass::String, 9},
                     {"FONE", FieldClass::String, 50},
                     {"FAX", FieldClass::String, 20},
                     {"EMAIL", FieldClass::String, 60},
                 },
                 1) {
  Bind(TabEmpresa);
}

void TDTM_A_TabEmpresa::ConsultarRegistro() {
  TabEmpresa.Reopen({InfoSistema().CodEmpresa()});
}

void TDTM_A_TabEmpresa::L02_InformacaoEmpresa(TStringList& AArquivo) {
  // Not the dataset's order: the state comes before the registrations, the postal code
  // between street and complement, the complement before the house number.
  static const Column kColunas[] = {
      {1, Render::Text, "CDEMPRESA"},
      {2, Render::Text, "RAZAOSOCIAL"},
      {3, Render::Text, "NOMEFANTASIA"},
      {4, Render::Text, "CNPJ"},
      {5, Render::Text, "CDESTADO"},
      {6, Render::Text, "IE"},
      {7, Render::Text, "IM"},
      {8, Render::Text, "SUFRAMA"},
      {9, Render::Text, "NOMECIDADE"},
      {10, Render::Text, "ENDERECO"},
      {11, Render::Text, "CEP"},
      {12, Render::Text, "ENDERECOCOMPLEMENTO"},
      {13, Render::Text, "ENDERECONUMERO"},
      {14, Render::Text, "BAIRRO"},
      {15, Render::Text, "FONE"},
      {16, Render::Text, "FAX"},
      {17, Render::Text, "EMAIL"},
      {18, Render::Text, "IBGE_CIDADE"},
      {19, Render::Text, "IBGE_PAIS"},
  };
  ConsultarRegistro();
  UnderErrorRule("Erro ano Gerar Registro Linha 02 : ",
                 [&] { WriteLine(oLinha, 2, ColumnTable(TabEmpresa, kColunas), 19, AArquivo); });
}

}  // namespace infofiscal
