// Register lines of the information file built by column name, as the converters' tests and
// benchmarks write them: linha_informacao(L05::kTipo, L05::kTrailer, {{L05::Papel, "2"}, ...}).
#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "informacao/esquema.h"

namespace infofiscal::testing {

struct Coluna {
  int numero;  // a name of informacao/esquema.h, L06::Quantidade
  std::string_view valor;
};

// "[C00]tt[/C00]", the columns C01 up to the last one given (those not given empty), then
// "[C99]nn[/C99]"; without a line end.
inline std::string linha_informacao(int tipo, int trailer, std::initializer_list<Coluna> colunas) {
  int ultima = 0;
  for (const Coluna& c : colunas) ultima = std::max(ultima, c.numero);
  std::vector<std::string_view> valores(ultima + 1);
  for (const Coluna& c : colunas) valores[c.numero] = c.valor;
  std::string s = fmt::format("[C00]{:02}[/C00]", tipo);
  for (int n = 1; n <= ultima; ++n) s += fmt::format("[C{0:02}]{1}[/C{0:02}]", n, valores[n]);
  return s + fmt::format("[C99]{:02}[/C99]", trailer);
}

}  // namespace infofiscal::testing
