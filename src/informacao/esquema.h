// The columns of the information file by name: `L06::Quantidade` is C07 of line 06,
// `L06::kTipo` the line type 6 and `L06::kTrailer` the count of its [C99]. Generated from
// informacao/linhas.def, the one table of every line type's columns.
#pragma once

#include <string_view>

namespace infofiscal::linha {

#define LINHA(L, TIPO, TRAILER)          \
  namespace L {                          \
  inline constexpr int kTipo = TIPO;     \
  inline constexpr int kTrailer = TRAILER; \
  }
#define COLUNA(L, NOME, N) \
  namespace L {            \
  inline constexpr int NOME = N; \
  }
#include "informacao/linhas.def"

// The name of column `coluna` of line type `tipo` as the table gives it ("Quantidade" for C07
// of line 06), for messages; empty for a column the table does not name. Lines 04 and 05 are
// named as the export writes them (not as the stand-alone sales-return generator does).
std::string_view nome_da_coluna(int tipo, int coluna);

}  // namespace infofiscal::linha

namespace infofiscal::linha {

// The year-end inventory is laid out as the month-end one: one generator writes both.
static_assert(L18::Codigo == L16::Codigo && L18::Data == L16::Data && L18::Total == L16::Total &&
              L18::kTrailer == L16::kTrailer);
static_assert(L19::TipoInventario == L17::TipoInventario && L19::Inventario == L17::Inventario &&
              L19::Produto == L17::Produto && L19::Quantidade == L17::Quantidade &&
              L19::PrecoUnitario == L17::PrecoUnitario && L19::PrecoTotal == L17::PrecoTotal &&
              L19::Unidade == L17::Unidade && L19::TipoItem == L17::TipoItem && L19::kTrailer == L17::kTrailer);

}  // namespace infofiscal::linha
