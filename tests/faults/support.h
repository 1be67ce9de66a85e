// Support of the fault tests: the whole state of a folder, to prove that a failed command
// created, changed and left behind nothing.
#pragma once

#include <map>
#include <string>

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

}  // namespace infofiscal::testing
