#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include "faults/support.h"

namespace infofiscal::testing {

bool montar_tmpfs(const std::string& dir, int kib, bool somente_leitura) {
  std::filesystem::create_directories(dir);
  const std::string opcoes = "size=" + std::to_string(kib) + "k,mode=0755";
  return ::mount("tmpfs", dir.c_str(), "tmpfs", somente_leitura ? MS_RDONLY : 0, opcoes.c_str()) == 0;
}

void desmontar(const std::string& dir) { ::umount2(dir.c_str(), MNT_DETACH); }

const char* const kDispositivo = "/dev/null";
const char* const kCodigoDaRecusa = "";

bool links_simbolicos() { return true; }

bool bits_de_permissao() { return true; }

bool superusuario() { return ::geteuid() == 0; }

bool pastas_somente_leitura_valem() { return !superusuario(); }

LimiteDeArquivo::LimiteDeArquivo(std::uint64_t bytes) {
  rlimit limite{};
  getrlimit(RLIMIT_FSIZE, &limite);
  antes_ = limite.rlim_cur;
  std::signal(SIGXFSZ, SIG_IGN);
  limite.rlim_cur = std::min<rlim_t>(bytes, limite.rlim_max);
  vale_ = setrlimit(RLIMIT_FSIZE, &limite) == 0;
}

LimiteDeArquivo::~LimiteDeArquivo() {
  rlimit limite{};
  getrlimit(RLIMIT_FSIZE, &limite);
  limite.rlim_cur = antes_;
  setrlimit(RLIMIT_FSIZE, &limite);
  std::signal(SIGXFSZ, SIG_DFL);
}

}  // namespace infofiscal::testing
