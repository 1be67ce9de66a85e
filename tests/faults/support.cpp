#include "faults/support.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/wait.h>
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

pid_t iniciar_cli(const std::vector<std::string>& args, int saida, int erros) {
  const pid_t pid = fork();
  if (pid == 0) {
    const int nada = ::open("/dev/null", O_RDWR);
    dup2(nada, 0);
    dup2(saida >= 0 ? saida : nada, 1);
    dup2(erros >= 0 ? erros : nada, 2);
    std::vector<char*> argv{const_cast<char*>(INFOFISCAL_CLI)};
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execv(INFOFISCAL_CLI, argv.data());
    _exit(127);
  }
  return pid;
}

int esperar(pid_t pid) {
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

int temporarios(const std::string& dir) {
  int n = 0;
  for (const auto& e : fs::directory_iterator(dir)) n += e.path().filename().string().rfind('.', 0) == 0;
  return n;
}

}  // namespace infofiscal::testing
