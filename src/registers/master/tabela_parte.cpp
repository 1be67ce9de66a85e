#include "registers/master/tabela_parte.h"

namespace infofiscal {

TabelaParte::TabelaParte(const Parte& p)
    : campos_{{{p.codigo, FieldClass::Integer, 0},
               {"RAZAOSOCIAL", FieldClass::String, 100},
               {"CNPJ_CPF", FieldClass::String, 20},
               {"IE_RG", FieldClass::String, 20},
               {"TIPOPESSOA", FieldClass::String, 1},
               {"ENDERECO", FieldClass::String, 100},
               {"ENDERECONUMERO", FieldClass::String, 30},
               {"BAIRRO", FieldClass::String, 30},
               {"IBGE_CIDADE", FieldClass::Integer, 0},
               {"IBGE_PAIS", FieldClass::Integer, 0}}},
      colunas_{{{1, Render::Constant, p.tipo},
                {2, Render::Text, p.codigo},
                {3, Render::Text, "RAZAOSOCIAL"},
                {4, Render::Text, "CNPJ_CPF"},
                {5, Render::Text, "IE_RG"},
                {6, Render::Text, "TIPOPESSOA"},
                {7, Render::Text, "ENDERECO"},
                {8, Render::Text, "ENDERECONUMERO"},
                {9, Render::Text, "BAIRRO"},
                {10, Render::Text, "IBGE_CIDADE"},
                {11, Render::Text, "IBGE_PAIS"}}},
      lista_{p.dataset, p.provider, campos_, {}, 14, colunas_, 11, "Erro ano Gerar Registro Linha 14 : "} {}

}  // namespace infofiscal
