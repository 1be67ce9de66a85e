// The reference catalog over the demo database: every provider returns every field that the
// modules reading it declare (taken from the modules as they run, not copied here), and the list providers pick and order the notes of a register.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "base/error.h"
#include "export/obj_exportainfofiscal.h"
#include "host/sql_support.h"
#include "support/cli.h"
#include "host/sources/recording_source.h"
#include "host/sources/snapshot_source.h"
#include "host/sources/sql_source.h"

namespace infofiscal {
namespace {

using namespace testing;

const std::int64_t kSintegra = 1, kEfd = 2;

struct ProviderCase {
  std::string provider;
  std::vector<Value> args;
  FetchKind kind;
  std::size_t rows;  // on the demo month
};

const std::vector<ProviderCase>& provider_cases() {
  using I = std::int64_t;
  const auto P = FetchKind::ParameterOpen;
  const auto D = FetchKind::DataRequest;
  static const std::vector<ProviderCase> cases = {
      {"DspRegistroInfoFiscal", {kEfd}, P, 1},
      {"DspEmpresa", {I{1}}, P, 1},
      {"DspContador", {}, P, 1},
      {"DspListaCompra", {kEfd, I{2}}, D, 28},
      {"DspCompra", {I{2}}, P, 1},
      {"DspCompraFornecedor", {I{2}}, P, 1},
      {"DspCompraEquipamento", {I{4}}, P, 1},  // 1 + 4 % 4 items
      {"DsCompraProduto", {I{5}}, P, 2},
      {"DspCompraProdConsumo", {I{7}}, P, 4},
      {"DspListaNotaFiscal", {kEfd, kEfd, I{10}}, D, 317},
      {"DspNF_Venda", {I{1}, I{4101}}, P, 1},
      {"DspNF_Cliente", {I{4}, I{4113}}, P, 1},
      {"DspNF_Produto", {I{2}, I{4121}}, P, 2},
      {"DspListaNFeInutilizado", {kEfd, kEfd}, D, 4},
      {"DspListaEquipamento", {}, P, 8},
      {"DspListaProduto", {}, P, 40},
      {"DspListaInsumo", {}, P, 6},
      {"DspListaProdConsumo", {}, P, 10},
      {"DspListaUnidade", {}, P, 8},
      {"DspListaCliente", {}, P, 32},
      {"DspListaFornecedor", {}, P, 13},
      {"DspNaturezaOperacao", {}, P, 18},
      {"DspInventario_FM", {kEfd}, P, 1},
      {"DspInventarioProduto_FM", {kEfd}, P, 40},
      {"DspInventario_FA", {kSintegra}, P, 1},
      {"DspInventarioProduto_FA", {kSintegra}, P, 40},
  };
  return cases;
}

// A source that notes the fields every dataset reading a provider declares, in the order
// first declared: what the modules ask of the catalog.
class Declarados final : public RecordSource {
 public:
  explicit Declarados(RecordSource& live) : live_(live) {}
  Packet fetch(const FetchRequest& request) override {
    auto& campos = campos_[std::string(request.provider)];
    for (const FieldDef& f : request.fields)
      if (std::none_of(campos.begin(), campos.end(), [&](const auto& c) { return c.first == f.name; }))
        campos.emplace_back(std::string(f.name), f.cls);
    return live_.fetch(request);
  }
  std::vector<std::string> files() const override { return live_.files(); }

  std::map<std::string, std::vector<std::pair<std::string, FieldClass>>> campos_;

 private:
  RecordSource& live_;
};

// The fields of each provider as the modules declare them: the export of the demo month's two
// registers (SINTEGRA's reads the year-end inventory, the EFD's the month-end one) over SQLite.
const std::map<std::string, std::vector<std::pair<std::string, FieldClass>>>& declared_fields() {
  static const auto campos = [] {
    TestDatabase db("sqlite", "declarados", demo_script());
    SqlSource source(db.address(), catalog_path());
    Declarados declarados(source);
    TDTM_ConexaoDS conexao{declarados, TOBJ_InfoSistema_v11c([] { return 1; })};
    for (const TRegistroFiscal registro : {kSintegra, kEfd}) {
      TOBJ_ExportaInfoFiscal orquestrador(conexao);
      orquestrador.CodTipoRegistroFiscal(registro);
      orquestrador.CodRegistroFiscal(static_cast<int>(registro));
      orquestrador.RecInformacao(0, 0);
    }
    return declarados.campos_;
  }();
  return campos;
}

Packet fetch(RecordSource& source, const std::string& provider, std::vector<Value> args, std::vector<FieldDef> fields,
             FetchKind kind = FetchKind::DataRequest) {
  return source.fetch({"Tab", provider, kind, std::move(args), std::move(fields)});
}

// Fetches every field that the modules declare for the provider of `c`.
Packet fetch(RecordSource& source, const ProviderCase& c) {
  const auto it = declared_fields().find(c.provider);
  if (it == declared_fields().end()) throw Error("nenhum módulo lê " + c.provider);
  std::vector<FieldDef> fields;
  for (const auto& [nome, classe] : it->second) fields.push_back({nome, classe});
  return fetch(source, c.provider, c.args, fields, c.kind);
}

class SqlCatalogDemo : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    SKIP_WITHOUT(GetParam());
    db_ = std::make_unique<TestDatabase>(GetParam(), "catalogo", demo_script());
    source_ = std::make_unique<SqlSource>(db_->address(), catalog_path());
  }

