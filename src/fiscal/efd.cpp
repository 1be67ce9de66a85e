#include "fiscal/efd.h"

#include "host/error.h"

namespace infofiscal {

std::string gerar_efd(std::string_view, const TProcLinhaInfo&, const TProcProgresso&) {
  throw Error("Conversor SPED EFD ainda não disponível nesta versão");
}

std::vector<std::string> validar_efd(std::string_view) {
  throw Error("Validador SPED EFD ainda não disponível nesta versão");
}

}  // namespace infofiscal
