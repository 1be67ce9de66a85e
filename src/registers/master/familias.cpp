#include "registers/master/familias.h"

#include <string>

namespace infofiscal {

namespace {

// C06 of a product: its CEST, except the placeholder "00.000.00" (exactly), which is left empty.
void Cest(const ClientDataSet& tab, TLinhaRegistro& linha) {
  const std::string cest = tab.FieldByName("CODCEST").AsString();
  linha.Text(6, cest == "00.000.00" ? std::string() : cest);
}

}  // namespace

TabelaListaPropria TabelaCatalogo(const Catalogo& c) {
  std::vector<FieldDef> campos = {{c.codigo, FieldClass::Integer, 0},
                                  {c.descricao, FieldClass::String, c.tamanho_descricao},
                                  {"SIGLAUNIDADE", FieldClass::String, 10},
                                  {"NUMNCM", FieldClass::String, 20}};
  std::vector<Column> colunas = {{1, Render::Constant, c.tipo},
                                 {2, Render::Text, c.codigo},
                                 {3, Render::Text, c.descricao},
                                 {4, Render::Text, "SIGLAUNIDADE"},
                                 {5, Render::Text, "NUMNCM"}};
  if (c.cest)
    campos.push_back({"CODCEST", FieldClass::String, 20});
  else
    colunas.push_back({6, Render::Empty});
  return TabelaListaPropria(std::move(campos), std::move(colunas),
                            {.dataset = c.dataset,
                             .provider = c.provider,
                             .chaves = c.chaves,
                             .tipo = 12,
                             .trailer = 6,
                             .prefixo = "Erro ano Gerar Registro Linha 12 : ",
                             .extra = c.cest ? &Cest : nullptr,
                             .adiciona = c.adiciona});
}

TabelaListaPropria TabelaParte(const Parte& p) {
  return TabelaListaPropria({{p.codigo, FieldClass::Integer, 0},
                             {"RAZAOSOCIAL", FieldClass::String, 100},
                             {"CNPJ_CPF", FieldClass::String, 20},
                             {"IE_RG", FieldClass::String, 20},
                             {"TIPOPESSOA", FieldClass::String, 1},
                             {"ENDERECO", FieldClass::String, 100},
                             {"ENDERECONUMERO", FieldClass::String, 30},
                             {"BAIRRO", FieldClass::String, 30},
                             {"IBGE_CIDADE", FieldClass::Integer, 0},
                             {"IBGE_PAIS", FieldClass::Integer, 0}},
                            {{1, Render::Constant, p.tipo},
                             {2, Render::Text, p.codigo},
                             {3, Render::Text, "RAZAOSOCIAL"},
                             {4, Render::Text, "CNPJ_CPF"},
                             {5, Render::Text, "IE_RG"},
                             {6, Render::Text, "TIPOPESSOA"},
                             {7, Render::Text, "ENDERECO"},
                             {8, Render::Text, "ENDERECONUMERO"},
                             {9, Render::Text, "BAIRRO"},
                             {10, Render::Text, "IBGE_CIDADE"},
                             {11, Render::Text, "IBGE_PAIS"}},
                            {.dataset = p.dataset,
                             .provider = p.provider,
                             .tipo = 14,
                             .trailer = 11,
                             .prefixo = "Erro ano Gerar Registro Linha 14 : "});
}

}  // namespace infofiscal