  std::unique_ptr<TestDatabase> db_;
  std::unique_ptr<SqlSource> source_;
};

TEST_P(SqlCatalogDemo, EveryProviderReturnsEveryDeclaredField) {
  for (const auto& c : provider_cases()) {
    try {
      EXPECT_EQ(fetch(*source_, c).rows(), c.rows) << c.provider;
    } catch (const Error& e) {
      ADD_FAILURE() << c.provider << ": " << e.what();
    }
  }
  // And no provider that a module reads is left out of this test.
  for (const auto& [provider, campos] : declared_fields())
    EXPECT_TRUE(std::any_of(provider_cases().begin(), provider_cases().end(),
                            [&](const ProviderCase& c) { return c.provider == provider; }))
        << provider;
}

TEST_P(SqlCatalogDemo, RecordedAnswersReplayFromTheSnapshotAsTheyCame) {
  RecordingSource recorder(*source_);
  std::vector<Packet> live;
  for (const auto& c : provider_cases()) live.push_back(fetch(recorder, c));
  // Through the file format, as --gravar-snapshot and --fonte snapshot: do.
  SnapshotSource replay(nlohmann::json::parse(recorder.Snapshot().dump()), "gravado");
  for (std::size_t i = 0; i < live.size(); ++i) {
    const auto& c = provider_cases()[i];
    EXPECT_EQ(fetch(replay, c).cells, live[i].cells) << c.provider;
  }
}

TEST_P(SqlCatalogDemo, ListsHoldTheRegistersNotesInDateAndNumberOrder) {
  using I = std::int64_t;
  const auto column = [&](const std::string& provider, std::vector<Value> args, const std::string& field) {
    std::vector<Value> out;
    const Packet p = fetch(*source_, provider, args, {{field}});
    for (const Value& v : p.cells) out.push_back(v);
    return out;
  };
  // Booked purchases of each kind (the inputs step asks with kind 0); none of another register's company.
  for (const I kind : {1, 2, 4, 0}) EXPECT_EQ(column("DspListaCompra", {kSintegra, kind}, "CDCOMPRA").size(), 28u);
  EXPECT_EQ(column("DspListaCompra", {I{99}, I{2}}, "CDCOMPRA").size(), 0u);
  // Purchases come by date of receipt: the receipt days never go back.
  std::vector<Value> days;
  for (const Value& code : column("DspListaCompra", {kEfd, I{2}}, "CDCOMPRA"))
    days.push_back(
        fetch(*source_, "DspCompra", {code}, {{"DATARECEBIMENTO", FieldClass::TimeStamp}}, FetchKind::ParameterOpen)
            .cells.at(0));
  for (std::size_t i = 1; i < days.size(); ++i) {
    // Text in SQLite, a timestamp in PostgreSQL: both begin YYYY-MM-DD.
    EXPECT_LE(debug_text(days[i - 1]).substr(0, 10), debug_text(days[i]).substr(0, 10)) << i;
  }
  // Outgoing kinds, authorised and cancelled only; the notes in issue order (numbers rise with dates).
  const struct {
    I kind;
    std::size_t notes;
  } kinds[] = {{9, 9}, {10, 317}, {11, 11}, {12, 11}, {17, 6}, {0, 0}};
  for (const auto& k : kinds) {
    const auto notes = column("DspListaNotaFiscal", {kEfd, kEfd, k.kind}, "CDNOTAFISCAL");
    EXPECT_EQ(notes.size(), k.notes) << k.kind;
    for (std::size_t i = 1; i < notes.size(); ++i)
      EXPECT_LT(std::get<I>(notes[i - 1]), std::get<I>(notes[i])) << k.kind;
  }
  EXPECT_EQ(column("DspListaNFeInutilizado", {kEfd, kEfd}, "CDNFE_NUMINUTILIZADO"),
            (std::vector<Value>{I{4142}, I{4227}, I{4312}, I{4397}}));
}

// The schema alone, on every database: each provider's SELECT runs and delivers its fields.
class SqlCatalogSchema : public ::testing::TestWithParam<std::string> {};

TEST_P(SqlCatalogSchema, EveryProviderRunsOnTheEmptySchema) {
  SKIP_WITHOUT(GetParam());
  TestDatabase db(GetParam(), "esquema", read_file(INFOFISCAL_SOURCE_DIR "/db/schema.sql"));
  SqlSource source(db.address(), catalog_path());
  for (const auto& c : provider_cases()) {
    try {
      EXPECT_EQ(fetch(source, c).rows(), 0u) << c.provider;
    } catch (const Error& e) {
      ADD_FAILURE() << c.provider << ": " << e.what();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Bancos, SqlCatalogSchema, ::testing::Values("sqlite", "postgresql", "firebird"));

INSTANTIATE_TEST_SUITE_P(Bancos, SqlCatalogDemo, ::testing::Values("sqlite", "postgresql", "firebird"));

}  // namespace
}  // namespace infofiscal
