#include "registers/outgoing/nf_saida.h"

#include "informacao/esquema.h"

namespace infofiscal::nf_saida {

std::vector<FieldDef> lista_campos() {
  return {{"CDTIPONOTAFISCAL", FieldClass::Smallint, 0}, {"CDNOTAFISCAL", FieldClass::Integer, 0}};
}

std::vector<FieldDef> venda_campos(FieldClass cfop) {
  return {
      {"CDTIPONOTAFISCAL", FieldClass::Smallint, 0}, {"CDNOTAFISCAL", FieldClass::Integer, 0},
      {"CDCLIENTE", FieldClass::Integer, 0},         {"NUMSERIE", FieldClass::String, 5},
      {"EMISSAO", FieldClass::TimeStamp, 0},         {"PDE", FieldClass::Smallint, 0},
      {"SAIDA", FieldClass::TimeStamp, 0},           {"CHAVENFE", FieldClass::String, 46},
      {"VALORTOTALNOTA", FieldClass::Float, 0},      {"VALORDESCONTO", FieldClass::Float, 0},
      {"VALORTOTALPRODUTO", FieldClass::Float, 0},   {"VALORFRETE", FieldClass::Float, 0},
      {"VALORSEGURO", FieldClass::Float, 0},         {"VALOROUTRASDESP", FieldClass::Float, 0},
      {"ICMS_BASECALCULO", FieldClass::Float, 0},    {"ICMS_VALOR", FieldClass::Float, 0},
      {"ICMS_ST_BASECALCULO", FieldClass::Float, 0}, {"ICMS_ST_VALOR", FieldClass::Float, 0},
      {"IPI_VALOR", FieldClass::Float, 0},           {"PIS_VALOR", FieldClass::Float, 0},
      {"COFINS_VALOR", FieldClass::Float, 0},        {"CDTABCFOP", cfop, 0},
  };
}

std::vector<FieldDef> cliente_campos(std::initializer_list<FieldDef> ibge) {
  std::vector<FieldDef> campos = {
      {"CDTIPONOTAFISCAL", FieldClass::Smallint, 0},
      {"CDNOTAFISCAL", FieldClass::Integer, 0},
      {"CDCLIENTE", FieldClass::Integer, 0},
      {"RAZAOSOCIAL", FieldClass::String, 100},
      {"TIPOPESSOA", FieldClass::String, 1},
      {"CNPJ_CPF", FieldClass::String, 20},
      {"IE", FieldClass::String, 20},
      {"CDESTADO", FieldClass::String, 2},
      {"ENDERECO", FieldClass::String, 100},
      {"ENDERECONUMERO", FieldClass::String, 30},
      {"BAIRRO", FieldClass::String, 30},
  };
  campos.insert(campos.end(), ibge);
  return campos;
}

std::vector<Column> valores_nota(int first) {
  static constexpr const char* kValores[] = {
      "VALORTOTALNOTA",  "VALORDESCONTO",    "VALORTOTALPRODUTO", "VALORFRETE",          "VALORSEGURO",
      "VALOROUTRASDESP", "ICMS_BASECALCULO", "ICMS_VALOR",        "ICMS_ST_BASECALCULO", "ICMS_ST_VALOR",
      "IPI_VALOR",       "PIS_VALOR",        "COFINS_VALOR",
  };
  std::vector<Column> columns;
  for (const char* campo : kValores) columns.push_back({first++, Render::Amount, campo});
  return columns;
}

void abre_linha(TLinhaRegistro& linha, int tipo_linha, int tipo_processo, int registro) {
  linha.Head(tipo_linha);
  // Lines 04, 05 and 06 of a note begin alike; so does the sales return's shorter 04 and 05.
  linha.Integer(linha::L04::TipoNota, tipo_processo);
  linha.Integer(linha::L04::Contador, registro);
}

std::string_view prefixo(int tipo_linha) {
  static constexpr std::string_view kPrefixos[] = {
      "Erro ano Gerar Registro Linha 04 : ",
      "Erro ano Gerar Registro Linha 05 : ",
      "Erro ano Gerar Registro Linha 06 : ",
  };
  return kPrefixos[tipo_linha - 4];
}

void consulta_nota(ClientDataSet& dataset, int tipo, int nota) { dataset.Reopen({tipo, nota}); }

void carrega_lista(ClientDataSet& lista, std::uint8_t tipo_registro, std::int32_t registro,
                   std::uint8_t tipo_processo) {
  lista.Close();
  lista.DataRequest({std::int64_t{tipo_registro}, std::int64_t{registro}, std::int64_t{tipo_processo}});
}

}  // namespace infofiscal::nf_saida
