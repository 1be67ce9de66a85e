// The list families whose members differ in a few values only: the item catalogues (line 12)
// and the business parties (line 14). Each member states its row; the table is built from it.
#pragma once

#include <span>
#include <string_view>

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

// One member of the catalogue family (equipment, products, inputs, consumption products).
struct Catalogo {
  std::string_view dataset;                       // e.g. "TabProduto"
  std::string_view provider;                      // e.g. "DspListaProduto"
  std::string_view codigo;                        // key field, written in C02
  std::string_view descricao;                     // description field, written in C03
  int tamanho_descricao;                          // its declared size
  std::string_view tipo;                          // item kind, C01
  std::span<const std::string_view> chaves = {};  // switches; none: always written
  bool cest = false;                              // declares CODCEST and writes it in C06
  bool adiciona = true;                           // false: lines are never added (inputs)
};

// Fields code, description, SIGLAUNIDADE, NUMNCM (and CODCEST); columns kind, code,
// description, unit, NCM, then C06 empty or the CEST.
TabelaListaPropria TabelaCatalogo(const Catalogo& c);

// One member of the party family (clients, suppliers).
struct Parte {
  std::string_view dataset;   // "TabCliente" / "TabFornecedor"
  std::string_view provider;  // "DspListaCliente" / "DspListaFornecedor"
  std::string_view codigo;    // key field, written in C02
  std::string_view tipo;      // party kind, C01: "1" clients, "2" suppliers
};

TabelaListaPropria TabelaParte(const Parte& p);

}  // namespace infofiscal
