// A run killed (SIGKILL) at random points, many times: SpedInformacao.txt and the fiscal file
// are each always a complete file, the previous one or the new one, never a mix or a fragment.
// What a kill may leave is one hidden temporary ".SpedInformacao.txt.XXXXXX" (or the fiscal
// file's) beside the target, which nothing reads; a run that fails normally leaves none.
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

#include "fiscal/sintegra.h"
#include "host/error.h"
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

TEST(Interrupcao, AKilledRunLeavesThePreviousOrTheNewFileWhole) {
  const std::string base = fresh_dir("interrupcao", true);
  const std::string pasta = base + "/Arquivos/InfoFiscal", info = pasta + "/SpedInformacao.txt";
  const std::string fiscal = base + "/fiscal.txt";
  // Two runs whose files differ in every byte and in length.
  write_file(base + "/a.json", snapshot_grande('a', 6'000'000));
  write_file(base + "/b.json", snapshot_grande('b', 4'000'000));
  const auto args = [&](char qual, const std::string& tipo) {
    return std::vector<std::string>{"exportar", "--fonte", "snapshot:" + base + "/" + qual + ".json", "--registro", "7",
                                    "--tipo", tipo, "--base", base, "--empresa", "1", "--arquivo-fiscal", fiscal};
  };

  // The complete files of each run, and how long a whole run takes. The fiscal file is checked
  // too once a converter accepts this information file.
  std::string tipo = "1";
  if (esperar(iniciar(args('b', tipo))) != 0) tipo = "3";
  const bool com_fiscal = tipo == "1";
  std::map<char, std::string> infos, fiscais;
  Clock::duration duracao{};
  for (const char qual : {'b', 'a'}) {
    const auto inicio = Clock::now();
    ASSERT_EQ(esperar(iniciar(args(qual, tipo))), 0);
    duracao = std::max(duracao, Clock::now() - inicio);
    infos[qual] = read_file(info);
    if (com_fiscal) fiscais[qual] = read_file(fiscal);
  }
  ASSERT_NE(infos['a'], infos['b']);
  const auto sobrando = [&] { return temporarios(pasta) + temporarios(base); };

  std::random_device semente;
  const unsigned seed = semente();
  SCOPED_TRACE("semente " + std::to_string(seed));
  std::mt19937 gerador(seed);
  // Kill points spread over the whole run and a little past it.
  std::uniform_int_distribution<long> ponto(0, std::chrono::duration_cast<std::chrono::microseconds>(duracao).count() * 6 / 5);
  char atual = 'a';
  int tentativas = 0, no_meio = 0, sobras = 0;
  const auto limite = Clock::now() + std::chrono::seconds(40);
  for (; tentativas < 60 && Clock::now() < limite; ++tentativas) {
    const char nova = atual == 'a' ? 'b' : 'a';
    const int antes = sobrando();
    const pid_t pid = iniciar(args(nova, tipo));
    std::this_thread::sleep_for(std::chrono::microseconds(ponto(gerador)));
    kill(pid, SIGKILL);
    const int status = esperar(pid);

    const std::string agora = read_file(info);
    ASSERT_TRUE(agora == infos[atual] || agora == infos[nova])
        << "tentativa " << tentativas << ": SpedInformacao.txt com " << agora.size() << " bytes, nem o anterior nem o novo";
    if (com_fiscal) {
      const std::string f = read_file(fiscal);
      ASSERT_TRUE(f == fiscais[atual] || f == fiscais[nova]) << "tentativa " << tentativas << ": arquivo fiscal partido";
    }
    const int deixados = sobrando() - antes;
    EXPECT_LE(deixados, 1);
    no_meio += deixados > 0;
    sobras += deixados;
    if (status == 0) {
      EXPECT_EQ(deixados, 0);
    }
    if (agora == infos[nova]) atual = nova;
  }
  std::cout << "[ interrupcao ] " << tentativas << " mortes, " << no_meio << " durante a gravação, "
            << sobras << " temporários deixados\n";
  RecordProperty("tentativas", tentativas);
  RecordProperty("durante_a_gravacao", no_meio);
  EXPECT_GE(tentativas, 20);
  EXPECT_GT(no_meio, 0) << "nenhuma morte caiu durante a gravação";

  // A run after all that is whole again, and adds no temporary of its own.
  const int antes = sobrando();
  ASSERT_EQ(esperar(iniciar(args('b', tipo))), 0);
  EXPECT_EQ(read_file(info), infos['b']);
  EXPECT_EQ(sobrando(), antes);
}

}  // namespace
}  // namespace infofiscal
