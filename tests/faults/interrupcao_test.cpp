// A run killed (SIGKILL) at random points, many times: SpedInformacao.txt and the fiscal file
// are each always a complete file, the previous one or the new one, never a mix or a fragment
// (each on its own: the information file waits, complete, for the converter, so a run killed
// between the two renames leaves the new fiscal file beside the previous information file).
// What a kill may leave is one hidden temporary per file, ".SpedInformacao.txt.XXXXXX" and the
// fiscal file's, beside its target, which nothing reads; a run that fails normally leaves none.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "host/sources/sql_source.h"
#include "support/sql_script.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using namespace testing;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// A snapshot whose line 01 carries `tamanho` bytes of `letra` in C07: a large file to write.
std::string snapshot_grande(char letra, std::size_t tamanho) {
  return Snapshot()
      .registro(7, {{"CDMES", 3}, {"ANO", 2024}, {"NUMREGANTERIOR", std::string(tamanho, letra)}})
      .document()
      .dump();
}

pid_t iniciar(const std::vector<std::string>& args) {
  const pid_t pid = fork();
  if (pid == 0) {
    const int nada = ::open("/dev/null", O_RDWR);
    dup2(nada, 0);
    dup2(nada, 1);
    dup2(nada, 2);
    std::vector<char*> argv{const_cast<char*>(INFOFISCAL_CLI)};
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execv(INFOFISCAL_CLI, argv.data());
    _exit(127);
  }
  return pid;
}

int esperar(pid_t pid) {
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// Hidden temporaries that the atomic writes left in `dir`.
int temporarios(const std::string& dir) {
  int n = 0;
  for (const auto& e : fs::directory_iterator(dir)) n += e.path().filename().string().rfind('.', 0) == 0;
  return n;
}

// Two runs, `a` and `b`, that write the same files with different bytes: each run once whole,
// then killed at random points while the other's files are in place, again and again.
// `arquivos` are the files both write; each must be, after every kill, one of the two whole.
void matar_muitas_vezes(const std::string& base, const std::map<char, std::vector<std::string>>& args,
                        const std::vector<std::string>& arquivos) {
  const std::string pasta = base + "/Arquivos/InfoFiscal";
  std::map<std::string, std::map<char, std::string>> inteiros;  // file -> run -> its bytes
  Clock::duration duracao{};
  for (const char qual : {'b', 'a'}) {
    const auto inicio = Clock::now();
    ASSERT_EQ(esperar(iniciar(args.at(qual))), 0);
    duracao = std::max(duracao, Clock::now() - inicio);
    for (const auto& f : arquivos) inteiros[f][qual] = read_file(f);
  }
  for (const auto& f : arquivos) ASSERT_NE(inteiros[f]['a'], inteiros[f]['b']) << f;
  const auto sobrando = [&] { return temporarios(pasta) + temporarios(base); };

  std::random_device semente;
  const unsigned seed = semente();
  SCOPED_TRACE("semente " + std::to_string(seed));
  std::mt19937 gerador(seed);
  // Kill points spread over the whole run and a little past it.
  std::uniform_int_distribution<long> ponto(0, std::chrono::duration_cast<std::chrono::microseconds>(duracao).count() * 6 / 5);
  std::map<std::string, char> atual;  // which run's bytes each file holds
  for (const auto& f : arquivos) atual[f] = 'a';
  char proxima = 'b';
  int tentativas = 0, no_meio = 0, sobras = 0;
  const auto limite = Clock::now() + std::chrono::seconds(30);
  for (; tentativas < 60 && Clock::now() < limite; ++tentativas, proxima = proxima == 'a' ? 'b' : 'a') {
    const int antes = sobrando();
    const pid_t pid = iniciar(args.at(proxima));
    std::this_thread::sleep_for(std::chrono::microseconds(ponto(gerador)));
    kill(pid, SIGKILL);
    const int status = esperar(pid);

    for (const auto& f : arquivos) {
      const std::string agora = read_file(f);
      ASSERT_TRUE(agora == inteiros[f][atual[f]] || agora == inteiros[f][proxima])
          << "tentativa " << tentativas << ": " << f << " com " << agora.size() << " bytes, nem o anterior nem o novo";
      if (agora == inteiros[f][proxima]) atual[f] = proxima;
    }
    const int deixados = sobrando() - antes;
    EXPECT_LE(deixados, static_cast<int>(arquivos.size()));
    no_meio += deixados > 0;
    sobras += deixados;
    if (status == 0) {
      EXPECT_EQ(deixados, 0);
    }
  }
  std::cout << "[ interrupcao ] " << tentativas << " mortes, " << no_meio << " durante a gravação, " << sobras
            << " temporários deixados\n";
  ::testing::Test::RecordProperty("tentativas", tentativas);
  ::testing::Test::RecordProperty("durante_a_gravacao", no_meio);
  EXPECT_GE(tentativas, 20);

  // A run after all that is whole again, and adds no temporary of its own.
  const int antes = sobrando();
  ASSERT_EQ(esperar(iniciar(args.at('b'))), 0);
  for (const auto& f : arquivos) EXPECT_EQ(read_file(f), inteiros[f]['b']) << f;
  EXPECT_EQ(sobrando(), antes);
}

// One large information file: a line 01 of megabytes.
TEST(Interrupcao, AKilledRunLeavesThePreviousOrTheNewInformationFileWhole) {
  const std::string base = fresh_dir("interrupcao", true);
  // Two runs whose files differ in every byte and in length.
  write_file(base + "/a.json", snapshot_grande('a', 6'000'000));
  write_file(base + "/b.json", snapshot_grande('b', 4'000'000));
  const auto args = [&](char qual) {
    return std::vector<std::string>{"exportar", "--fonte", "snapshot:" + base + "/" + qual + ".json", "--registro", "7",
                                    "--tipo", "3", "--base", base, "--empresa", "1"};
  };
  matar_muitas_vezes(base, {{'a', args('a')}, {'b', args('b')}}, {base + "/Arquivos/InfoFiscal/SpedInformacao.txt"});
}

// The demo month from its database: the SINTEGRA run of register 1 and the SPED EFD run of
// register 2, both writing SpedInformacao.txt and the same fiscal file.
TEST(Interrupcao, AKilledRunLeavesThePreviousOrTheNewInformationAndFiscalFilesWhole) {
  const std::string base = fresh_dir("interrupcao-demo", true);
  run_sql_script("sqlite:" + base + "/erp.db", demo_script());
  const auto args = [&](const std::string& registro) {
    return std::vector<std::string>{"exportar", "--fonte", "sqlite:" + base + "/erp.db", "--registro", registro, "--tipo",
                                    registro, "--base", base, "--arquivo-fiscal", base + "/fiscal.txt"};
  };
  matar_muitas_vezes(base, {{'a', args("1")}, {'b', args("2")}},
                     {base + "/Arquivos/InfoFiscal/SpedInformacao.txt", base + "/fiscal.txt"});
}

}  // namespace
}  // namespace infofiscal
