#include "fiscal/sintegra_dados.h"

#include "support/golden.h"

namespace infofiscal::testing {

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
