#include "faults/support.h"

#include <fcntl.h>
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

Processo iniciar_cli(const std::vector<std::string>& args, int saida, int erros) {
  return iniciar({INFOFISCAL_CLI, args, "", {}, saida, erros});
}

int temporarios(const std::string& dir) {
  int n = 0;
  for (const auto& e : fs::directory_iterator(dir)) n += e.path().filename().string().rfind('.', 0) == 0;
  return n;
}

}  // namespace infofiscal::testing
