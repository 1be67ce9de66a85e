#include "registers/header/dtm_a_tabcontador.h"

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

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
      {L03::Codigo, Render::Text, "CDCONTADOR"},
      {L03::Nome, Render::Text, "NOMECONTADOR"},
      {L03::Cpf, Render::Text, "CPF"},
      {L03::Crc, Render::Text, "CRC"},
      {L03::Cnpj, Render::Text, "CNPJ"},
      {L03::Endereco, Render::Text, "ENDERECO"},
      {L03::Numero, Render::Text, "ENDERECONUMERO"},
      {L03::Complemento, Render::Text, "ENDERECOCOMPLEMENTO"},
      {L03::Cep, Render::Text, "CEP"},
      {L03::Bairro, Render::Text, "BAIRRO"},
      {L03::Fone, Render::Text, "FONE"},
      {L03::Fax, Render::Text, "FAX"},
      {L03::Email, Render::Text, "EMAIL"},
      {L03::IbgeCidade, Render::Text, "CODIBGE"},
  };
  ConsultarRegistro();
  UnderErrorRule("Erro ano Gerar Registro Linha 03 : ",
                 [&] { WriteLine(oLinha, L03::kTipo, ColumnTable(TabContador, kColunas), L03::kTrailer, AArquivo); });
}

}  // namespace infofiscal
