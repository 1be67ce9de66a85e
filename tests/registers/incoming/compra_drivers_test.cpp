// The purchase drivers: switches, row range, model and single-purchase filters, the order of the
// lines, the progress reports, the error paths, and the inputs walk.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "registers/incoming/compras.h"
#include "registers/incoming/dtm_a_compraprodconsumo.h"
#include "registers/incoming/dtm_a_compraproduto.h"

namespace infofiscal {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using testing::drive;
using testing::item_minimo;
using testing::json;
using testing::Kind;
using testing::l04_minima;
using testing::l05_vazia;
using testing::l06_minima;
using testing::Nota;
using testing::notas;
using testing::Snapshot;

using Progress = std::vector<std::pair<int, int>>;

constexpr Kind kComItens[] = {Kind::Equipamento, Kind::Produto, Kind::ProdConsumo};
constexpr Kind kTodos[] = {Kind::Equipamento, Kind::Produto, Kind::ProdConsumo, Kind::Insumo};

const char* nome(Kind kind) {
  switch (kind) {
    case Kind::Equipamento: return "equipamento";
    case Kind::Produto: return "produto";
    case Kind::ProdConsumo: return "produto de consumo";
    case Kind::Insumo: return "insumo";
  }
  return "";
}

// Notes 101, 102, ... of model 55, numbered "N1", "N2", ...
std::vector<Nota> lista(int n) {
  std::vector<Nota> out;
  for (int i = 1; i <= n; ++i) out.push_back({100 + i, "55", "N" + std::to_string(i)});
  return out;
}

// Lines 04 and 05 of the notes written, each (row, note number).
std::vector<std::string> escritas(Kind kind, const std::vector<std::pair<int, std::string>>& notas) {
  std::vector<std::string> out;
  for (const auto& [row, numnf] : notas) {
    out.push_back(l04_minima(kind, row, numnf));
    out.push_back(l05_vazia(kind, row));
  }
  return out;
}

// Lines 04 and 05 of the given rows of lista().
std::vector<std::string> linhas(Kind kind, std::initializer_list<int> rows) {
  std::vector<std::pair<int, std::string>> notas;
  for (int r : rows) notas.emplace_back(r, "N" + std::to_string(r));
  return escritas(kind, notas);
}

Progress progresso(std::initializer_list<int> rows, int count) {
  Progress out;
  for (int r : rows) out.emplace_back(r, count);
  return out;
}

// A switch other than "S" or an empty list: no line, no progress.
TEST(PurchaseDrivers, OnlyACapitalSTurnsAKindOnAndAnEmptyListWritesNothing) {
  for (Kind kind : kTodos)
    for (const json& valor : {json("N"), json("s"), json(""), json(nullptr), json("S")}) {
      const auto out = drive(kind, notas(kind, valor == "S" ? std::vector<Nota>{} : lista(3),
                                         {{testing::kind_switch(kind), valor}}));
      EXPECT_THAT(out.lines, IsEmpty()) << nome(kind) << " " << valor;
      EXPECT_THAT(out.progress, IsEmpty()) << nome(kind) << " " << valor;
      EXPECT_EQ(out.error, "");
    }
}

TEST(PurchaseDrivers, RowRangeOfTheFiscalRegister) {
  const struct {
    const char* name;
    json registro;
    int notes;
    std::initializer_list<int> rows;
  } cases[] = {
      {"range 3 to 5 of 10", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 3}, {"TIPOEXPORTACAOFINAL", 5}}, 10, {3, 4, 5}},
      {"range 3 to 4 of 5", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 3}, {"TIPOEXPORTACAOFINAL", 4}}, 5, {3, 4}},
      {"range up to past the end", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 4}, {"TIPOEXPORTACAOFINAL", 9}}, 5, {4, 5}},
      {"both bounds 0", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 0}, {"TIPOEXPORTACAOFINAL", 0}}, 5, {}},
      {"both bounds null", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", nullptr}, {"TIPOEXPORTACAOFINAL", nullptr}}, 5, {}},
      {"bounds reversed", {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", 4}, {"TIPOEXPORTACAOFINAL", 2}}, 5, {}},
      {"kind 0 ignores the bounds", {{"TIPOEXPORTACAO", 0}, {"TIPOEXPORTACAOINICIO", 3}, {"TIPOEXPORTACAOFINAL", 4}}, 5, {1, 2, 3, 4, 5}},
      {"kind 1 ignores the bounds", {{"TIPOEXPORTACAO", 1}, {"TIPOEXPORTACAOINICIO", 3}, {"TIPOEXPORTACAOFINAL", 4}}, 5, {1, 2, 3, 4, 5}},
      {"kind null ignores the bounds", {{"TIPOEXPORTACAO", nullptr}, {"TIPOEXPORTACAOINICIO", 9}, {"TIPOEXPORTACAOFINAL", 9}}, 2, {1, 2}},
  };
  for (Kind kind : kComItens)
    for (const auto& c : cases) {
      const auto out = drive(kind, notas(kind, lista(c.notes), c.registro));
      EXPECT_EQ(out.error, "") << nome(kind) << ": " << c.name;
      // C02 is the position in the list, not a count of the notes written.
      EXPECT_THAT(out.lines, ElementsAreArray(linhas(kind, c.rows))) << nome(kind) << ": " << c.name;
      EXPECT_THAT(out.progress, ElementsAreArray(progresso(c.rows, c.notes))) << nome(kind) << ": " << c.name;
    }
}

TEST(PurchaseDrivers, ModelFilterOfEachKind) {
  // A skipped row inside the range still reports progress and still counts.
  const std::vector<Nota> modelos = {{101, "55", "A"}, {102, "65", "B"}, {103, "57", "C"}, {104, "07", "D"}, {105, "1", "E"}};
  const struct {
    Kind kind;
    std::vector<std::pair<int, std::string>> written;
  } cases[] = {
      {Kind::Equipamento, {{1, "A"}, {5, "E"}}},
      {Kind::Produto, {{1, "A"}, {5, "E"}}},
      {Kind::ProdConsumo, {{1, "A"}, {3, "C"}, {4, "D"}, {5, "E"}}},
  };
  for (const auto& c : cases) {
    const auto expected = escritas(c.kind, c.written);
    const auto out = drive(c.kind, notas(c.kind, modelos));
    EXPECT_EQ(out.error, "") << nome(c.kind);
    EXPECT_THAT(out.lines, ElementsAreArray(expected)) << nome(c.kind);
    EXPECT_THAT(out.progress, ElementsAreArray(progresso({1, 2, 3, 4, 5}, 5))) << nome(c.kind);
  }
}

TEST(PurchaseDrivers, SinglePurchaseFilter) {
  // Products and consumption products compare the note number as text; equipment the code.
  const std::vector<Nota> lista_filtro = {{123, "55", "000123"}, {200, "55", "123"}, {300, "55", "123 "}};
  const struct {
    Kind kind;
    int filtro;
    std::vector<std::pair<int, std::string>> written;
  } cases[] = {
      {Kind::Produto, 123, {{2, "123"}}},
      {Kind::ProdConsumo, 123, {{2, "123"}}},
      {Kind::Equipamento, 123, {{1, "000123"}}},
      {Kind::Equipamento, 200, {{2, "123"}}},
      {Kind::Produto, 0, {{1, "000123"}, {2, "123"}, {3, "123"}}},
      {Kind::Equipamento, 0, {{1, "000123"}, {2, "123"}, {3, "123"}}},
      {Kind::Produto, 999, {}},
  };
  for (const auto& c : cases) {
    const auto expected = escritas(c.kind, c.written);
    const auto out = drive(c.kind, notas(c.kind, lista_filtro), c.filtro);
    EXPECT_EQ(out.error, "") << nome(c.kind) << " " << c.filtro;
    EXPECT_THAT(out.lines, ElementsAreArray(expected)) << nome(c.kind) << " " << c.filtro;
    EXPECT_THAT(out.progress, ElementsAreArray(progresso({1, 2, 3}, 3))) << nome(c.kind) << " " << c.filtro;
  }
}

TEST(PurchaseDrivers, LinesOfANoteAreContiguousAndItemsAreCountedFromOne) {
  for (Kind kind : kComItens) {
    Snapshot s = notas(kind, lista(3));
    s.params(testing::item_provider(kind), {101},
             json::array({item_minimo(101, 5), item_minimo(101, 7), item_minimo(101, 9)}));
    s.params(testing::item_provider(kind), {103}, json::array({item_minimo(103, 1)}));
    const auto out = drive(kind, s);
    EXPECT_EQ(out.error, "") << nome(kind);
    // Note 102 has no items: its lines 04 and 05 only.
    EXPECT_THAT(out.lines,
                ElementsAre(l04_minima(kind, 1, "N1"), l05_vazia(kind, 1), l06_minima(kind, 1, 1), l06_minima(kind, 1, 2),
                            l06_minima(kind, 1, 3), l04_minima(kind, 2, "N2"), l05_vazia(kind, 2),
                            l04_minima(kind, 3, "N3"), l05_vazia(kind, 3), l06_minima(kind, 3, 1)))
        << nome(kind);
    EXPECT_THAT(out.progress, ElementsAreArray(progresso({1, 2, 3}, 3))) << nome(kind);
  }
}

TEST(PurchaseDrivers, ItemQueryFailures) {
  // Only the equipment query has a prefix of its own; none carries the line-06 prefix. The
  // failing note's lines 04 and 05 stay, and the next note is not reached.
  const struct {
    Kind kind;
    const char* error;
  } cases[] = {
      {Kind::Equipamento, "Erro ao Abrir Tabela de Compra Equipamento : conexão perdida"},
      {Kind::Produto, "conexão perdida"},
      {Kind::ProdConsumo, "conexão perdida"},
  };
  for (const auto& c : cases) {
    Snapshot s = notas(c.kind, lista(2));
    s.error(testing::item_provider(c.kind), {101}, "conexão perdida");
    const auto out = drive(c.kind, s);
    EXPECT_EQ(out.error, c.error);
    EXPECT_THAT(out.lines, ElementsAreArray(linhas(c.kind, {1}))) << nome(c.kind);
    EXPECT_THAT(out.progress, ElementsAre(std::pair{1, 2})) << nome(c.kind);
  }
}

TEST(PurchaseDrivers, FailuresEndTheDriverAndKeepEarlierLines) {
  const Kind k = Kind::Produto;
  json quebrado = item_minimo(102, 2);
  quebrado["QUANTIDADE"] = "abc";
  json pde2 = testing::compra_minima(102, "2.000");
  pde2["PDE"] = 2;
  const struct {
    const char* name;
    Snapshot snapshot;
    std::vector<std::string> lines;
    Progress progress;
    std::string error;
  } cases[] = {
      {"a note that is not in state 3",
       notas(k, lista(3), json::object(), Snapshot().params("DspCompra", {102}, json::array({pde2}))),
       linhas(k, {1}), progresso({1, 2}, 3), "Erro ano Gerar Registro Linha 04 : Erro na NFe de Entrada: 2000"},
      {"an item that fails: earlier items stay",
       notas(k, lista(3)).params("DsCompraProduto", {102}, json::array({item_minimo(102, 1), quebrado})),
       {l04_minima(k, 1, "N1"), l05_vazia(k, 1), l04_minima(k, 2, "N2"), l05_vazia(k, 2), l06_minima(k, 2, 1)},
       progresso({1, 2}, 3),
       "Erro ano Gerar Registro Linha 06 : 'abc' não é um valor de ponto flutuante válido (campo QUANTIDADE de "
       "TabCompraProduto, registro CDCOMPRA=102 CDPRODUTO=501 ITEMCOMPRA=2)"},
      {"a header query that fails",
       notas(k, lista(3), json::object(), Snapshot().error("DspCompra", {102}, "recusada")), linhas(k, {1}), progresso({1, 2}, 3),
       "Erro ao Abrir Tabela de Compra : recusada"},
      {"a supplier query that fails: line 04 stays",
       notas(k, lista(3)).error("DspCompraFornecedor", {102}, "recusada"),
       {l04_minima(k, 1, "N1"), l05_vazia(k, 1), l04_minima(k, 2, "N2")}, progresso({1, 2}, 3),
       "Erro ao Abrir Tabela de InstituicaoFornecedor : recusada"},
      {"a model that is no number passes unchanged",
       notas(k, {{101, "55", "N1"}, {102, "", "N2"}, {103, "55", "N3"}}), linhas(k, {1}), progresso({1, 2}, 3),
       "'' não é um valor inteiro válido (campo MODELO de TabListaCompra, registro CDCOMPRA=102)"},
      {"a purchase list that fails passes unchanged",
       Snapshot().registro(7, {{"REGCOMPRAPRODUTO", "S"}}).request_error("DspListaCompra", {7, 2}, "servidor fora"),
       {}, {}, "servidor fora"},
      {"a fiscal register that fails passes unchanged",
       Snapshot().error("DspRegistroInfoFiscal", {7}, "sem conexão"), {}, {}, "sem conexão"},
      {"a range bound that is no number passes unchanged",
       notas(k, lista(2), {{"TIPOEXPORTACAO", 2}, {"TIPOEXPORTACAOINICIO", "x"}}), {}, {},
       "'x' não é um valor inteiro válido (campo TIPOEXPORTACAOINICIO de TabRegistroFiscal, registro "
       "CDREGISTROFISCAL=7)"},
  };
  for (const auto& c : cases) {
    const auto out = drive(k, c.snapshot);
    EXPECT_EQ(out.error, c.error) << c.name;
    EXPECT_THAT(out.lines, ElementsAreArray(c.lines)) << c.name;
    EXPECT_THAT(out.progress, ElementsAreArray(c.progress)) << c.name;
  }
}

// A snapshot whose purchase list is replaced by `rows` rows of model 65, made on the fly.
class ListaLonga : public RecordSource {
 public:
  ListaLonga(const Snapshot& snapshot, int rows) : base_(snapshot.document(), "teste"), rows_(rows) {}
  Packet fetch(const FetchRequest& request) override {
    if (request.provider != "DspListaCompra") return base_.fetch(request);
    Packet packet;
    packet.width = request.fields.size();
    packet.cells.reserve(packet.width * static_cast<std::size_t>(rows_));
    for (int i = 1; i <= rows_; ++i)
      for (const FieldDef& f : request.fields)
        packet.cells.push_back(f.name == "CDCOMPRA" ? Value(std::int64_t{i}) : f.name == "MODELO" ? Value("65") : Value());
    return packet;
  }

 private:
  SnapshotSource base_;
  int rows_;
};

TEST(PurchaseDrivers, ConsumptionProductsStopAtRow999999WhenNoRangeIsSet) {
  const Snapshot registro = notas(Kind::Produto, {}, {{"REGCOMPRAPRODCONSUMO", "S"}});
  const auto progress_of = [&](auto&& make, auto&& call) {
    ListaLonga source(registro, 1000000);
    TDTM_ConexaoDS conexao{source, TOBJ_InfoSistema_v11c()};
    testing::Run run(Snapshot{});
    auto module = make(conexao);
    run.configure(*module);
    TStringList list;
    call(*module, list);
    return run.progress;
  };
  const auto consumo = progress_of([](auto& c) { return std::make_unique<TDTM_A_CompraProdConsumo>(c); },
                                   [](auto& m, auto& l) { m.L04_L05_L06_RegistroCompraProdConsumo(l, 0); });
  ASSERT_EQ(consumo.size(), 999999u);
  EXPECT_EQ(consumo.back(), std::pair(999999, 1000000));
  const auto produto = progress_of([](auto& c) { return std::make_unique<TDTM_A_CompraProduto>(c); },
                                   [](auto& m, auto& l) { m.L04_L05_L06_RegistroCompraProduto(l, 0); });
  ASSERT_EQ(produto.size(), 1000000u);
  EXPECT_EQ(produto.back(), std::pair(1000000, 1000000));
}

TEST(PurchaseDrivers, InputsReportOneLessThanTheirRowsAndWriteNothing) {
  // No model or single-purchase filter: a model that is no number does not stop the walk.
  const struct {
    int rows;
    Progress progress;
  } cases[] = {
      {4, {{1, 4}, {2, 4}, {3, 4}}},
      {2, {{1, 2}}},
      {1, {}},
      {0, {}},
  };
  for (const auto& c : cases) {
    std::vector<Nota> rows = lista(c.rows);
    if (!rows.empty()) rows.back().modelo = "";
    const auto out = drive(Kind::Insumo, notas(Kind::Insumo, rows, {{"TIPOEXPORTACAO", 2}}));
    EXPECT_EQ(out.error, "") << c.rows;
    EXPECT_THAT(out.lines, IsEmpty()) << c.rows;
    EXPECT_THAT(out.progress, ElementsAreArray(c.progress)) << c.rows;
  }
}

}  // namespace
}  // namespace infofiscal
