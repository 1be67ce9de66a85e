#include "host/sources/snapshot_source.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/error.h"
#include "base/system.h"

namespace infofiscal {

namespace {

using nlohmann::json;

// Numbers match numerically, strings exactly, null only null.
bool same_value(const json& recorded, const Value& asked) {
  if (recorded.is_number()) {
    if (const auto* i = std::get_if<std::int64_t>(&asked)) return recorded.get<double>() == static_cast<double>(*i);
    if (const auto* d = std::get_if<double>(&asked)) return recorded.get<double>() == *d;
    return false;
  }
  if (recorded.is_string()) {
    const auto* s = std::get_if<std::string>(&asked);
    return s && *s == recorded.get_ref<const std::string&>();
  }
  return recorded.is_null() && is_null(asked);
}

bool matches(const json& entry, const FetchRequest& request) {
  const char* key = request.kind == FetchKind::DataRequest ? "request" : "params";
  const auto it = entry.find(key);
  if (it == entry.end() || !it->is_array() || it->size() != request.args.size()) return false;
  for (std::size_t i = 0; i < request.args.size(); ++i)
    if (!same_value((*it)[i], request.args[i])) return false;
  return true;
}

// "na linha L, coluna C" of the 1-based byte `byte` (the parser's position of the fault).
std::string where_in_text(const std::string& text, std::size_t byte) {
  const std::size_t end = std::min(byte == 0 ? 0 : byte - 1, text.size());
  std::size_t line = 1, column = 1;
  for (std::size_t i = 0; i < end; ++i) {
    if (text[i] == '\n') {
      ++line;
      column = 1;
    } else if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
      ++column;
    }
  }
  if (end >= text.size()) return "(o texto termina antes do fim do documento)";
  return "na linha " + std::to_string(line) + ", coluna " + std::to_string(column);
}

bool supported(const json& cell) { return cell.is_null() || cell.is_number() || cell.is_string() || cell.is_boolean(); }

// The 1-based byte at which `text` opens its (limit + 1)-th nested array or object, or 0.
std::size_t too_deep(const std::string& text, int limit) {
  int depth = 0;
  bool in_string = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (in_string) {
      if (c == '\\') ++i;
      else if (c == '"') in_string = false;
    } else if (c == '"') {
      in_string = true;
    } else if (c == '[' || c == '{') {
      if (++depth > limit) return i + 1;
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
  return 0;
}

// What a fetch that an entry answers is: its kind and its values, numbers by value (7 and 7.0
// are one fetch).
std::string fetch_key(const json& entry) {
  const bool params = entry.contains("params");
  std::string key = params ? "p" : "r";
  for (const json& value : entry[params ? "params" : "request"]) {
    key += '\x1f';
    key += value.is_number() ? "n" + json(value.get<double>()).dump() : value.dump();
  }
  return key;
}

// The answer of an entry: its error, or its rows.
const json& answer(const json& entry) { return entry.contains("error") ? entry["error"] : entry["rows"]; }

}  // namespace

Value value_from_json(const json& cell, FieldClass cls) {
  if (cell.is_null()) return std::monostate{};
  if (cell.is_number_integer()) return cell.get<std::int64_t>();
  if (cell.is_number()) return cell.get<double>();
  if (cell.is_string()) {
    const auto& text = cell.get_ref<const std::string&>();
    TimeStamp t;
    if (cls == FieldClass::TimeStamp && parse_timestamp(text, t)) return t;
    return text;
  }
  if (cell.is_boolean()) return std::int64_t{cell.get<bool>() ? 1 : 0};
  throw Error("valor não suportado: " + cell.dump());
}

SnapshotSource::SnapshotSource(const std::string& path) : origin_(path), from_file_(true) {
  const auto unreadable = [&](int erro) {
    return Error("Não foi possível abrir o snapshot '" + path + "': " + system_reason(erro));
  };
  // A folder opens like a file on Linux, and does not open on Windows.
  std::error_code ec;
  if (std::filesystem::is_directory(path_of(path), ec)) throw unreadable(EISDIR);
  std::ifstream in(path_of(path), std::ios::binary);
  if (!in) throw unreadable(errno);
  std::ostringstream text;
  text << in.rdbuf();
  const std::string bytes = text.str();
  if (const std::size_t byte = too_deep(bytes, kMaxSnapshotDepth))
    throw Error("Snapshot '" + path + "' inválido: JSON aninhado em mais de " + std::to_string(kMaxSnapshotDepth) +
                " níveis " + where_in_text(bytes, byte));
  json document;
  try {
    document = json::parse(bytes);
  } catch (const json::parse_error& e) {
    throw Error("Snapshot '" + path + "' inválido: JSON mal formado " + where_in_text(bytes, e.byte));
  } catch (const json::out_of_range& e) {
    // A number past what a double holds; the parser's message quotes it: "... parsing '1E400'".
    const std::string what = e.what();
    const auto open = what.find('\''), close = what.rfind('\'');
    const std::string number = open < close ? what.substr(open + 1, close - open - 1) : what;
    throw Error("Snapshot '" + path + "' inválido: número fora da faixa: " + number);
  }
  load(document);
}

SnapshotSource::SnapshotSource(const json& document, const std::string& origin) : origin_(origin) {
  load(document);
}

void SnapshotSource::load(const json& document) {
  const auto bad = [&](const std::string& why) {
    return Error("Snapshot '" + origin_ + "' inválido: " + why);
  };
  if (!document.is_object() || document.value("snapshot", json()) != json(1))
    throw bad("falta \"snapshot\": 1");
  const auto responses = document.find("responses");
  if (responses == document.end() || !responses->is_array()) throw bad("falta a lista \"responses\"");
  std::size_t n = 0;
  std::unordered_map<std::string, std::size_t> first_answer;  // provider and fetch -> entry number
  for (const auto& entry : *responses) {
    ++n;
    const auto where = " (resposta " + std::to_string(n) + ")";
    if (!entry.is_object() || !entry.contains("provider") || !entry["provider"].is_string())
      throw bad("resposta sem \"provider\"" + where);
    const bool has_params = entry.contains("params"), has_request = entry.contains("request");
    if (has_params == has_request) throw bad("a resposta precisa de \"params\" ou \"request\"" + where);
    const json& args = entry[has_params ? "params" : "request"];
    if (!args.is_array()) throw bad("parâmetros não são uma lista" + where);
    for (const auto& arg : args)
      if (!supported(arg)) throw bad("parâmetro não suportado: " + arg.dump() + where);
    if (entry.contains("error")) {
      if (!entry["error"].is_string()) throw bad("\"error\" não é texto" + where);
    } else if (!entry.contains("rows") || !entry["rows"].is_array()) {
      throw bad("resposta sem \"rows\" nem \"error\"" + where);
    } else {
      for (const auto& row : entry["rows"]) {
        if (!row.is_object()) throw bad("linha que não é um objeto" + where);
        for (const auto& [field, cell] : row.items())
          if (!supported(cell)) throw bad("valor não suportado em \"" + field + "\": " + cell.dump() + where);
      }
    }
    const std::string& provider = entry["provider"].get_ref<const std::string&>();
    const auto [first, inserted] = first_answer.emplace(provider + '\x1e' + fetch_key(entry), n);
    if (!inserted) {
      const json& earlier = (*responses)[first->second - 1];
      if (answer(earlier) != answer(entry))
        throw bad("as respostas " + std::to_string(first->second) + " e " + std::to_string(n) + " de " + provider +
                  " respondem " + (has_params ? "a \"params\": " : "a \"request\": ") + args.dump() +
                  " de formas diferentes");
      continue;  // the same answer again: the first one answers
    }
    entries_[provider].push_back(entry);
  }
}

std::vector<std::string> SnapshotSource::files() const {
  if (!from_file_) return {};
  return {origin_};
}

Packet SnapshotSource::fetch(const FetchRequest& request) {
  Packet packet;
  packet.width = request.fields.size();
  const auto found = entries_.find(std::string(request.provider));
  if (found == entries_.end()) return packet;
  for (const auto& entry : found->second) {
    if (!matches(entry, request)) continue;
    if (const auto error = entry.find("error"); error != entry.end()) throw Error(error->get<std::string>());
    const auto& rows = entry["rows"];
    packet.cells.reserve(rows.size() * packet.width);
    for (const auto& row : rows) {
      for (const auto& field : request.fields) {
        const auto cell = row.find(field.name);
        if (cell == row.end()) throw Error(missing_field_message(field.name, request.dataset));
        packet.cells.push_back(value_from_json(*cell, field.cls));
      }
    }
    return packet;
  }
  return packet;
}

}  // namespace infofiscal
