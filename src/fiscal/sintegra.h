// The SINTEGRA file (Convênio ICMS 57/95) from the information file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fiscal/saida.h"
#include "host/framework.h"
#include "informacao/texto.h"

namespace infofiscal {

// Writes the SINTEGRA file of the information text into `saida`, checked by the validator as
// it goes. Throws Error naming the information line or note at fault, or "O arquivo SINTEGRA
// gerado não passou na conferência:" with the findings; `saida` then holds a refused file,
// which the caller must not keep. The text is read twice (the catalogue, then the rest), or
// once when it can only be (the catalogue is needed only at the end: the counts for the
// progress are what that reading lacks).
void gerar_sintegra(TextoDeInformacao& informacao, SaidaFiscal& saida, const TProcLinhaInfo& info,
                    const TProcProgresso& progresso);
// The same from a text in memory into memory, for tests and benchmarks.
std::string gerar_sintegra(std::string_view informacao, const TProcLinhaInfo& info, const TProcProgresso& progresso);

// Every rule of the layout that the file alone can show; one finding per line, empty when the
// file is valid (sintegra::ValidadorSintegra reads a file a piece at a time).
std::vector<std::string> validar_sintegra(std::string_view arquivo);

}  // namespace infofiscal
