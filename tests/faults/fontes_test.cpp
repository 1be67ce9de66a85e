// Sources that fail under a run: an SQLite database that another program is writing, a
// PostgreSQL server that drops the connection in the middle of the month, and the passwords of
// connection strings, which no message, log or recorded snapshot shows.
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <soci/soci.h>

#include "base/error.h"
#include "faults/support.h"
#include "host/record_source.h"
#include "host/sources/sql_connection.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "support/sql_script.h"

namespace infofiscal {
namespace {

using namespace testing;
using namespace std::chrono_literals;

const std::string kInfo = "/Arquivos/InfoFiscal/SpedInformacao.txt";

// Another program writing the SQLite file: a connection of its own in an exclusive
// transaction, which keeps every reader out until it ends.
class Escritor {
 public:
  explicit Escritor(const std::string& path) {
    sqlite3_open(path.c_str(), &db_);
    sqlite3_exec(db_, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
  }
  ~Escritor() {
    Terminar();
    sqlite3_close(db_);
  }
  void Terminar() { sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr); }

 private:
  sqlite3* db_ = nullptr;
};

TEST(FonteOcupada, AnSqliteDatabaseBeingWrittenIsWaitedForThenRefused) {
  const std::string dir = fresh_dir("fonte-ocupada");
  const std::string path = dir + "/erp.db";
  run_sql_script("sqlite:" + path, demo_script());
  const auto aguardando = [&](int segundos) {
    return "Banco de dados SQLite '" + path + "' bloqueado por outro programa: aguardando até " +
           std::to_string(segundos) + " s";
  };
  const struct {
    const char* nome;
    bool escrevendo;
    std::chrono::milliseconds escrita;  // how long the writer keeps the file
    std::chrono::seconds espera;        // how long the source waits
    std::vector<std::string> avisos;
    std::string erro;
  } casos[] = {
      {"livre", false, 0ms, 1s, {}, ""},
      {"escrito por menos que a espera", true, 300ms, 10s, {aguardando(10)}, ""},
      {"escrito por mais que a espera", true, 3000ms, 1s, {aguardando(1)},
       "Banco de dados SQLite '" + path + "' bloqueado por outro programa há 1 s: tente de novo quando ele terminar de gravar"},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.nome);
    std::optional<Escritor> escritor;
    if (c.escrevendo) escritor.emplace(path);
    std::thread fim([&] {
      std::this_thread::sleep_for(c.escrita);
      if (escritor) escritor->Terminar();
    });
    std::vector<std::string> avisos;
    std::string erro;
    try {
      open_record_source("sqlite:" + path, {.catalog_path = catalog_path(),
                                            .busy_wait = c.espera,
                                            .notice = [&](const std::string& a) { avisos.push_back(a); }});
    } catch (const Error& e) {
      erro = e.what();
    }
    fim.join();
    EXPECT_EQ(avisos, c.avisos);
    EXPECT_EQ(erro, c.erro);
  }
}

// The command waits (30 s at most) for a writer that finishes, saying so once, then runs: the
// writer ends once the command has said that it waits.
TEST(FonteOcupada, TheCommandWaitsForTheWriterAndSaysSo) {
  const std::string dir = fresh_dir("fonte-ocupada-comando", true);
  const std::string path = dir + "/erp.db", erros = dir + "/erros";
  run_sql_script("sqlite:" + path, demo_script());
  const std::string aguardando =
      "infofiscal: Banco de dados SQLite '" + path + "' bloqueado por outro programa: aguardando até 30 s\n";
  Escritor escritor(path);
  const int fd = ::open(erros.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const Processo processo = iniciar_cli({"exportar", "--fonte", "sqlite:" + path, "--registro", "1", "--tipo", "1", "--base", dir,
                                 "--somente-informacao"},
                                -1, fd);
  ::close(fd);
  const auto limite = std::chrono::steady_clock::now() + 20s;
  while (read_file(erros).substr(0, aguardando.size()) != aguardando && std::chrono::steady_clock::now() < limite) std::this_thread::sleep_for(10ms);
  escritor.Terminar();
  EXPECT_EQ(esperar(processo), 0);
  // Said once, before the summary.
  EXPECT_EQ(read_file(erros).substr(0, aguardando.size() + 8), aguardando + "Resumo: ");
  EXPECT_EQ(read_file(dir + kInfo).substr(0, 13), "[C00]01[/C00]");
}

// The PostgreSQL server ends the run's connection while the run waits at step 2.21 (a session
// of this test holds the table of operation natures): one line that names the provider and
// the server's reason, not its FATAL lines and the SQL that was running.
TEST(FontePerdida, APostgresqlConnectionLostMidRunIsOneLineNamingTheProvider) {
  SKIP_WITHOUT(std::string("postgresql"));
  TestDatabase db("postgresql", "perdida", demo_script());
  const std::string dir = fresh_dir("fonte-perdida", true);
  write_file(dir + kInfo, "anterior\r\n");
  auto bloqueio = open_session(db.address());
  *bloqueio << "BEGIN";
  *bloqueio << "LOCK TABLE naturezaoperacao IN ACCESS EXCLUSIVE MODE";
  std::atomic<bool> terminou{false};
  std::thread servidor([&] {
    auto s = open_session(db.address());
    while (!terminou) {
      int encerradas = 0;
      *s << "SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity "
            "WHERE datname = current_database() AND wait_event_type = 'Lock'",
          soci::into(encerradas);
      std::this_thread::sleep_for(50ms);
    }
  });
  const auto r = run_cli({"exportar", "--fonte", db.address(), "--registro", "1", "--tipo", "1", "--base", dir,
                          "--somente-informacao", "--progresso", "nada"});
  terminou = true;
  servidor.join();
  *bloqueio << "ROLLBACK";

  const std::string inicio =
      "Erro ao consultar DspNaturezaOperacao (TabNaturezaOperacao) em '" + db.address() + "': a conexão com o servidor foi perdida: ";
  EXPECT_EQ(r.status, 1);
  EXPECT_THAT(r.err, ::testing::AnyOf(inicio + "terminating connection due to administrator command\n",
                                      inicio + "server closed the connection unexpectedly\n"));
  EXPECT_EQ(read_file(dir + kInfo), "anterior\r\n");
}

// A password in the address: the message on stderr and the recorded snapshot (which keeps the
// message of a failed query) show "***" in its place.
TEST(Senhas, NoMessageNorSnapshotShowsThePassword) {
  SKIP_WITHOUT(std::string("postgresql"));
  TestDatabase db("postgresql", "senha", demo_script() + "DROP TABLE naturezaoperacao CASCADE;\n");
  // The test server trusts loopback connections: the password is given and never checked.
  const std::string uri = db.address();
  const auto arroba = uri.find('@');
  const auto barra = uri.rfind('/'), dois_pontos = uri.rfind(':');
  const struct {
    std::string fonte, mostrada;
  } casos[] = {
      {uri.substr(0, arroba) + ":segredo" + uri.substr(arroba), uri.substr(0, arroba) + ":***" + uri.substr(arroba)},
      {"postgresql:host=127.0.0.1 port=" + uri.substr(dois_pontos + 1, barra - dois_pontos - 1) + " user=infofiscal password=segredo dbname=" + uri.substr(barra + 1),
       "postgresql:host=127.0.0.1 port=" + uri.substr(dois_pontos + 1, barra - dois_pontos - 1) + " user=infofiscal password=*** dbname=" + uri.substr(barra + 1)},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.mostrada);
    const std::string dir = fresh_dir("senha", true);
    const auto r = run_cli({"exportar", "--fonte", c.fonte, "--registro", "1", "--tipo", "1", "--base", dir,
                            "--somente-informacao", "--progresso", "nada", "--gravar-snapshot", dir + "/s.json"});
    EXPECT_EQ(r.status, 1);
    EXPECT_THAT(r.err, ::testing::StartsWith("Erro ao consultar DspNaturezaOperacao (TabNaturezaOperacao) em '" +
                                             c.mostrada + "': a tabela 'naturezaoperacao' não existe no banco"));
    const std::string snapshot = read_file(dir + "/s.json");
    EXPECT_THAT(snapshot, ::testing::HasSubstr(c.mostrada));
    for (const std::string& texto : {r.err, r.out, snapshot}) EXPECT_THAT(texto, ::testing::Not(::testing::HasSubstr("segredo")));
  }
}

}  // namespace
}  // namespace infofiscal
