#include "fiscal/sintegra_dados.h"

#include <fmt/format.h>

#include "support/golden.h"

namespace infofiscal::testing {

std::string linha_informacao(int tipo, const std::vector<std::string>& colunas, int trailer) {
  std::string l = fmt::format("[C00]{:02}[/C00]", tipo);
  for (std::size_t i = 0; i < colunas.size(); ++i) l += fmt::format("[C{0:02}]{1}[/C{0:02}]", i + 1, colunas[i]);
  return l + fmt::format("[C99]{:02}[/C99]", trailer);
}

std::string informacao_exemplo() { return golden("../informacao/sintegra_marco_2024.txt"); }

std::vector<std::string> registros_exemplo() {
  std::vector<std::string> out;
  for (std::string& l : golden_lines("sintegra_marco_2024.txt")) out.push_back(l.substr(0, l.size() - 1));  // the CR
  return out;
}

std::string arquivo_de(const std::vector<std::string>& registros) {
  std::string arquivo;
  for (const auto& r : registros) arquivo += r + "\r\n";
  return arquivo;
}

}  // namespace infofiscal::testing
