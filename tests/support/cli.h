// Runs the infofiscal command as a user would, capturing its exit status, stdout and stderr.
#pragma once

#include <string>
#include <vector>

#include "support/processo.h"

namespace infofiscal::testing {

struct CliResult {
  int status = -1;
  std::string out, err;
};

// Runs the built command with `args` (no shell), in `cwd` when given, with no standard input,
// in this environment changed by `env`.
CliResult run_cli(const std::vector<std::string>& args, const std::string& cwd = "", const Environment& env = {});
// The same for another program.
CliResult run_program(const std::string& program, const std::vector<std::string>& args, const std::string& cwd = "",
                      const Environment& env = {});

// A fresh folder under the test temporary folder; with `info_folder`, it holds
// Arquivos/InfoFiscal as a base folder does.
std::string fresh_dir(const std::string& name, bool info_folder = false);

// `path` as the program shows a path it made normal (the summary's, the installed catalog's): on
// Windows with backslashes; on Linux as given (the tests' paths are normal already).
std::string caminho_normal(const std::string& path);

std::string read_file(const std::string& path);
void write_file(const std::string& path, const std::string& bytes);

}  // namespace infofiscal::testing
