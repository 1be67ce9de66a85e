// The SQL back end on its own: fetch kinds, binding, conversions, statement reuse and the
// messages of what goes wrong, on SQLite and (when scripts/test set them up) PostgreSQL and
// Firebird.
#include <gtest/gtest.h>

#include <fstream>

#include "base/error.h"
#include "base/system.h"
#include "host/sql_support.h"
#include "host/sources/sql_source.h"
#include "support/sql_script.h"
#include "support/cli.h"

namespace infofiscal {
namespace {

using namespace testing;

const char* const kScript = R"(
CREATE TABLE item (cod INTEGER NOT NULL, nome VARCHAR(30), valor NUMERIC(15,2), quando TIMESTAMP,
                   dia DATE, marca VARCHAR(19), pequeno SMALLINT);
INSERT INTO item VALUES (1, 'Ação', 12.5, '2024-03-05 14:30:00', '2024-03-05', '2024-03-05', 7);
INSERT INTO item VALUES (2, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO item VALUES (3, 'três', 3, '2024-03-31 00:00:00', '2024-03-31', 'texto', 0);
CREATE TABLE grande (n BIGINT, m INTEGER, x DOUBLE PRECISION);
INSERT INTO grande VALUES (12345678901, 2147483647, 0.1);
)";

const char* const kCatalog = R"(-- A catalog for the tests.
-- provider: DspItem
SELECT cod AS COD, nome, valor, quando, dia, marca, pequeno FROM item WHERE cod = ?;

-- provider: DspItem [mysql]
SELECT 1 AS nada FROM item;

-- provider: DspTodos
SELECT * FROM item ORDER BY cod;

-- provider: DspFaixa
-- Data request [anything, first, last]: the first value is not used; a ? in quotes is text.
SELECT cod, nome FROM item
 WHERE cod >= ?2 AND cod <= ?3 AND (nome IS NULL OR nome <> '?')
 ORDER BY cod DESC;

-- provider: DspPorValor
SELECT cod FROM item WHERE valor = ?;

-- provider: DspPorNome
SELECT cod FROM item WHERE nome = ?;

-- provider: DspGrande
-- Integers beyond 32 bits, and float arithmetic in full precision.
SELECT n, m, n * 2 AS dobro, x * 3 AS triplo FROM grande;

-- provider: DspSemTabela
SELECT x FROM nao_existe WHERE x = ?;
)";

const std::vector<FieldDef> kFields = {
    {"COD", FieldClass::Integer},       {"NOME", FieldClass::String, 30}, {"VALOR", FieldClass::Float},
    {"QUANDO", FieldClass::TimeStamp},  {"DIA", FieldClass::TimeStamp},   {"MARCA", FieldClass::TimeStamp},
    {"PEQUENO", FieldClass::Smallint},
};

Packet fetch(RecordSource& source, std::string_view provider, std::vector<Value> args,
             const std::vector<FieldDef>& fields = kFields, FetchKind kind = FetchKind::ParameterOpen) {
  return source.fetch({"TabItem", provider, kind, args, fields});
}

std::string catalog_file() {
  const std::string path = fresh_dir("sql-catalogo") + "/providers.sql";
  write_file(path, kCatalog);
  return path;
}

class SqlSourceTest : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    SKIP_WITHOUT(GetParam());
    db_ = std::make_unique<TestDatabase>(GetParam(), "fonte", kScript);
    source_ = std::make_unique<SqlSource>(db_->address(), catalog_file());
  }

  std::unique_ptr<TestDatabase> db_;
  std::unique_ptr<SqlSource> source_;
};

TEST_P(SqlSourceTest, ParameterOpenGivesOneCellPerDeclaredFieldInItsClass) {
  const Value null;
  const struct {
    std::int64_t key;
    std::vector<Value> row;
  } cases[] = {
      {1, {std::int64_t{1}, std::string("Ação"), 12.5, TimeStamp{2024, 3, 5, 14, 30, 0}, TimeStamp{2024, 3, 5},
           TimeStamp{2024, 3, 5}, std::int64_t{7}}},
      {2, {std::int64_t{2}, null, null, null, null, null, null}},
      // A whole NUMERIC is a float; a text that is no timestamp stays text.
      {3, {std::int64_t{3}, std::string("três"), 3.0, TimeStamp{2024, 3, 31}, TimeStamp{2024, 3, 31},
           std::string("texto"), std::int64_t{0}}},
  };
  for (const auto& c : cases) {
    const Packet packet = fetch(*source_, "DspItem", {c.key});
    EXPECT_EQ(packet.width, kFields.size());
    EXPECT_EQ(packet.cells, c.row) << "cod " << c.key;
  }
  EXPECT_EQ(fetch(*source_, "DspItem", {std::int64_t{9}}).rows(), 0u);
}

