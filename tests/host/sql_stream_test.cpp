// The PostgreSQL streams that read a whole note list ahead: every cell is the value the
// provider's own query gives, the fetch's values reach the server as they are whatever text
// they hold, and what goes wrong halfway (a server error, a value that does not read, a type
// the stream does not know) throws instead of handing out a wrong row.
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>
#include <soci/soci.h>

#include "base/error.h"
#include "host/sql_support.h"
#include "host/sources/sql_catalog.h"
#include "host/sources/sql_connection.h"

namespace infofiscal {
namespace {

using namespace testing;

class SqlStreamTest : public ::testing::Test {
 protected:
  void SetUp() override {
    SKIP_WITHOUT(std::string("postgresql"));
    db_ = std::make_unique<TestDatabase>("postgresql", "fluxo", "CREATE TABLE nada (n INTEGER);\n");
    connection_ = open_connection(db_->address(), {});
  }

  // `select` (with `?N` placeholders) as a provider of the catalog.
  static ProviderQuery query(const std::string& select) {
    return parse_provider_catalog("-- provider: DspTeste\n" + select + ";\n", "postgresql", "teste.sql").at("DspTeste");
  }

  // Every row of the stream of `select`, cell by cell.
  std::vector<std::vector<Value>> rows(const std::string& select, const std::vector<Value>& args = {}) {
    const auto cursor = connection_->Stream(query(select), args);
    std::vector<std::vector<Value>> out;
    while (cursor->Next()) {
      out.emplace_back();
      for (std::size_t c = 0; c < cursor->columns.Count(); ++c) out.back().push_back(cursor->Cell(c));
    }
    return out;
  }

  // The same rows through the provider's own prepared query.
  std::vector<std::vector<Value>> own_rows(const std::string& select, const std::vector<Value>& args = {}) {
    const auto statement = connection_->Prepare(query(select), args);
    statement->Run(args);
    std::vector<std::vector<Value>> out;
    while (statement->Next()) {
      out.emplace_back();
      for (std::size_t c = 0; c < statement->columns.Count(); ++c) out.back().push_back(statement->Cell(c));
    }
    return out;
  }

