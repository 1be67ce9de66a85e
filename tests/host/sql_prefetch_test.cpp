// Fetching ahead in the SQL source: the answers of a per-note provider read from one stream for
// the whole note list are those of its own query, note by note, and any failure falls back to
// that query, so that an error surfaces at the note where it would have.
#include <algorithm>

#include <gtest/gtest.h>

#include "export/controle_exportacao.h"
#include "base/error.h"
#include "host/sql_support.h"
#include "host/sources/sql_source.h"
#include "support/cli.h"

namespace infofiscal {
namespace {

using namespace testing;

// 600 notes, listed by `ordem`, which is not their code's order; every seventh note has no items,
// the others 1 to 4.
std::string script() {
  std::string notas, itens;
  for (int cod = 1; cod <= 600; ++cod) {
    notas += (cod > 1 ? ", (" : "(") + std::to_string(cod) + ", " + std::to_string(cod * 37 % 601) + ")";
    if (cod % 7 == 0) continue;
    for (int n = 1; n <= 1 + cod % 4; ++n)
      itens += (itens.empty() ? "(" : ", (") + std::to_string(cod) + ", " + std::to_string(n) + ", 'item " +
               std::to_string(n) + "', " + std::to_string(cod) + "." + std::to_string(n * 5) + ")";
  }
  return "CREATE TABLE nota (cod INTEGER NOT NULL PRIMARY KEY, ordem INTEGER NOT NULL);\n"
         "CREATE TABLE item (nota INTEGER NOT NULL, n INTEGER NOT NULL, texto VARCHAR(20), valor NUMERIC(15,2));\n"
         "INSERT INTO nota VALUES " + notas + ";\nINSERT INTO item VALUES " + itens + ";\n";
}

// `falha` is an expression that fails for one note (note 300) in SQLite and in PostgreSQL, or
// a plain value; `tabela` the items' table of the stream's query, `ordem` its order.
std::string catalog(const std::string& falha_sqlite, const std::string& falha_pg, const std::string& tabela = "item",
                    const std::string& ordem = "l.ordem, l.cod") {
  const auto itens = [&](const std::string& falha, const std::string& variante) {
    return "-- provider: DspItens" + variante + "\nSELECT nota, n, texto, valor, " + falha +
           " AS extra FROM item WHERE nota = ? ORDER BY n;\n\n-- prefetch: DspItens DspLista NOTA" + variante +
           "\nSELECT i.nota, i.n, i.texto, i.valor, " + falha + " AS extra\n  FROM nota l JOIN " + tabela +
           " i ON i.nota = l.cod\n WHERE l.cod >= ?1\n ORDER BY " + ordem + ", i.n;\n\n";
  };
  return "-- provider: DspLista\nSELECT cod AS nota FROM nota WHERE cod >= ?1 ORDER BY ordem, cod;\n\n" +
         itens(falha_sqlite, "") + itens(falha_pg, " [postgresql]");
}

const std::vector<FieldDef> kLista = {{"NOTA", FieldClass::Integer}};
const std::vector<FieldDef> kItens = {
    {"N", FieldClass::Integer}, {"TEXTO", FieldClass::String, 20}, {"VALOR", FieldClass::Float},
    {"NOTA", FieldClass::Integer}, {"EXTRA", FieldClass::Integer}};

// What the fetches of the notes of the list gave, note by note, up to the first failure.
struct Leitura {
  std::vector<std::vector<Value>> itens;
  std::string erro;
};

Leitura ler(SqlSource& source) {
  const std::vector<Value> de = {std::int64_t{1}};
  const Packet lista = source.fetch({"TabLista", "DspLista", FetchKind::DataRequest, de, kLista});
  Leitura leitura;
  try {
    for (const Value& nota : lista.cells) {
      const std::vector<Value> args = {nota};
      leitura.itens.push_back(source.fetch({"TabItens", "DspItens", FetchKind::ParameterOpen, args, kItens}).cells);
    }
  } catch (const Error& e) {
    leitura.erro = e.what();
  }
  return leitura;
}

class SqlPrefetchTest : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    SKIP_WITHOUT(GetParam());
    db_ = std::make_unique<TestDatabase>(GetParam(), "antecipada", script());
  }

