// A run killed (SIGKILL) at random points, many times: SpedInformacao.txt and the fiscal file
// are each always a complete file, the previous one or the new one, never a mix or a fragment
// (each on its own: the information file waits, complete, for the converter, so a run killed
// between the two renames leaves the new fiscal file beside the previous information file).
// What a kill may leave is one hidden temporary per file, ".SpedInformacao.txt.XXXXXX" and the
// fiscal file's, beside its target, which nothing reads; a run that fails normally leaves none,
// and neither does one interrupted by SIGINT, SIGTERM or SIGHUP, which says "interrompido".
// Windows has no signals to send: there the kills (TerminateProcess) run, the signal tests skip.
#include <fcntl.h>
#ifndef _WIN32
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "base/atomic_file.h"
#include "base/interruption.h"
#include "base/list_saver.h"
#include "base/string_list.h"
#include "faults/support.h"
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
    ASSERT_EQ(esperar(iniciar_cli(args.at(qual))), 0);
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
  // At least 20 kills however slow the machine (a loaded one, or Wine, starts each run slowly);
  // more, up to 60, while the 30 seconds last.
  const auto limite = Clock::now() + std::chrono::seconds(30);
  for (; tentativas < 20 || (tentativas < 60 && Clock::now() < limite);
       ++tentativas, proxima = proxima == 'a' ? 'b' : 'a') {
    const int antes = sobrando();
    const Processo processo = iniciar_cli(args.at(proxima));
    std::this_thread::sleep_for(std::chrono::microseconds(ponto(gerador)));
    matar(processo);
    const int status = esperar(processo);

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
  ASSERT_EQ(esperar(iniciar_cli(args.at('b'))), 0);
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

#ifdef _WIN32
constexpr const char* kSemSinais = "sinais do Linux (SIGINT, SIGTERM, SIGHUP, SIGSTOP, SIGPIPE): o Windows não os tem";
#else
const struct Sinal {
  int numero;
  const char* nome;
} kSinais[] = {{SIGINT, "SIGINT"}, {SIGTERM, "SIGTERM"}, {SIGHUP, "SIGHUP"}};

// What a signal may find in the middle of a write: an atomic file being written, or the
// list's saver writing its blocks on a thread of its own. Runs in a child process, which it
// then interrupts once the temporary exists.
const struct Escrita {
  const char* nome;
  void (*escrever_e_interromper)(const std::string& alvo, int sinal);
} kEscritas[] = {
    {"arquivo atômico",
     [](const std::string& alvo, int sinal) {
       AtomicFile arquivo(alvo);
       arquivo.write("metade");
       ::raise(sinal);
     }},
    {"lista gravada em outra thread",
     [](const std::string& alvo, int sinal) {
       TStringList lista(64);  // blocks of 64 bytes: the saver's thread writes while lines are added
       ListSaver gravacao(alvo, lista, false);
       for (int i = 0; i < 100; ++i) lista.Add("uma linha do arquivo de informações, longa o bastante");
       while (temporarios(fs::path(alvo).parent_path().string()) == 0) std::this_thread::yield();
       ::raise(sinal);
     }},
};

#endif

TEST(Interrupcao, ASignalRemovesTheTemporaryOfEveryWriterAndEndsByThatSignal) {
#ifdef _WIN32
  GTEST_SKIP() << kSemSinais;
#else
  for (const Escrita& escrita : kEscritas) {
    for (const Sinal& sinal : kSinais) {
      SCOPED_TRACE(std::string(escrita.nome) + ", " + sinal.nome);
      const std::string dir = fresh_dir("interrupcao-sinal");
      const std::string alvo = dir + "/alvo/SpedInformacao.txt";
      fs::create_directory(dir + "/alvo");
      write_file(alvo, "anterior\r\n");
      const int erros = ::open((dir + "/erros").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      const pid_t pid = fork();
      if (pid == 0) {
        dup2(erros, 2);
        handle_interruptions("teste");
        escrita.escrever_e_interromper(alvo, sinal.numero);
        _exit(0);
      }
      ::close(erros);
      EXPECT_EQ(esperar({pid}), 128 + sinal.numero);
      EXPECT_EQ(read_file(dir + "/erros"), std::string("teste: interrompido (") + sinal.nome + ")\n");
      EXPECT_EQ(temporarios(dir + "/alvo"), 0);
      EXPECT_EQ(read_file(alvo), "anterior\r\n");
    }
  }
#endif
}

#ifndef _WIN32
// Stops the run `pid` as soon as `pasta` holds a temporary; false when the run ended first or
// had already renamed the temporary when it stopped (it is then let go and waited for).
bool parar_com_temporario(Processo processo, const std::string& pasta) {
  const pid_t pid = static_cast<pid_t>(processo.id);
  for (;;) {
    int status = 0;
    if (waitpid(pid, &status, WNOHANG) == pid) return false;
    if (temporarios(pasta) > 0) break;
    std::this_thread::sleep_for(std::chrono::microseconds(50));
  }
  kill(pid, SIGSTOP);
  int status = 0;
  waitpid(pid, &status, WUNTRACED);
  if (WIFSTOPPED(status) && temporarios(pasta) > 0) return true;
  if (WIFSTOPPED(status)) {
    kill(pid, SIGCONT);
    esperar(processo);
  }
  return false;
}

#endif

// The command itself, interrupted while it writes SpedInformacao.txt (a line 01 of 20 MB).
TEST(Interrupcao, AnInterruptedRunSaysSoAndLeavesThePreviousFile) {
#ifdef _WIN32
  GTEST_SKIP() << kSemSinais;
#else
  const std::string base = fresh_dir("interrupcao-comando", true);
  const std::string pasta = base + "/Arquivos/InfoFiscal", info = pasta + "/SpedInformacao.txt";
  write_file(base + "/s.json", snapshot_grande('x', 20'000'000));
  const std::vector<std::string> args{"exportar", "--fonte", "snapshot:" + base + "/s.json", "--registro", "7",
                                      "--tipo", "3", "--base", base};
  for (const Sinal& sinal : kSinais) {
    SCOPED_TRACE(sinal.nome);
    int status = -1, tentativas = 0;
    for (; status < 0 && tentativas < 30; ++tentativas) {
      write_file(info, "anterior\r\n");
      const int erros = ::open((base + "/erros").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      const Processo processo = iniciar_cli(args, -1, erros);
      ::close(erros);
      if (!parar_com_temporario(processo, pasta)) continue;
      kill(static_cast<pid_t>(processo.id), sinal.numero);
      kill(static_cast<pid_t>(processo.id), SIGCONT);
      status = esperar(processo);
    }
    ASSERT_GE(status, 0) << "the temporary was never seen in " << tentativas << " runs";
    EXPECT_EQ(status, 128 + sinal.numero);
    EXPECT_EQ(read_file(base + "/erros"), std::string("infofiscal: interrompido (") + sinal.nome + ")\n");
    EXPECT_EQ(temporarios(pasta), 0);
    EXPECT_EQ(read_file(info), "anterior\r\n");
  }
#endif
}

// `exportar ... | head -1`: the reader goes after the first line; the files are written whole
// all the same, and the run ends well.
TEST(Interrupcao, AReaderThatClosesStdoutDoesNotStopTheFiles) {
#ifdef _WIN32
  GTEST_SKIP() << kSemSinais;
#else
  const std::string esperado = fresh_dir("interrupcao-pipe-esperado", true);
  const std::string base = fresh_dir("interrupcao-pipe", true);
  run_sql_script("sqlite:" + base + "/erp.db", demo_script());
  const auto args = [&](const std::string& dir) {
    return std::vector<std::string>{"exportar", "--fonte", "sqlite:" + base + "/erp.db", "--registro", "1", "--tipo", "1",
                                    "--base", dir, "--arquivo-fiscal", dir + "/fiscal.txt"};
  };
  ASSERT_EQ(run_cli(args(esperado)).status, 0);
  int tubo[2];
  ASSERT_EQ(pipe(tubo), 0);
  ::close(tubo[0]);  // no reader at all: the first line already meets a broken pipe
  const Processo processo = iniciar_cli(args(base), tubo[1]);
  ::close(tubo[1]);
  EXPECT_EQ(esperar(processo), 0);
  for (const char* arquivo : {"/Arquivos/InfoFiscal/SpedInformacao.txt", "/fiscal.txt"})
    EXPECT_EQ(read_file(base + arquivo), read_file(esperado + arquivo)) << arquivo;
#endif
}

}  // namespace
}  // namespace infofiscal
