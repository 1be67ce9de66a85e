#include "base/error.h"

#include <cerrno>

#include "base/system.h"

namespace infofiscal {

std::string system_reason(int erro) {
  switch (erro) {
    case ENOENT: return "arquivo ou pasta inexistente";
    case EACCES:
    case EPERM: return "permissão negada";
    case ENOSPC: return "disco cheio";
    case kQuotaExceeded: return "cota de disco esgotada";
    case EROFS: return "sistema de arquivos somente para leitura";
    case EISDIR: return "é uma pasta";
    case ENOTDIR: return "parte do caminho não é uma pasta";
    case EIO: return "erro de entrada e saída no disco";
    case EFBIG: return "arquivo grande demais";
    case ENAMETOOLONG: return "nome longo demais";
    case EMFILE:
    case ENFILE: return "arquivos abertos demais";
    case EBUSY: return "recurso ocupado";
    case ETXTBSY: return "arquivo em uso";
    case ELOOP: return "links simbólicos demais ou em ciclo";
    default: return system_error_text(erro);
  }
}

}  // namespace infofiscal