  // The reading with and without fetching ahead, over the catalog `text`.
  std::pair<Leitura, Leitura> ler_com_e_sem(const std::string& text, std::size_t& antecipadas) {
    const std::string path = fresh_dir("catalogo-antecipada") + "/providers.sql";
    write_file(path, text);
    SqlSource com(db_->address(), path), sem(db_->address(), path);
    com.Prefetch(true);
    sem.Prefetch(false);
    auto resultado = std::make_pair(ler(com), ler(sem));
    antecipadas = com.PrefetchedAnswers();
    EXPECT_EQ(sem.PrefetchedAnswers(), 0u);
    return resultado;
  }

  std::unique_ptr<TestDatabase> db_;
};

TEST_P(SqlPrefetchTest, TheStreamGivesEveryNoteTheRowsOfItsOwnQuery) {
  std::size_t antecipadas = 0;
  const auto [com, sem] = ler_com_e_sem(catalog("0", "0"), antecipadas);
  ASSERT_EQ(sem.erro, "");
  ASSERT_EQ(sem.itens.size(), 600u);
  EXPECT_EQ(com.erro, "");
  EXPECT_TRUE(com.itens == sem.itens);
  // Every note with items came from the stream; the 85 without ask their own query.
  EXPECT_EQ(antecipadas, 600u - 600u / 7);
  EXPECT_EQ(sem.itens[0].size(), 5u * 2) << "the first listed note is 65 (ordem 1), of 2 items";
}

TEST_P(SqlPrefetchTest, AFailureAtNoteKLeavesTheNotesBeforeItAndRaisesTheSameError) {
  // SQLite fails in json() on a text that is no JSON, PostgreSQL in the cast of 'x'.
  std::size_t antecipadas = 0;
  const auto [com, sem] = ler_com_e_sem(
      catalog("json(CASE WHEN nota = 300 THEN 'x' ELSE '1' END)",
              "CAST(CASE WHEN nota = 300 THEN 'x' ELSE '1' END AS INTEGER)"),
      antecipadas);
  ASSERT_NE(sem.erro, "");
  EXPECT_EQ(sem.erro.rfind("Erro ao consultar DspItens (TabItens) em '", 0), 0u) << sem.erro;
  EXPECT_EQ(com.erro, sem.erro);
  ASSERT_EQ(sem.itens.size(), 281u) << "note 300 is listed at ordem 282";
  EXPECT_TRUE(com.itens == sem.itens);
  // Both databases compute the failing column before they sort, so the stream fails at once
  // and every note asks its own query (a stream that fails midway is the stray one below).
  EXPECT_EQ(antecipadas, 0u);
}

TEST_P(SqlPrefetchTest, AStreamThatCannotRunOrStraysFromTheListLeavesTheNotesToTheirOwnQuery) {
  struct Caso {
    std::string nome, tabela, ordem;
    bool some_streamed;  // notes before the first stray row came from the stream
  };
  for (const Caso& c : {Caso{"tabela inexistente", "nao_existe", "l.ordem, l.cod", false},
                        Caso{"fora da ordem da lista", "item", "l.cod", true}}) {
    std::size_t antecipadas = 0;
    const auto [com, sem] = ler_com_e_sem(catalog("0", "0", c.tabela, c.ordem), antecipadas);
    EXPECT_EQ(com.erro, "") << c.nome;
    EXPECT_TRUE(com.itens == sem.itens) << c.nome;
    EXPECT_EQ(antecipadas > 0, c.some_streamed) << c.nome;
    EXPECT_LT(antecipadas, 600u - 600u / 7) << c.nome;
  }
}

