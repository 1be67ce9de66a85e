#include "support/cli.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "base/system.h"

namespace infofiscal::testing {

namespace fs = std::filesystem;

CliResult run_cli(const std::vector<std::string>& args, const std::string& cwd, const Environment& env) {
  return run_program(INFOFISCAL_CLI, args, cwd, env);
}

CliResult run_program(const std::string& program, const std::vector<std::string>& args, const std::string& cwd,
                      const Environment& env) {
  const std::string dir = fresh_dir("cli-saida");
  const std::string out = dir + "/out", err = dir + "/err";
  const int o = ::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const int e = ::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const Processo processo = iniciar({program, args, cwd, env, o, e});
  ::close(o);
  ::close(e);
  const int status = esperar(processo);
  return {status, read_file(out), read_file(err)};
}

// Some tests leave a read-only file behind on purpose (a target the run may not replace). Windows
// refuses to delete one, and Wine reuses process ids, so a later run would find the old folder
// and fail to empty it: every entry is made writable first.
namespace {
void remove_tree(const fs::path& dir) {
  std::error_code ignored;
  for (fs::recursive_directory_iterator it(dir, ignored), end; it != end; it.increment(ignored))
    fs::permissions(it->path(), fs::perms::owner_write, fs::perm_options::add, ignored);
  fs::remove_all(dir);
}
}  // namespace

std::string fresh_dir(const std::string& name, bool info_folder) {
  const fs::path dir = path_of(::testing::TempDir()) / path_of("infofiscal-" + std::to_string(getpid())) / path_of(name);
  remove_tree(dir);
  fs::create_directories(info_folder ? dir / "Arquivos" / "InfoFiscal" : dir);
  return utf8_of(dir);
}

std::string caminho_normal(const std::string& path) { return utf8_of(path_of(path).lexically_normal()); }

std::string read_file(const std::string& path) {
  std::ifstream in(path_of(path), std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

void write_file(const std::string& path, const std::string& bytes) {
  std::ofstream(path_of(path), std::ios::binary) << bytes;
}

}  // namespace infofiscal::testing
