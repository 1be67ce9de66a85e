// A recorded snapshot of provider answers (JSON), for tests, support and replay.
//
//   {"snapshot": 1, "responses": [
//     {"provider": "DspCompra", "params": [102], "rows": [{...}, ...]},
//     {"provider": "DspListaCompra", "request": [7, 2], "rows": [...]},
//     {"provider": "DspCompra", "params": [103], "error": "conexão recusada"}]}
//
// An entry answers a parameter open ("params"; [] for a reopen) or a data request
// ("request"), never the other kind. Values match numerically (7 matches 7.0); two entries that
// match the same fetch must give the same answer; no matching entry gives an empty dataset; an
// "error" entry fails the fetch with exactly its message. Timestamps are strings "YYYY-MM-DD" or
// "YYYY-MM-DDTHH:MM:SS". A file nested deeper than kMaxSnapshotDepth is refused before it is
// parsed.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include <nlohmann/json.hpp>

#include "host/record_source.h"

namespace infofiscal {

// A snapshot nests five levels (document, responses, entry, rows, row); a file nested deeper
// than this holds no snapshot, and is refused before the JSON library recurses through it.
inline constexpr int kMaxSnapshotDepth = 64;

class SnapshotSource : public RecordSource {
 public:
  // Reads and checks the whole file; throws Error naming the file when it cannot be read or
  // is not a snapshot.
  explicit SnapshotSource(const std::string& path);
  // Takes a parsed document; `origin` names it in messages.
  SnapshotSource(const nlohmann::json& document, const std::string& origin);

  Packet fetch(const FetchRequest& request) override;
  std::vector<std::string> files() const override;

 private:
  void load(const nlohmann::json& document);

  std::string origin_;
  bool from_file_ = false;
  // Entries by provider name, in file order.
  std::unordered_map<std::string, std::vector<nlohmann::json>> entries_;
};

// Converts one JSON value of a row into a record-source value; a string in a timestamp field
// becomes a TimeStamp when it reads as one.
Value value_from_json(const nlohmann::json& cell, FieldClass cls);

}  // namespace infofiscal
