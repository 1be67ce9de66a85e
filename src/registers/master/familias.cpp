#include "registers/master/familias.h"

#include <string>

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

namespace {

// C06 of a product: its CEST, except the placeholder "00.000.00" (exactly), which is left empty.
void Cest(const ClientDataSet& tab, TLinhaRegistro& linha) {
  const std::string cest = tab.FieldByName("CODCEST").AsString();
  linha.Text(L12::Cest, cest == "00.000.00" ? std::string() : cest);
}

}  // namespace

TabelaListaPropria TabelaCatalogo(const Catalogo& c) {
  std::vector<FieldDef> campos = {{c.codigo, FieldClass::Integer, 0},
                                  {c.descricao, FieldClass::String, c.tamanho_descricao},
                                  {"SIGLAUNIDADE", FieldClass::String, 10},
                                  {"NUMNCM", FieldClass::String, 20}};
  std::vector<Column> colunas = {{L12::TipoItem, Render::Constant, c.tipo},
                                 {L12::Codigo, Render::Text, c.codigo},
                                 {L12::Descricao, Render::Text, c.descricao},
                                 {L12::Unidade, Render::Text, "SIGLAUNIDADE"},
                                 {L12::Ncm, Render::Text, "NUMNCM"}};
  if (c.cest)
    campos.push_back({"CODCEST", FieldClass::String, 20});
  else
    colunas.push_back({L12::Cest, Render::Empty});
  return TabelaListaPropria(std::move(campos), std::move(colunas),
                            {.dataset = c.dataset,
                             .provider = c.provider,
                             .chaves = c.chaves,
                             .tipo = L12::kTipo,
                             .trailer = L12::kTrailer,
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
                            {{L14::Papel, Render::Constant, p.tipo},
                             {L14::Codigo, Render::Text, p.codigo},
                             {L14::RazaoSocial, Render::Text, "RAZAOSOCIAL"},
                             {L14::CnpjCpf, Render::Text, "CNPJ_CPF"},
                             {L14::IeRg, Render::Text, "IE_RG"},
                             {L14::TipoPessoa, Render::Text, "TIPOPESSOA"},
                             {L14::Endereco, Render::Text, "ENDERECO"},
                             {L14::Numero, Render::Text, "ENDERECONUMERO"},
                             {L14::Bairro, Render::Text, "BAIRRO"},
                             {L14::IbgeCidade, Render::Text, "IBGE_CIDADE"},
                             {L14::IbgePais, Render::Text, "IBGE_PAIS"}},
                            {.dataset = p.dataset,
                             .provider = p.provider,
                             .tipo = L14::kTipo,
                             .trailer = L14::kTrailer,
                             .prefixo = "Erro ano Gerar Registro Linha 14 : "});
}

}  // namespace infofiscal
