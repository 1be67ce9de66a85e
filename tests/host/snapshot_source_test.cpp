#include "host/sources/snapshot_source.h"

#include <fstream>

#include <gtest/gtest.h>

#include "host/client_dataset.h"
#include "base/error.h"
#include "support/fixture.h"

namespace infofiscal {
namespace {

using testing::json;
using testing::Snapshot;

std::string fetch_message(const json& document, FetchKind kind, std::vector<Value> args) {
  SnapshotSource source(document, "t");
  ClientDataSet tab("TabCompra", "DspCompra", {{"CDCOMPRA", FieldClass::Integer}, {"NUMNF", FieldClass::String}}, 1);
  tab.SetRemoteServer(&source);
  try {
    if (kind == FetchKind::DataRequest) {
      tab.DataRequest(std::move(args));
    } else {
      tab.SetParam(0, args.at(0));
      tab.Open();
    }
  } catch (const Error& e) {
    return std::string("erro: ") + e.what();
  }
  std::string rows;
  for (; !tab.Eof(); tab.Next()) rows += tab.FieldByName("NUMNF").AsString() + ";";
  return rows;
}

TEST(SnapshotSource, AnswersByProviderKindAndArguments) {
  const json doc = Snapshot()
                       .params("DspCompra", {7}, {{{"CDCOMPRA", 1}, {"NUMNF", "a"}}})
                       .params("DspCompra", {7.0}, {{{"CDCOMPRA", 1}, {"NUMNF", "a"}}})  // the same answer again
                       .request("DspCompra", {7, 2}, {{{"CDCOMPRA", 2}, {"NUMNF", "b"}}, {{"CDCOMPRA", 3}, {"NUMNF", "c"}}})
                       .params("DspCompra", {"x"}, {{{"CDCOMPRA", 4}, {"NUMNF", "texto"}}})
                       .error("DspCompra", {8}, "conexão recusada")
                       .params("DspCompra", {10}, {{{"CDCOMPRA", 5}}})
                       .document();
  const struct {
    FetchKind kind;
    std::vector<Value> args;
    const char* result;
  } cases[] = {
      {FetchKind::ParameterOpen, {std::int64_t{7}}, "a;"},
      {FetchKind::ParameterOpen, {7.0}, "a;"},                      // 7 matches 7.0
      {FetchKind::DataRequest, {std::int64_t{7}, std::int64_t{2}}, "b;c;"},
      {FetchKind::DataRequest, {std::int64_t{7}}, ""},              // never the other kind of fetch
      {FetchKind::ParameterOpen, {std::string("x")}, "texto;"},
      {FetchKind::ParameterOpen, {std::string("7")}, ""},          // a text is no number
      {FetchKind::ParameterOpen, {std::int64_t{99}}, ""},           // no entry: empty
      {FetchKind::ParameterOpen, {std::int64_t{8}}, "erro: conexão recusada"},
      {FetchKind::ParameterOpen, {std::int64_t{10}}, "erro: Campo 'NUMNF' não encontrado em TabCompra"},
  };
  for (const auto& c : cases) EXPECT_EQ(fetch_message(doc, c.kind, c.args), c.result);
}

TEST(SnapshotSource, BadFilesAreNamedInTheMessage) {
  const std::string dir = ::testing::TempDir();
  const auto write = [&](const std::string& name, const std::string& text) {
    std::ofstream(dir + name) << text;
    return dir + name;
  };
  const struct {
    std::string path;
    std::string message;
  } cases[] = {
      {dir + "nao-existe.json", "Não foi possível abrir o snapshot '" + dir + "nao-existe.json'"},
      {write("quebrado.json", "{\"snapshot\": 1,"), "Snapshot '" + dir + "quebrado.json' inválido: JSON mal formado"},
      {write("versao.json", R"({"snapshot": 2, "responses": []})"),
       "Snapshot '" + dir + "versao.json' inválido: falta \"snapshot\": 1"},
      {write("sem-tipo.json", R"({"snapshot": 1, "responses": [{"provider": "DspX", "rows": []}]})"),
       "Snapshot '" + dir + "sem-tipo.json' inválido: a resposta precisa de \"params\" ou \"request\" (resposta 1)"},
      {write("sem-linhas.json", R"({"snapshot": 1, "responses": [{"provider": "DspX", "params": []}]})"),
       "Snapshot '" + dir + "sem-linhas.json' inválido: resposta sem \"rows\" nem \"error\" (resposta 1)"},
  };
  for (const auto& c : cases) {
    try {
      SnapshotSource source(c.path);
      ADD_FAILURE() << c.path;
    } catch (const Error& e) {
      EXPECT_EQ(std::string(e.what()).substr(0, c.message.size()), c.message);
    }
  }
}

}  // namespace
}  // namespace infofiscal
