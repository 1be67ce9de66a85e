#include "faults/support.h"

namespace infofiscal::testing {

// Windows has no tmpfs: the rows that need one skip.
bool montar_tmpfs(const std::string&, int, bool) { return false; }

void desmontar(const std::string&) {}

const char* const kDispositivo = "NUL";
const char* const kCodigoDaRecusa = " (0x0000274D/10061)";  // WSAECONNREFUSED

bool links_simbolicos() { return false; }

bool bits_de_permissao() { return false; }

bool superusuario() { return false; }

bool pastas_somente_leitura_valem() { return false; }

LimiteDeArquivo::LimiteDeArquivo(std::uint64_t) {}

LimiteDeArquivo::~LimiteDeArquivo() = default;

}  // namespace infofiscal::testing
