// Records every answer of a live source into a snapshot, so that the same run can be replayed
// with "snapshot:FILE".
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "host/record_source.h"

namespace infofiscal {

class RecordingSource : public RecordSource {
 public:
  // REQUIRES: `live` outlives this object.
  explicit RecordingSource(RecordSource& live) : live_(live) {}

  // Fetches from the live source and records the answer (rows, or the error's message). Two
  // datasets that read the same provider with the same arguments share one entry, holding the
  // fields of both.
  Packet fetch(const FetchRequest& request) override;
  std::vector<std::string> files() const override { return live_.files(); }

  // The snapshot document of everything recorded so far.
  const nlohmann::json& Snapshot() const { return document_; }
  // Writes the snapshot to `path` (atomically).
  void Save(const std::string& path) const;

 private:
  nlohmann::json& Entry(const FetchRequest& request);

  RecordSource& live_;
  nlohmann::json document_ = {{"snapshot", 1}, {"responses", nlohmann::json::array()}};
};

nlohmann::json value_to_json(const Value& value);

}  // namespace infofiscal
