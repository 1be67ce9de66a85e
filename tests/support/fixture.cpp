#include "support/fixture.h"

#include <set>

#include "registers/dtm_a_padrao.h"
#include "support/golden.h"

namespace infofiscal::testing {

json registro_fiscal(const json& overrides) {
  // The declared fields of TabRegistroFiscal, taken from the module itself.
  Snapshot empty;
  SnapshotSource source(empty.document(), "vazio");
  TDTM_ConexaoDS conexao{source, TOBJ_InfoSistema_v11c()};
  TDTM_A_Padrao modulo(conexao);
  json row = json::object();
  for (const FieldDef& f : modulo.TabRegistroFiscal.Fields()) {
    const std::string name(f.name);
    if (f.cls == FieldClass::String) row[name] = name.rfind("REG", 0) == 0 ? "N" : "";
    else if (f.cls == FieldClass::Blob || f.cls == FieldClass::TimeStamp) row[name] = nullptr;
    else row[name] = 0;
  }
  row.update(overrides);
  return row;
}

Snapshot& Snapshot::params(const std::string& provider, const json& params, const json& rows) {
  doc_["responses"].push_back({{"provider", provider}, {"params", params}, {"rows", rows}});
  return *this;
}

Snapshot& Snapshot::request(const std::string& provider, const json& request, const json& rows) {
  doc_["responses"].push_back({{"provider", provider}, {"request", request}, {"rows", rows}});
  return *this;
}

Snapshot& Snapshot::error(const std::string& provider, const json& params, const std::string& message) {
  doc_["responses"].push_back({{"provider", provider}, {"params", params}, {"error", message}});
  return *this;
}

Snapshot& Snapshot::request_error(const std::string& provider, const json& request, const std::string& message) {
  doc_["responses"].push_back({{"provider", provider}, {"request", request}, {"error", message}});
  return *this;
}

json Snapshot::first_answers() const {
  json doc = doc_;
  json& kept = doc["responses"] = json::array();
  std::set<std::string> fetches;
  for (const json& e : doc_["responses"]) {
    const char* kind = e.contains("params") ? "params" : "request";
    if (fetches.insert(e["provider"].dump() + kind + e[kind].dump()).second) kept.push_back(e);
  }
  return doc;
}

Snapshot& Snapshot::responses(const json& entries) {
  for (const json& e : entries) doc_["responses"].push_back(e);
  return *this;
}

Snapshot& Snapshot::registro(int key, const json& overrides) {
  json o = overrides;
  o["CDREGISTROFISCAL"] = key;
  return params("DspRegistroInfoFiscal", {key}, json::array({registro_fiscal(o)}));
}

const std::vector<std::string> kStepTexts = golden_lines("passos.txt");

std::vector<std::string> banner() {
  return {"=============================", "RECUPERANDO INFORMAÇÕES      ", "=============================",
          "1-Gerar Arquivo de Informações: Início"};
}

std::vector<std::string> lines_of(const TStringList& list) {
  std::vector<std::string> out;
  for (std::size_t i = 0; i < list.Count(); ++i) out.emplace_back(list[i]);
  return out;
}

}  // namespace infofiscal::testing