TEST_P(SqlSourceTest, LargeIntegersAndComputedFloatsKeepEveryDigit) {
  const Packet packet = fetch(*source_, "DspGrande", {},
                              {{"N", FieldClass::Integer}, {"M", FieldClass::Integer},
                               {"DOBRO", FieldClass::Integer}, {"TRIPLO", FieldClass::Float}});
  EXPECT_EQ(packet.cells, (std::vector<Value>{std::int64_t{12345678901}, std::int64_t{2147483647},
                                              std::int64_t{24691357802}, 0.1 * 3}));
}

TEST_P(SqlSourceTest, ReopenReturnsEveryRowInTheOrderOfTheSelect) {
  const Packet packet = fetch(*source_, "DspTodos", {}, {{"cod", FieldClass::Integer}, {"Nome", FieldClass::String}});
  EXPECT_EQ(packet.cells, (std::vector<Value>{std::int64_t{1}, std::string("Ação"), std::int64_t{2}, Value(),
                                              std::int64_t{3}, std::string("três")}));
}

TEST_P(SqlSourceTest, DataRequestBindsTheArrayByPositionAndIgnoresUnusedValues) {
  const Packet packet = fetch(*source_, "DspFaixa", {std::string("não usado"), std::int64_t{2}, std::int64_t{3}},
                              {{"COD", FieldClass::Integer}}, FetchKind::DataRequest);
  EXPECT_EQ(packet.cells, (std::vector<Value>{std::int64_t{3}, std::int64_t{2}}));
}

TEST_P(SqlSourceTest, TextAndNullParametersAreBoundAsSuch) {
  const std::vector<FieldDef> cod = {{"COD", FieldClass::Integer}};
  EXPECT_EQ(fetch(*source_, "DspPorNome", {std::string("três")}, cod).cells, std::vector<Value>{std::int64_t{3}});
  EXPECT_EQ(fetch(*source_, "DspPorNome", {Value()}, cod).rows(), 0u);
}

TEST_P(SqlSourceTest, OneStatementPerProviderAndKindsOfValuesIsPreparedAndReused) {
  for (std::int64_t key : {1, 2, 3, 1}) fetch(*source_, "DspItem", {key});
  EXPECT_EQ(source_->PreparedStatements(), 1u);
  EXPECT_EQ(fetch(*source_, "DspPorValor", {12.5}, {{"COD", FieldClass::Integer}}).rows(), 1u);
  EXPECT_EQ(fetch(*source_, "DspPorValor", {12.0}, {{"COD", FieldClass::Integer}}).rows(), 0u);
  EXPECT_EQ(source_->PreparedStatements(), 2u);
  fetch(*source_, "DspTodos", {}, {{"COD", FieldClass::Integer}});
  fetch(*source_, "DspTodos", {}, {{"NOME", FieldClass::String}});
  EXPECT_EQ(source_->PreparedStatements(), 3u);
}

