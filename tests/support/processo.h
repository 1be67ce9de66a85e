// Programs that the tests start, in each system's own way: fork and exec (processo_posix.cpp),
// CreateProcessW (processo_windows.cpp).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace infofiscal::testing {

// Changes to the environment of a program run: a variable set to a value, or unset (nullopt).
using Environment = std::vector<std::pair<std::string, std::optional<std::string>>>;

// How to start a program: no shell, no standard input.
struct Lancamento {
  std::string programa;
  std::vector<std::string> args;
  std::string pasta;  // the working folder; empty: this process's
  Environment env;    // changes to this process's environment
  // Descriptors of the C library for its stdout and stderr (each stays this process's to
  // close); -1: the null device.
  int saida = -1, erros = -1;
};

// A program started: its process id (Linux) or handle (Windows), until waited for.
struct Processo {
  std::intptr_t id = -1;
};

// Starts the program and returns at once.
Processo iniciar(const Lancamento& lancamento);
// Waits for it to end: its exit status; on Linux 128 + the number of the signal that ended it.
int esperar(Processo processo);
// Ends it at once, without a chance to clean up: SIGKILL on Linux; on Windows TerminateProcess,
// with the status a shell reports for SIGKILL (137).
void matar(Processo processo);

}  // namespace infofiscal::testing
