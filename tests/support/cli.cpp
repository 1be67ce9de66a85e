#include "support/cli.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

namespace infofiscal::testing {

namespace fs = std::filesystem;

CliResult run_cli(const std::vector<std::string>& args, const std::string& cwd, const Environment& env) {
  return run_program(INFOFISCAL_CLI, args, cwd, env);
}

CliResult run_program(const std::string& program, const std::vector<std::string>& args, const std::string& cwd,
                      const Environment& env) {
  const std::string dir = fresh_dir("cli-saida");
  const std::string out = dir + "/out", err = dir + "/err";
  const pid_t pid = fork();
  if (pid == 0) {
    if (!cwd.empty() && chdir(cwd.c_str()) != 0) _exit(127);
    for (const auto& [name, value] : env) {
      if (value)
        setenv(name.c_str(), value->c_str(), 1);
      else
        unsetenv(name.c_str());
    }
    const int in = open("/dev/null", O_RDONLY);
    const int o = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const int e = open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(in, 0);
    dup2(o, 1);
    dup2(e, 2);
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), read_file(out), read_file(err)};
}

std::string fresh_dir(const std::string& name, bool info_folder) {
  const fs::path dir = fs::path(::testing::TempDir()) / ("infofiscal-" + std::to_string(getpid())) / name;
  fs::remove_all(dir);
  fs::create_directories(info_folder ? dir / "Arquivos" / "InfoFiscal" : dir);
  return dir.string();
}

std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

void write_file(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace infofiscal::testing
