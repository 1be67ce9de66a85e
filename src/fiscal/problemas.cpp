#include "fiscal/problemas.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/renderings.h"

namespace infofiscal {

void ProblemasDoMes::anota(const DataProblem& problema) {
  auto grupo = std::find_if(grupos_.begin(), grupos_.end(), [&](const Grupo& g) { return g.tipo == problema.kind(); });
  if (grupo == grupos_.end()) grupo = grupos_.insert(grupos_.end(), Grupo{problema.kind(), {}});
  grupo->casos.emplace_back(problema.what());
}

std::size_t ProblemasDoMes::quantos() const {
  std::size_t n = 0;
  for (const Grupo& g : grupos_) n += g.casos.size();
  return n;
}

std::string ProblemasDoMes::cabecalho(std::string_view arquivo) const {
  return fmt::format("{} no mês; o arquivo {} não foi gravado:", counted(quantos(), "problema", "problemas"), arquivo);
}

std::string ProblemasDoMes::texto(std::string_view arquivo, std::size_t exemplos) const {
  std::string out = cabecalho(arquivo);
  for (const Grupo& g : grupos_) {
    out += fmt::format("\n{} ({}):", g.tipo, g.casos.size());
    const std::size_t mostrados = std::min(exemplos, g.casos.size());
    for (std::size_t i = 0; i < mostrados; ++i) out += "\n  " + g.casos[i];
    if (mostrados < g.casos.size()) out += fmt::format("\n  ... e mais {}", g.casos.size() - mostrados);
  }
  return out;
}

std::string ProblemasDoMes::resumo(std::string_view arquivo) const { return texto(arquivo, kExemplos); }

std::string ProblemasDoMes::lista(std::string_view arquivo) const { return texto(arquivo, SIZE_MAX) + "\n"; }

}  // namespace infofiscal