  std::unique_ptr<TestDatabase> db_;
  std::unique_ptr<SqlConnection> connection_;
};

TEST_F(SqlStreamTest, EveryCellIsTheValueOfTheProvidersOwnQuery) {
  struct Caso {
    std::string expressao;
    Value esperado;
  };
  const std::vector<Caso> casos = {
      {"CAST(7 AS SMALLINT)", std::int64_t{7}},
      {"CAST(-2147483648 AS INTEGER)", std::int64_t{-2147483648LL}},
      {"CAST(-9223372036854775808 AS BIGINT)", std::numeric_limits<std::int64_t>::min()},
      {"CAST(12.50 AS NUMERIC(15,2))", 12.5},
      {"CAST(-0.01 AS NUMERIC(15,2))", -0.01},
      {"CAST(0.1 AS DOUBLE PRECISION) * 3", 0.1 * 3},
      {"CAST(1.5 AS REAL)", 1.5},
      {"DATE '2024-02-29'", TimeStamp{2024, 2, 29}},
      {"TIMESTAMP '2024-12-31 23:59:58'", TimeStamp{2024, 12, 31, 23, 59, 58}},
      {"CAST(NULL AS INTEGER)", std::monostate{}},
      {"CAST(NULL AS VARCHAR(10))", std::monostate{}},
      {"CAST('' AS VARCHAR(10))", std::string()},
      // Text that looks like COPY's null and escapes must come back as it is stored.
      {"CAST('\\N' AS TEXT)", std::string("\\N")},
      {"CAST('\\' AS TEXT)", std::string("\\")},
      {"CAST('a\\tb\\\\nc' AS TEXT)", std::string("a\\tb\\\\nc")},
      {"E'tab\\there\\nnova\\rlinha\\bbs\\fff\\013vt'", std::string("tab\there\nnova\rlinha\bbs\fff\vvt")},
      {"CAST('Ação Ñ €' AS VARCHAR(20))", std::string("Ação Ñ €")},
      {"CAST('ab' AS CHAR(4))", std::string("ab  ")},
  };
  // All in one row (the cells split at the right tabs), and each alone as the first column.
  std::string todas = "SELECT ";
  std::vector<Value> esperados;
  for (std::size_t i = 0; i < casos.size(); ++i) {
    todas += (i ? ", " : "") + casos[i].expressao + " AS c" + std::to_string(i);
    esperados.push_back(casos[i].esperado);
    const std::string sozinha = "SELECT " + casos[i].expressao + " AS v FROM generate_series(1, 2)";
    EXPECT_EQ(rows(sozinha), own_rows(sozinha)) << casos[i].expressao;
    EXPECT_EQ(rows(sozinha), (std::vector<std::vector<Value>>{{casos[i].esperado}, {casos[i].esperado}}))
        << casos[i].expressao;
  }
  EXPECT_EQ(rows(todas), std::vector<std::vector<Value>>{esperados});
  EXPECT_EQ(rows(todas + " WHERE false"), std::vector<std::vector<Value>>{});
}

TEST_F(SqlStreamTest, TheFetchValuesReachTheServerAsTheyAre) {
  struct Caso {
    Value valor;
    Value texto;  // CAST(?1 AS TEXT) on the server
  };
  const std::vector<Caso> casos = {
      {std::int64_t{-42}, std::string("-42")},
      {2.5, std::string("2.5")},
      {TimeStamp{2024, 1, 31, 10, 20, 30}, std::string("2024-01-31 10:20:30")},
      {std::monostate{}, std::monostate{}},
      {std::string("D'Ávila"), std::string("D'Ávila")},
      {std::string("a\\b\\'c"), std::string("a\\b\\'c")},
      {std::string("$1 ?2 :p1 $$"), std::string("$1 ?2 :p1 $$")},
      {std::string("'); DROP TABLE nada; --"), std::string("'); DROP TABLE nada; --")},
      {std::string("tab\tlinha\n"), std::string("tab\tlinha\n")},
  };
  for (const Caso& c : casos) {
    const std::vector<Value> args = {c.valor, std::int64_t{3}};
    EXPECT_EQ(rows("SELECT CAST(?1 AS TEXT) AS v, ?2 AS n", args), (std::vector<std::vector<Value>>{{c.texto, std::string("3")}}))
        << debug_text(c.valor);
  }
  // A value used twice, and in arithmetic: read as the type its place asks for.
  const std::vector<Value> args = {std::int64_t{3}};
  EXPECT_EQ(rows("SELECT n FROM generate_series(1, 9) n WHERE n >= ?1 AND n < ?1 + 2 ORDER BY n", args),
            (std::vector<std::vector<Value>>{{std::int64_t{3}}, {std::int64_t{4}}}));
  EXPECT_EQ(rows("SELECT count(*) AS n FROM nada"), (std::vector<std::vector<Value>>{{std::int64_t{0}}}));
}

TEST_F(SqlStreamTest, AServerErrorHalfwayThrowsAfterTheRowsBeforeIt) {
  const auto cursor = connection_->Stream(
      query("SELECT n, CAST(CASE WHEN n = 20000 THEN 'x' ELSE '1' END AS INTEGER) AS v FROM generate_series(1, 30000) n"),
      {});
  std::int64_t lidas = 0;
  try {
    while (cursor->Next()) {
      ASSERT_EQ(cursor->Cell(0), Value{lidas + 1});
      ++lidas;
    }
    FAIL() << "the stream ended without the server's error";
  } catch (const soci::soci_error& e) {
    EXPECT_NE(std::string(e.what()).find("invalid input syntax for type integer: \"x\""), std::string::npos) << e.what();
  }
  EXPECT_LT(lidas, 20000);
  EXPECT_FALSE(cursor->Next()) << "a failed stream has no more rows";
}

TEST_F(SqlStreamTest, WhatTheStreamCannotReadNamesTheColumnAndTheValue) {
  struct Caso {
    std::string select, mensagem;
  };
  for (const Caso& c : {
           Caso{"SELECT 1 AS n, CAST('infinity' AS TIMESTAMP) AS emissao",
                "Valor 'infinity' ilegível na coluna 'emissao' da leitura antecipada"},
           Caso{"SELECT 1 AS n, DATE '0044-03-15 BC' AS dia", "Valor '0044-03-15 BC' ilegível na coluna 'dia' da leitura antecipada"},
       }) {
    const auto cursor = connection_->Stream(query(c.select), {});
    ASSERT_TRUE(cursor->Next()) << c.select;
    EXPECT_EQ(cursor->Cell(0), Value{std::int64_t{1}});
    try {
      cursor->Cell(1);
      ADD_FAILURE() << c.select;
    } catch (const Error& e) {
      EXPECT_STREQ(e.what(), c.mensagem.c_str());
    }
  }
  // Before any row: a column of a type it does not read, a table that is not there.
  try {
    connection_->Stream(query("SELECT 1 AS n, true AS pago"), {});
    ADD_FAILURE() << "a boolean column was streamed";
  } catch (const soci::soci_error& e) {
    EXPECT_STREQ(e.what(), "a coluna 'pago' tem um tipo que a leitura antecipada não lê");
  }
  try {
    connection_->Stream(query("SELECT x FROM nao_existe WHERE x = ?1"), std::vector<Value>{std::int64_t{1}});
    ADD_FAILURE() << "a missing table was streamed";
  } catch (const soci::soci_error& e) {
    EXPECT_NE(std::string(e.what()).find("relation \"nao_existe\" does not exist"), std::string::npos) << e.what();
  }
}

TEST_F(SqlStreamTest, AStreamLeftHalfwayLeavesNothingToTheNext) {
  // Each stream is left after its first row, with the rest still coming or already here; the
  // next streams, on the connections kept, read their own rows only.
  for (int vez = 0; vez < 3; ++vez) {
    for (const int linhas : {3, 200000}) {
      const auto cursor = connection_->Stream(
          query("SELECT n, 'deixada' AS t FROM generate_series(1, ?1) n"), std::vector<Value>{std::int64_t{linhas}});
      ASSERT_TRUE(cursor->Next());
    }
    EXPECT_EQ(rows("SELECT ?1 AS v", {std::string("a seguinte")}), (std::vector<std::vector<Value>>{{std::string("a seguinte")}}));
  }
}

}  // namespace
}  // namespace infofiscal