TEST_P(SqlPrefetchTest, AListReadAgainHalfwayGetsAStreamOfItsOwn) {
  // The first stream is left after 100 notes; its connection must not serve the next one
  // with the rest of its rows.
  const std::string path = fresh_dir("catalogo-antecipada-de-novo") + "/providers.sql";
  write_file(path, catalog("0", "0"));
  SqlSource com(db_->address(), path), sem(db_->address(), path);
  com.Prefetch(true);
  sem.Prefetch(false);
  const std::vector<Value> de = {std::int64_t{1}};
  const Packet lista = com.fetch({"TabLista", "DspLista", FetchKind::DataRequest, de, kLista});
  for (std::size_t i = 0; i < 100; ++i) {
    const std::vector<Value> args = {lista.cells[i]};
    com.fetch({"TabItens", "DspItens", FetchKind::ParameterOpen, args, kItens});
  }
  const Leitura de_novo = ler(com), so_a_nota = ler(sem);
  EXPECT_EQ(de_novo.erro, "");
  ASSERT_TRUE(de_novo.itens == so_a_nota.itens);
  const auto com_itens = [&](std::size_t n) {
    return static_cast<std::size_t>(std::count_if(so_a_nota.itens.begin(), so_a_nota.itens.begin() + n,
                                                  [](const auto& itens) { return !itens.empty(); }));
  };
  EXPECT_EQ(com.PrefetchedAnswers(), com_itens(100) + com_itens(600));
}

INSTANTIATE_TEST_SUITE_P(Bancos, SqlPrefetchTest, ::testing::Values("sqlite", "postgresql"));

// The demo month's information file, whole, with and without fetching ahead.
class SqlPrefetchDemo : public ::testing::TestWithParam<std::string> {};

TEST_P(SqlPrefetchDemo, TheInformationFileIsTheSameByteForByte) {
  SKIP_WITHOUT(GetParam());
  const TestDatabase db(GetParam(), "antecipada_demo", demo_script());
  std::string texts[2];
  std::size_t antecipadas = 0;
  for (const bool on : {true, false}) {
    SqlSource source(db.address(), catalog_path());
    source.Prefetch(on);
    TDTM_ConexaoDS conexao{source, TOBJ_InfoSistema_v11c([] { return 1; })};
    ControleExportacao controle(conexao);
    controle.oExportaInfoFiscal.CodTipoRegistroFiscal(2);
    controle.oExportaInfoFiscal.CodRegistroFiscal(2);
    texts[on ? 0 : 1] = controle.GerarInformacao(fresh_dir(on ? "antecipada-com" : "antecipada-sem", true), 0, 0);
    if (on) antecipadas = source.PrefetchedAnswers();
  }
  EXPECT_GT(texts[1].size(), 10000u);
  EXPECT_TRUE(texts[0] == texts[1]) << "the information files differ";
  EXPECT_GT(antecipadas, 500u) << "purchases and outgoing notes are read ahead";
}

INSTANTIATE_TEST_SUITE_P(Bancos, SqlPrefetchDemo, ::testing::Values("sqlite", "postgresql"));

TEST(SqlPrefetchCatalog, EntriesNameTheListAndTheKeys) {
  const std::string text =
      "-- provider: DspA\nSELECT 1 AS a;\n"
      "-- prefetch: DspA DspLista CodTipo cod\nSELECT ?1, ?3;\n"
      "-- prefetch: DspA DspLista X [firebird]\nSELECT 2;\n";
  const auto sqlite = parse_prefetch_catalog(text, "sqlite", "c.sql");
  ASSERT_EQ(sqlite.size(), 1u);
  EXPECT_EQ(sqlite.at("DspA").list, "DspLista");
  EXPECT_EQ(sqlite.at("DspA").keys, (std::vector<std::string>{"CODTIPO", "COD"}));
  EXPECT_EQ(sqlite.at("DspA").query.sql, "SELECT :p1, :p2");
  EXPECT_EQ(parse_prefetch_catalog(text, "firebird", "c.sql").at("DspA").keys, std::vector<std::string>{"X"});
  // The providers do not take the prefetch entries' SQL.
  EXPECT_EQ(parse_provider_catalog(text, "sqlite", "c.sql").at("DspA").sql, "SELECT 1 AS a");
  try {
    parse_prefetch_catalog("-- prefetch: DspA DspLista\nSELECT 1;\n", "sqlite", "c.sql");
    FAIL() << "an entry without keys was taken";
  } catch (const Error& e) {
    EXPECT_STREQ(e.what(),
                 "Catálogo 'c.sql', leitura antecipada de DspA (linha 1): use '-- prefetch: PROVEDOR LISTA CHAVE...' "
                 "(a lista e as colunas que nomeiam a nota)");
  }
}

}  // namespace
}  // namespace infofiscal
