// Line 12, the item catalogues: equipment, products, inputs and consumption products differ
// only in what a Catalogo row says; TabelaCatalogo turns that row into the list's table.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

// One member of the catalogue family.
struct Catalogo {
  std::string_view dataset;                  // e.g. "TabProduto"
  std::string_view provider;                 // e.g. "DspListaProduto"
  std::string_view codigo;                   // key field, written in C02
  std::string_view descricao;                // description field, written in C03
  int tamanho_descricao;                     // its declared size
  std::string_view tipo;                     // item kind, C01
  std::span<const std::string_view> chaves = {};  // switches; none: always written
  bool cest = false;                         // declares CODCEST and writes it in C06
  bool adiciona = true;                      // false: lines are never added (inputs)
};

// The list table of a catalogue member: fields code, description, SIGLAUNIDADE, NUMNCM (and
// CODCEST); columns kind, code, description, unit, NCM, then C06 empty or the CEST.
// Not copyable: the list table points into it.
class TabelaCatalogo {
 public:
  explicit TabelaCatalogo(const Catalogo& c);
  TabelaCatalogo(const TabelaCatalogo&) = delete;
  TabelaCatalogo& operator=(const TabelaCatalogo&) = delete;

  const TabelaLista& Lista() const { return lista_; }

 private:
  std::vector<FieldDef> campos_;
  std::vector<Column> colunas_;
  TabelaLista lista_;
};

}  // namespace infofiscal
