#include "support/processo.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace infofiscal::testing {

Processo iniciar(const Lancamento& l) {
  const pid_t pid = fork();
  if (pid != 0) return {pid};
  if (!l.pasta.empty() && chdir(l.pasta.c_str()) != 0) _exit(127);
  for (const auto& [name, value] : l.env) {
    if (value)
      setenv(name.c_str(), value->c_str(), 1);
    else
      unsetenv(name.c_str());
  }
  const int nada = open("/dev/null", O_RDWR);
  dup2(nada, 0);
  dup2(l.saida >= 0 ? l.saida : nada, 1);
  dup2(l.erros >= 0 ? l.erros : nada, 2);
  std::vector<char*> argv{const_cast<char*>(l.programa.c_str())};
  for (const auto& a : l.args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  execv(l.programa.c_str(), argv.data());
  _exit(127);
}

namespace {

int estado(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status); }

}  // namespace

int esperar(Processo p) {
  int status = 0;
  waitpid(static_cast<pid_t>(p.id), &status, 0);
  return estado(status);
}

void matar(Processo p) { kill(static_cast<pid_t>(p.id), SIGKILL); }

}  // namespace infofiscal::testing
