// The SPED EFD ICMS/IPI file from the information file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/framework.h"

namespace infofiscal {

// Builds the EFD file's bytes from the information text (UTF-8, CR LF lines).
std::string gerar_efd(std::string_view informacao, const TProcLinhaInfo& info, const TProcProgresso& progresso);

// Every rule of the layout that the file alone can show; one finding per line, empty when the
// file is valid (efd::ValidadorEfd reads a file a piece at a time).
std::vector<std::string> validar_efd(std::string_view arquivo);

}  // namespace infofiscal
