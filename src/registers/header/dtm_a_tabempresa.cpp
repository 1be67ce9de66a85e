#include "registers/header/dtm_a_tabempresa.h"

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

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

void TDTM_A_TabEmpresa::ConsultarRegistro() { TabEmpresa.Reopen({InfoSistema().CodEmpresa()}); }

void TDTM_A_TabEmpresa::L02_InformacaoEmpresa(TStringList& AArquivo) {
  // Not the dataset's order: the state comes before the registrations, the postal code
  // between street and complement, the complement before the house number.
  static const Column kColunas[] = {
      {L02::Codigo, Render::Text, "CDEMPRESA"},
      {L02::RazaoSocial, Render::Text, "RAZAOSOCIAL"},
      {L02::NomeFantasia, Render::Text, "NOMEFANTASIA"},
      {L02::Cnpj, Render::Text, "CNPJ"},
      {L02::Uf, Render::Text, "CDESTADO"},
      {L02::Ie, Render::Text, "IE"},
      {L02::Im, Render::Text, "IM"},
      {L02::Suframa, Render::Text, "SUFRAMA"},
      {L02::NomeCidade, Render::Text, "NOMECIDADE"},
      {L02::Endereco, Render::Text, "ENDERECO"},
      {L02::Cep, Render::Text, "CEP"},
      {L02::Complemento, Render::Text, "ENDERECOCOMPLEMENTO"},
      {L02::Numero, Render::Text, "ENDERECONUMERO"},
      {L02::Bairro, Render::Text, "BAIRRO"},
      {L02::Fone, Render::Text, "FONE"},
      {L02::Fax, Render::Text, "FAX"},
      {L02::Email, Render::Text, "EMAIL"},
      {L02::IbgeCidade, Render::Text, "IBGE_CIDADE"},
      {L02::IbgePais, Render::Text, "IBGE_PAIS"},
  };
  ConsultarRegistro();
  UnderErrorRule("Erro ano Gerar Registro Linha 02 : ",
                 [&] { WriteLine(oLinha, L02::kTipo, ColumnTable(TabEmpresa, kColunas), L02::kTrailer, AArquivo); });
}

}  // namespace infofiscal
