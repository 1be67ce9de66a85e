#include "host/sources/recording_source.h"

#include "base/atomic_file.h"
#include "base/error.h"

namespace infofiscal {

using nlohmann::json;

json value_to_json(const Value& value) {
  if (const auto* i = std::get_if<std::int64_t>(&value)) return *i;
  if (const auto* d = std::get_if<double>(&value)) return *d;
  if (const auto* s = std::get_if<std::string>(&value)) return *s;
  if (std::holds_alternative<TimeStamp>(value)) return debug_text(value);
  return nullptr;
}

json& RecordingSource::Entry(const FetchRequest& request) {
  const char* key = request.kind == FetchKind::DataRequest ? "request" : "params";
  json args = json::array();
  for (const Value& v : request.args) args.push_back(value_to_json(v));
  for (json& entry : document_["responses"])
    if (entry["provider"] == request.provider && entry.contains(key) && entry[key] == args) return entry;
  document_["responses"].push_back({{"provider", request.provider}, {key, args}});
  return document_["responses"].back();
}

Packet RecordingSource::fetch(const FetchRequest& request) {
  Packet packet;
  try {
    packet = live_.fetch(request);
  } catch (const std::exception& e) {
    Entry(request)["error"] = e.what();
    throw;
  }
  json& entry = Entry(request);
  json& rows = entry["rows"];
  if (!rows.is_array()) rows = json::array();
  for (std::size_t r = 0; r < packet.rows(); ++r) {
    if (rows.size() <= r) rows.push_back(json::object());
    for (std::size_t f = 0; f < request.fields.size(); ++f)
      rows[r][std::string(request.fields[f].name)] = value_to_json(packet.cells[r * packet.width + f]);
  }
  return packet;
}

void RecordingSource::Save(const std::string& path) const {
  write_file_atomically(path, document_.dump(1, ' ', false, json::error_handler_t::replace) + "\n");
}

}  // namespace infofiscal
