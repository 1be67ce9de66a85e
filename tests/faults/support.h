// Support of the fault tests: the whole state of a folder, to prove that a failed command
// created, changed and left behind nothing.
#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace infofiscal::testing {

// Every file and folder under `dir`, hidden ones included: relative path -> bytes (a folder
// maps to "<pasta>").
std::map<std::string, std::string> arvore(const std::string& dir);

// Mounts a tmpfs of `kib` KiB on the folder `dir` (created when missing). False when this
// process may not mount (not root, or no mount namespace): the caller then skips.
bool montar_tmpfs(const std::string& dir, int kib, bool somente_leitura = false);
void desmontar(const std::string& dir);

// Fills the file system of `dir` until it has no byte left.
void encher_disco(const std::string& dir);

// Starts the built command with `args` and no standard input, its stdout and stderr on the
// descriptors given (-1: /dev/null); returns at once with its process id.
pid_t iniciar_cli(const std::vector<std::string>& args, int saida = -1, int erros = -1);
// Waits for `pid`: its exit status, or 128 + the number of the signal that ended it.
int esperar(pid_t pid);
// The hidden temporaries (names beginning with '.') in `dir`.
int temporarios(const std::string& dir);

}  // namespace infofiscal::testing
