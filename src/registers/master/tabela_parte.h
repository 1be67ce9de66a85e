// Line 14, the business parties: clients and suppliers differ only in what a Parte row says;
// TabelaParte turns that row into the list's table.
#pragma once

#include <array>
#include <string_view>

#include "registers/master/dtm_a_tablista.h"

namespace infofiscal {

// One member of the party family.
struct Parte {
  std::string_view dataset;   // "TabCliente" / "TabFornecedor"
  std::string_view provider;  // "DspListaCliente" / "DspListaFornecedor"
  std::string_view codigo;    // key field, written in C02
  std::string_view tipo;      // party kind, C01: "1" clients, "2" suppliers
};

// Not copyable: the list table points into it.
class TabelaParte {
 public:
  explicit TabelaParte(const Parte& p);
  TabelaParte(const TabelaParte&) = delete;
  TabelaParte& operator=(const TabelaParte&) = delete;

  const TabelaLista& Lista() const { return lista_; }

 private:
  std::array<FieldDef, 10> campos_;
  std::array<Column, 11> colunas_;
  TabelaLista lista_;
};

}  // namespace infofiscal