TEST_P(SqlSourceTest, FailuresNameTheCulpritAndLeaveTheSourceUsable) {
  const auto message = [&](std::string_view provider, std::vector<Value> args, std::vector<FieldDef> fields) {
    try {
      fetch(*source_, provider, args, fields);
    } catch (const Error& e) {
      return std::string(e.what());
    }
    return std::string("(sem erro)");
  };
  auto fields = kFields;
  fields.push_back({"NAOEXISTE", FieldClass::String});
  EXPECT_EQ(message("DspItem", {std::int64_t{1}}, fields), "Campo 'NAOEXISTE' não encontrado em TabItem");
  // Also when no row comes back: the SELECT lacks the column whatever it finds.
  EXPECT_EQ(message("DspItem", {std::int64_t{9}}, fields), "Campo 'NAOEXISTE' não encontrado em TabItem");
  EXPECT_EQ(message("DspOutro", {}, kFields), "O provedor DspOutro (TabItem) não está no catálogo de provedores");
  EXPECT_EQ(message("DspFaixa", {std::int64_t{1}}, kFields),
            "O provedor DspFaixa usa o parâmetro 2, mas TabItem enviou 1");
  const std::string table = message("DspSemTabela", {std::int64_t{1}}, {{"X", FieldClass::Integer}});
  const std::string name = GetParam() == "firebird" ? "NAO_EXISTE" : "nao_existe";  // as the database spells it
  EXPECT_EQ(table.rfind("Erro ao consultar DspSemTabela (TabItem) em '" + db_->address() + "': a tabela '" + name +
                            "' não existe no banco",
                        0),
            0u)
      << table;
  EXPECT_EQ(fetch(*source_, "DspItem", {std::int64_t{1}}).rows(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Bancos, SqlSourceTest, ::testing::Values("sqlite", "postgresql", "firebird"));

TEST(SqlSourceAddress, UnusableAddressesFailWithAMessageNamingThem) {
  const std::string dir = fresh_dir("sql-enderecos");
  write_file(dir + "/texto.db", "isto não é um banco de dados\n");
  const struct {
    std::string address, message;
  } cases[] = {
      {"sqlite:", "Endereço de fonte de dados incompleto: 'sqlite:' (falta o banco depois de 'sqlite:')"},
      {"sqlite:" + dir + "/sumiu.db", "Banco de dados SQLite '" + dir + "/sumiu.db' não encontrado"},
      {"sqlite:" + dir + "/texto.db", "Não foi possível abrir a fonte de dados 'sqlite:" + dir + "/texto.db': "},
      {"postgresql:host=127.0.0.1 port=1 dbname=x connect_timeout=2",
       "Não foi possível abrir a fonte de dados 'postgresql:host=127.0.0.1 port=1 dbname=x connect_timeout=2': "},
      {"firebird:" + dir + "/sumiu.fdb", "Não foi possível abrir a fonte de dados 'firebird:" + dir + "/sumiu.fdb': "},
      {"mysql:x", "Endereço de fonte de dados desconhecido: 'mysql:x'"},
  };
  for (const auto& c : cases) {
    try {
      open_record_source(c.address, {.catalog_path = catalog_path()});
      ADD_FAILURE() << c.address << " abriu";
    } catch (const Error& e) {
      EXPECT_EQ(std::string(e.what()).rfind(c.message, 0), 0u) << e.what();
    }
  }
  std::ifstream created(dir + "/sumiu.db");
  EXPECT_FALSE(created.good()) << "a missing SQLite file must not be created";
}

// On Windows without Firebird's client (fbclient.dll) the program says so, instead of ending at
// the first call into the missing library.
TEST(SqlSourceAddress, WithoutTheFirebirdClientAFirebirdSourceSaysSo) {
  if (firebird_client_available()) GTEST_SKIP() << "o cliente do Firebird está instalado aqui";
  const std::string address = "firebird:" + fresh_dir("sql-sem-cliente") + "/erp.fdb";
  try {
    open_record_source(address, {.catalog_path = catalog_path()});
    ADD_FAILURE() << address << " abriu";
  } catch (const Error& e) {
    EXPECT_EQ(std::string(e.what()), "Não foi possível abrir a fonte de dados '" + address +
                                         "': o cliente do Firebird (fbclient.dll) não foi encontrado; instale o "
                                         "cliente do Firebird ou copie fbclient.dll para a pasta do programa");
  }
}

TEST(SqlSourceAddress, AMissingCatalogIsNamed) {
  TestDatabase db("sqlite", "sem-catalogo", "CREATE TABLE t (a INTEGER);\n");
  try {
    SqlSource source(db.address(), "/nao/existe/providers.sql");
    ADD_FAILURE();
  } catch (const Error& e) {
    EXPECT_STREQ(e.what(), "Não foi possível ler o catálogo de provedores '/nao/existe/providers.sql'");
  }
}

TEST(SqlSourceAddress, PostgresqlTakesAUriOrAConnectionString) {
  const std::string server = pg_server();
  if (server.empty()) GTEST_SKIP() << kSemPostgres;
  TestDatabase db("postgresql", "enderecos", kScript);
  // postgresql://user@host:port/name  ->  postgresql:host=... port=... user=... dbname=...
  const std::string uri = db.address();
  const auto at = uri.find('@'), colon = uri.rfind(':'), slash = uri.rfind('/');
  const std::string conninfo = "postgresql:user=" + uri.substr(13, at - 13) + " host=" + uri.substr(at + 1, colon - at - 1) +
                               " port=" + uri.substr(colon + 1, slash - colon - 1) + " dbname=" + uri.substr(slash + 1);
  for (const std::string& address : {uri, conninfo}) {
    SqlSource source(address, catalog_file());
    EXPECT_EQ(fetch(source, "DspItem", {std::int64_t{1}}).rows(), 1u) << address;
  }
}

// A script that fails quotes the failing statement; SQLite loads a script in one transaction,
// so the file keeps nothing of it (the table can be created again).
TEST(SqlScript, AFailingStatementIsQuotedAndSqliteKeepsNoneOfTheScript) {
  const std::string address = "sqlite:" + fresh_dir("script-falho") + "/banco.sqlite";
  try {
    run_sql_script(address, "CREATE TABLE t (n INTEGER);\nINSERT INTO t VALUES (1);\n-- o erro:\nINSERT INTO nada\n  VALUES (2);\n");
    ADD_FAILURE();
  } catch (const Error& e) {
    const std::string message = e.what();
    EXPECT_EQ(message.rfind("Erro no script SQL em '" + address + "': ", 0), 0u) << message;
    EXPECT_TRUE(message.ends_with("\nINSERT INTO nada\n  VALUES (2);")) << message;
  }
  EXPECT_NO_THROW(run_sql_script(address, "CREATE TABLE t (n INTEGER);\n"));
}

TEST(SqlCatalog, PlaceholdersCommentsAndVariants) {
  const std::string text =
      "header comment, ignored\n"
      "-- provider: DspA\n"
      "SELECT a FROM t -- why: ? is no placeholder in a comment\n"
      " WHERE a = ? AND b = '?' /* nor ?here */ AND c = ?1 AND d = ?;\n"
      "-- provider: DspB [postgresql]\n"
      "SELECT 2;\n"
      "-- provider: DspB\n"
      "SELECT 1;;\n"
      "-- provider: DspC\n"
      "  \n  SELECT ?2 ; \n";
  const auto sqlite = parse_provider_catalog(text, "sqlite", "c.sql");
  EXPECT_EQ(sqlite.at("DspA").sql, "SELECT a FROM t \n WHERE a = :p1 AND b = '?'   AND c = :p2 AND d = :p3");
  EXPECT_EQ(sqlite.at("DspA").args, (std::vector<std::size_t>{0, 0, 1}));
  // The pieces between the placeholders, for the streams that write the values in.
  EXPECT_EQ(sqlite.at("DspA").between,
            (std::vector<std::string>{"SELECT a FROM t \n WHERE a = ", " AND b = '?'   AND c = ", " AND d = ", ""}));
  EXPECT_EQ(sqlite.at("DspB").sql, "SELECT 1");
  EXPECT_EQ(sqlite.at("DspB").between, std::vector<std::string>{"SELECT 1"});
  EXPECT_EQ(sqlite.at("DspC").sql, "SELECT :p1");
  EXPECT_EQ(sqlite.at("DspC").between, (std::vector<std::string>{"SELECT ", ""}));
  EXPECT_EQ(sqlite.at("DspC").args, std::vector<std::size_t>{1});
  EXPECT_EQ(parse_provider_catalog(text, "postgresql", "c.sql").at("DspB").sql, "SELECT 2");
}

TEST(SqlCatalog, MistakesAreReportedWithFileProviderAndLine) {
  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {"-- provider: DspA\nSELECT 1;\n-- provider: DspA\nSELECT 2;\n",
       "Catálogo 'c.sql', provedor DspA (linha 3): provedor repetido"},
      {"-- provider: DspA\n-- only a comment\n", "Catálogo 'c.sql', provedor DspA (linha 1): falta o SELECT"},
      {"-- provider: DspA\nSELECT ?0;\n",
       "Catálogo 'c.sql', provedor DspA (linha 1): parâmetro ?0 inválido (os parâmetros contam de 1)"},
      {"-- provider: DspA firebird\nSELECT 1;\n", "Catálogo 'c.sql', linha 1: use [banco] depois do nome"},
      {"-- provider:\nSELECT 1;\n", "Catálogo 'c.sql', linha 1: provedor sem nome"},
  };
  for (const auto& c : cases) {
    try {
      parse_provider_catalog(c.text, "sqlite", "c.sql");
      ADD_FAILURE() << c.text;
    } catch (const Error& e) {
      EXPECT_STREQ(e.what(), c.message);
    }
  }
}

}  // namespace
}  // namespace infofiscal
