// Runs the infofiscal command as a user would, capturing its exit status, stdout and stderr.
#pragma once

#include <string>
#include <vector>

namespace infofiscal::testing {

struct CliResult {
  int status = -1;
  std::string out, err;
};

// Runs the built command with `args` (no shell), in `cwd` when given, with no standard input.
CliResult run_cli(const std::vector<std::string>& args, const std::string& cwd = "");
// The same for another built program.
CliResult run_program(const std::string& program, const std::vector<std::string>& args, const std::string& cwd = "");

// A fresh folder under the test temporary folder; with `info_folder`, it holds
// Arquivos/InfoFiscal as a base folder does.
std::string fresh_dir(const std::string& name, bool info_folder = false);

std::string read_file(const std::string& path);
void write_file(const std::string& path, const std::string& bytes);

}  // namespace infofiscal::testing
