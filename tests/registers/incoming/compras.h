// Test support for the purchase modules: rows of the purchase providers and one driver call.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/fixture.h"

namespace infofiscal::testing {

enum class Kind { Equipamento, Produto, ProdConsumo, Insumo };

// The kind code of C01 and the list request, the switch and the item provider of a kind.
int kind_code(Kind kind);
const char* kind_switch(Kind kind);
const char* item_provider(Kind kind);

// A row of DspCompra: PDE 3 and a value in every field (see the expected lines of the tests).
json compra(int cod, const json& overrides = json::object());
// A row of DspCompra with PDE 3 and note number `numnf`, every other field null.
json compra_minima(int cod, const std::string& numnf);
// A row of DspCompraFornecedor.
json fornecedor(int cod);
// An item row that every item provider accepts (CDEQUIPAMENTO 801, CDPRODUTO 501,
// CDPRODCONSUMO 601; DESCEQUIPAMENTO "Compressor", DESCPRODUTO "Parafuso 3/8").
json item(int cod, const json& overrides = json::object());

// One row of the purchase list.
struct Nota {
  int cod;
  std::string modelo;
  std::string numnf;
};

// Fiscal register 7 with the kind's switch "S" (`registro` applied on top), the list of `notas` for the
// kind and a minimal header (compra_minima) for each; no supplier or item rows. The entries of
// `antes` come first, so that they answer before the default ones.
Snapshot notas(Kind kind, const std::vector<Nota>& notas, const json& registro = json::object(),
               Snapshot antes = Snapshot());

// The minimal line 04 and the empty-supplier line 05 of compra_minima.
std::string l04_minima(Kind kind, int row, const std::string& numnf);
std::string l05_vazia(Kind kind, int row);

// An item row with only its codes and ITEMCOMPRA set, and its line 06.
json item_minimo(int cod, int itemcompra);
std::string l06_minima(Kind kind, int row, int counter);

// What one driver call did: its lines, its progress reports and its error ("" when none).
struct Outcome {
  std::vector<std::string> lines;
  std::vector<std::pair<int, int>> progress;
  std::string error;
};
Outcome drive(Kind kind, const Snapshot& snapshot, int filtro = 0);

}  // namespace infofiscal::testing
