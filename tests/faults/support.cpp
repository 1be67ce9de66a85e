#include "faults/support.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "support/cli.h"

namespace infofiscal::testing {

namespace fs = std::filesystem;

std::map<std::string, std::string> arvore(const std::string& dir) {
  std::map<std::string, std::string> out;
  for (const auto& entry : fs::recursive_directory_iterator(dir)) {
    const std::string rel = fs::relative(entry.path(), dir).string();
    out[rel] = entry.is_directory() ? "<pasta>" : read_file(entry.path().string());
  }
  return out;
}

bool montar_tmpfs(const std::string& dir, int kib, bool somente_leitura) {
  fs::create_directories(dir);
  const std::string opcoes = "size=" + std::to_string(kib) + "k,mode=0755";
  return ::mount("tmpfs", dir.c_str(), "tmpfs", somente_leitura ? MS_RDONLY : 0, opcoes.c_str()) == 0;
}

void desmontar(const std::string& dir) { ::umount2(dir.c_str(), MNT_DETACH); }

void encher_disco(const std::string& dir) {
  const std::string path = dir + "/enchimento";
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const std::string bloco(4096, 'x');
  while (::write(fd, bloco.data(), bloco.size()) > 0) {
  }
  while (::write(fd, bloco.data(), 1) > 0) {
  }
  ::close(fd);
}

}  // namespace infofiscal::testing
