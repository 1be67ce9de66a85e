// Runs the infofiscal command as a user would, capturing its exit status, stdout and stderr.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace infofiscal::testing {

struct CliResult {
  int status = -1;
  std::string out, err;
};

// Changes to the environment of a program run: a variable set to a value, or unset (nullopt).
using Environment = std::vector<std::pair<std::string, std::optional<std::string>>>;

// Runs the built command with `args` (no shell), in `cwd` when given, with no standard input,
// in this environment changed by `env`.
CliResult run_cli(const std::vector<std::string>& args, const std::string& cwd = "", const Environment& env = {});
// The same for another program.
CliResult run_program(const std::string& program, const std::vector<std::string>& args, const std::string& cwd = "",
                      const Environment& env = {});

// A fresh folder under the test temporary folder; with `info_folder`, it holds
// Arquivos/InfoFiscal as a base folder does.
std::string fresh_dir(const std::string& name, bool info_folder = false);

std::string read_file(const std::string& path);
void write_file(const std::string& path, const std::string& bytes);

}  // namespace infofiscal::testing
