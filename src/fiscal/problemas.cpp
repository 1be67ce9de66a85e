#include "fiscal/problemas.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/renderings.h"
#include "fiscal/identidade.h"
#include "informacao/esquema.h"

namespace infofiscal {

void ProblemasDoMes::anota(const DataProblem& problema) {
  auto grupo = std::find_if(grupos_.begin(), grupos_.end(), [&](const Grupo& g) { return g.tipo == problema.kind(); });
  if (grupo == grupos_.end()) grupo = grupos_.insert(grupos_.end(), Grupo{problema.kind(), {}});
  grupo->casos.emplace_back(problema.what());
}

std::string codigo_numerico(std::string_view valor, std::string_view onde) {
  if (const auto v = identidade::verificar_codigo(valor); !v)
    throw DataProblem("código com caractere não numérico", fmt::format("{} '{}': {}", onde, valor, v.motivo));
  return identidade::sem_mascara(valor);
}

void confere_valores_do_item(const LinhaInformacao& item) {
  using namespace linha;
  static constexpr std::pair<int, std::string_view> kValores[] = {
      {L06::Quantidade, "quantidade"},        {L06::PrecoTotal, "valor total"},
      {L06::Desconto, "desconto"},            {L06::Frete, "frete"},
      {L06::Seguro, "seguro"},                {L06::OutrasDespesas, "outras despesas"},
      {L06::IcmsBase, "base do ICMS"},        {L06::IcmsAliquota, "alíquota do ICMS"},
      {L06::IcmsValor, "valor do ICMS"},      {L06::IcmsStBase, "base do ICMS-ST"},
      {L06::IcmsStValor, "valor do ICMS-ST"}, {L06::IpiValor, "valor do IPI"},
  };
  for (const auto& [coluna, nome] : kValores)
    if (item.centesimos(coluna) < 0)
      throw DataProblem("valor negativo num item",
                        fmt::format("item {} com {} negativo: '{}'", item.texto(L06::Item), nome, item.texto(coluna)));
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
