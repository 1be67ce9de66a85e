// Support of the fault tests: the whole state of a folder, to prove that a failed command
// created, changed and left behind nothing.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "support/processo.h"

namespace infofiscal::testing {

// Every file and folder under `dir`, hidden ones included: relative path -> bytes (a folder
// maps to "<pasta>").
std::map<std::string, std::string> arvore(const std::string& dir);

// Mounts a tmpfs of `kib` KiB on the folder `dir` (created when missing). False when this
// process may not mount (not root, no mount namespace, or Windows, which has no tmpfs): the
// caller then skips. (support_posix.cpp, support_windows.cpp)
bool montar_tmpfs(const std::string& dir, int kib, bool somente_leitura = false);
void desmontar(const std::string& dir);

// A device, to be refused as a target: /dev/null, NUL on Windows.
extern const char* const kDispositivo;
// What libpq adds after "Connection refused": nothing on Linux, Windows' socket error code.
extern const char* const kCodigoDaRecusa;
// Whether the tests can make symbolic links: not on Windows, where making one needs a privilege
// (and MinGW's C++ library makes none).
bool links_simbolicos();
// Whether files keep permission bits for the owner, the group and the others: not on Windows,
// which has a read-only attribute only.
bool bits_de_permissao();

// Whether this process is the superuser of Linux (false on Windows).
bool superusuario();
// Whether a folder without write permission keeps this process from creating files in it: not
// for the superuser, and not on Windows, where a folder's read-only attribute means nothing.
bool pastas_somente_leitura_valem();

// While it lives, the file-size limit `bytes` for this process and the programs it starts: a
// write past it fails with EFBIG (SIGXFSZ, which would end the program first, is ignored
// meanwhile). Windows has no such limit: `vale()` is false there.
class LimiteDeArquivo {
 public:
  explicit LimiteDeArquivo(std::uint64_t bytes);
  ~LimiteDeArquivo();
  LimiteDeArquivo(const LimiteDeArquivo&) = delete;
  LimiteDeArquivo& operator=(const LimiteDeArquivo&) = delete;
  bool vale() const { return vale_; }

 private:
  bool vale_ = false;
  std::uint64_t antes_ = 0;
};

// Fills the file system of `dir` until it has no byte left.
void encher_disco(const std::string& dir);

// Starts the built command with `args` and no standard input, its stdout and stderr on the
// descriptors given (-1: the null device); returns at once.
Processo iniciar_cli(const std::vector<std::string>& args, int saida = -1, int erros = -1);
// The hidden temporaries (names beginning with '.') in `dir`.
int temporarios(const std::string& dir);

}  // namespace infofiscal::testing
