// Line 06, the item of a note, is laid out alike for purchases and outgoing notes: only the
// names of a few source fields and the item type of C15 differ.
#pragma once

#include <string_view>
#include <vector>

#include "registers/register_line.h"

namespace infofiscal {

struct CamposItem06 {
  std::string_view descricao;        // C05
  std::string_view unidade;          // C06
  std::string_view outras_despesas;  // C12
  std::string_view tipo_item;        // C15, a constant
};

// C05 to C38 of line 06.
std::vector<Column> colunas_item_06(const CamposItem06& campos);

}  // namespace infofiscal
