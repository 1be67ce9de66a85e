#include "registers/master/tabela_catalogo.h"

#include <string>

namespace infofiscal {

namespace {

// C06 of a product: its CEST, except the placeholder "00.000.00" (exactly), which is left empty.
void Cest(const ClientDataSet& tab, TLinhaRegistro& linha) {
  const std::string cest = tab.FieldByName("CODCEST").AsString();
  linha.Text(6, cest == "00.000.00" ? std::string() : cest);
}

}  // namespace

TabelaCatalogo::TabelaCatalogo(const Catalogo& c)
    : campos_{{c.codigo, FieldClass::Integer, 0},
              {c.descricao, FieldClass::String, c.tamanho_descricao},
              {"SIGLAUNIDADE", FieldClass::String, 10},
              {"NUMNCM", FieldClass::String, 20}},
      colunas_{{1, Render::Constant, c.tipo},
               {2, Render::Text, c.codigo},
               {3, Render::Text, c.descricao},
               {4, Render::Text, "SIGLAUNIDADE"},
               {5, Render::Text, "NUMNCM"}},
      lista_{} {
  if (c.cest)
    campos_.push_back({"CODCEST", FieldClass::String, 20});
  else
    colunas_.push_back({6, Render::Empty});
  lista_ = TabelaLista{c.dataset, c.provider, campos_, c.chaves, 12, colunas_, 6, "Erro ano Gerar Registro Linha 12 : ",
                       c.cest ? &Cest : nullptr, c.adiciona};
}

}  // namespace infofiscal
