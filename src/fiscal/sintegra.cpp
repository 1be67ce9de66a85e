#include "fiscal/sintegra.h"

#include "fiscal/sintegra_conversor.h"
#include "fiscal/sintegra_validador.h"
#include "base/error.h"

namespace infofiscal {

std::string gerar_sintegra(std::string_view informacao, const TProcLinhaInfo& info, const TProcProgresso& progresso) {
  std::string arquivo = sintegra::ConversorSintegra(info, progresso).gerar(informacao);
  if (info) info("Conferindo o arquivo SINTEGRA");
  const std::vector<std::string> achados = validar_sintegra(arquivo);
  if (!achados.empty()) {
    std::string mensagem = "O arquivo SINTEGRA gerado não passou na conferência:";
    for (const auto& a : achados) mensagem += "\n" + a;
    throw Error(mensagem);
  }
  return arquivo;
}

std::vector<std::string> validar_sintegra(std::string_view arquivo) {
  sintegra::ValidadorSintegra validador;
  validador.le(arquivo);
  return validador.conclui();
}

}  // namespace infofiscal
