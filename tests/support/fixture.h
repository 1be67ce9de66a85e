// Test support: snapshots built in code, and a run that records what the callbacks saw.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "export/obj_exportainfofiscal.h"
#include "host/framework.h"
#include "host/sources/snapshot_source.h"

namespace infofiscal::testing {

using nlohmann::json;

// A fiscal-register row with every declared field: switches "N", numbers 0, texts "", with
// `overrides` applied on top.
json registro_fiscal(const json& overrides = json::object());

// A snapshot document built entry by entry.
class Snapshot {
 public:
  // A parameter open (or, with no params, a reopen).
  Snapshot& params(const std::string& provider, const json& params, const json& rows);
  // A data request.
  Snapshot& request(const std::string& provider, const json& request, const json& rows);
  // An entry that fails with `message`.
  Snapshot& error(const std::string& provider, const json& params, const std::string& message);
  // A data request that fails with `message`.
  Snapshot& request_error(const std::string& provider, const json& request, const std::string& message);
  // The fiscal register `key` (provider "DspRegistroInfoFiscal").
  Snapshot& registro(int key, const json& overrides = json::object());
  // The entries of a stored snapshot, e.g. testing::golden("../snapshots/x.json") parsed.
  Snapshot& responses(const json& entries);
  const json& document() const { return doc_; }
  // The document without the entries that answer the same fetch as an earlier one: a test adds
  // the answer that differs first and the usual answers of a month after it (a snapshot file
  // with two different answers to one fetch is refused).
  json first_answers() const;

 private:
  json doc_ = {{"snapshot", 1}, {"responses", json::array()}};
};

// A run of the orchestrator (or of one module) over a snapshot, recording every callback.
struct Run {
  explicit Run(const Snapshot& snapshot, int empresa = 1)
      : source(snapshot.first_answers(), "teste"), conexao{source, TOBJ_InfoSistema_v11c([empresa] { return empresa; })} {}

  // Sets the four properties a step sets on a module derived from TDTM_A_Padrao.
  template <class Module>
  void configure(Module& m, TRegistroFiscal tipo = 2, int registro = 7) {
    m.CodTipoRegistroFiscal(tipo);
    m.CodRegistroFiscal(registro);
    m.LinhaInfo_B([this](const std::string& s) { info.push_back(s); });
    m.Progresso_B([this](int p, int max) { progress.push_back({p, max}); });
  }

  SnapshotSource source;
  TDTM_ConexaoDS conexao;
  std::vector<std::string> info;
  std::vector<std::pair<int, int>> progress;
};

// The info lines of a run: the banner up to "1-Gerar Arquivo de Informações: Início", and the 23
// step texts in the order the steps run.
std::vector<std::string> banner();
extern const std::vector<std::string> kStepTexts;

// The lines of a string list, for comparing with EXPECT_THAT / EXPECT_EQ.
std::vector<std::string> lines_of(const TStringList& list);

}  // namespace infofiscal::testing
