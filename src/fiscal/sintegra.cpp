#include "fiscal/sintegra.h"

#include "host/error.h"

namespace infofiscal {

std::string gerar_sintegra(std::string_view, const TProcLinhaInfo&, const TProcProgresso&) {
  throw Error("Conversor SINTEGRA ainda não disponível nesta versão");
}

std::vector<std::string> validar_sintegra(std::string_view) {
  throw Error("Validador SINTEGRA ainda não disponível nesta versão");
}

}  // namespace infofiscal
