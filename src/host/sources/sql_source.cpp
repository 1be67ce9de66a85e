#include "host/sources/sql_source.h"

#include <cmath>
#include <fstream>
#include <sstream>

#include <soci/soci.h>

#include "base/error.h"
#include "base/system.h"
#include "host/sources/sql_connection.h"
#include "host/sources/sql_values.h"

namespace infofiscal {

namespace {

std::string read_text_file(const std::string& path, const std::string& what) {
  std::ifstream in(path_of(path), std::ios::binary);
  if (!in) throw Error("Não foi possível ler " + what + " '" + path + "'");
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The kind of each value, which decides the C++ type it is bound as.
char kind_of(const Value& v) {
  static constexpr char kinds[] = {'n', 'i', 'd', 's', 't'};
  return kinds[v.index()];
}

std::string statement_key(const FetchRequest& request) {
  std::string key(request.provider);
  key += '/';
  for (const Value& v : request.args) key += kind_of(v);
  return key;
}

}  // namespace

SqlSource::SqlSource(const std::string& address, const std::string& catalog_path, const SourceOptions& options)
    : address_(address), shown_(shown_address(address)), dialect_(split_address(address).scheme) {
  const std::string text = read_text_file(catalog_path, "o catálogo de provedores");
  catalog_ = parse_provider_catalog(text, dialect_, catalog_path);
  prefetch_ = parse_prefetch_catalog(text, dialect_, catalog_path);
  connection_ = open_connection(address, options);
  // A round trip per note is what a server costs; SQLite runs in this process.
  prefetch_on_ = dialect_ == "postgresql";
}

// The notes of the list of a list provider fetched last: the values it was fetched with and
// each note's position in it, by key.
struct SqlSource::NoteList {
  std::vector<Value> args;
  std::vector<std::string> keys;
  std::unordered_map<std::string, std::size_t> position;
  std::uint64_t generation = 0;
};

// The answers of one per-note provider for every note of a list, in the list's order: one
// query, whose rows are read as the notes ask for them.
struct SqlSource::Stream {
  std::uint64_t generation = 0;  // of the list read
  bool failed = false;           // from here on every note of the list runs its own query
  std::unique_ptr<RowCursor> rows;
  std::vector<std::size_t> keys;  // the columns that name the note
  bool row = false;               // `rows` stands on a row not handed out yet...
  std::size_t position = 0;       // ...of the note at this position of the list
  bool ended = false;
  std::size_t last_cells = 0;     // in the last note's answer: the next one is about as large
};

namespace {

// Appends a value to a note's key: equal numbers give the same text whatever their type.
// False for a value that names no note (null, a time).
bool append_key(std::string& key, const Value& value) {
  if (const auto* i = std::get_if<std::int64_t>(&value)) {
    key += std::to_string(*i);
  } else if (const auto* d = std::get_if<double>(&value)) {
    if (*d != std::nearbyint(*d) || std::fabs(*d) > 9e15) return false;
    key += std::to_string(static_cast<std::int64_t>(*d));
  } else if (const auto* s = std::get_if<std::string>(&value)) {
    key += '\'';
    key += *s;
  } else {
    return false;
  }
  key += '\x1f';
  return true;
}

}  // namespace

void SqlSource::RememberList(const FetchRequest& request, const Packet& packet) {
  const PrefetchQuery* reader = nullptr;
  for (const auto& [provider, prefetch] : prefetch_)
    if (prefetch.list == request.provider) reader = &prefetch;
  if (!reader) return;
  auto list = std::make_unique<NoteList>();
  list->args.assign(request.args.begin(), request.args.end());
  list->keys = reader->keys;
  list->generation = ++list_generation_;
  std::vector<std::size_t> fields;
  for (const std::string& key : list->keys) {
    std::size_t f = 0;
    while (f < request.fields.size() && upper_case(request.fields[f].name) != key) ++f;
    if (f == request.fields.size()) {  // the list does not say which notes: no streams
      lists_.erase(std::string(request.provider));
      return;
    }
    fields.push_back(f);
  }
  for (std::size_t r = 0; r < packet.rows(); ++r) {
    std::string key;
    bool named = true;
    for (const std::size_t f : fields) named = named && append_key(key, packet.cells[r * packet.width + f]);
    if (named) list->position.emplace(std::move(key), r);
  }
  lists_.insert_or_assign(std::string(request.provider), std::move(list));
  // The streams of the list it replaces are done with: their connections go now.
  for (const auto& [provider, prefetch] : prefetch_)
    if (prefetch.list == request.provider) streams_.erase(provider);
}

bool SqlSource::FromStream(const FetchRequest& request, Packet& packet) {
  const auto prefetch = prefetch_.find(std::string(request.provider));
  if (prefetch == prefetch_.end()) return false;
  const auto found = lists_.find(prefetch->second.list);
  if (found == lists_.end() || found->second->keys != prefetch->second.keys ||
      request.args.size() != prefetch->second.keys.size())
    return false;
  const NoteList& list = *found->second;
  std::string key;
  for (const Value& value : request.args)
    if (!append_key(key, value)) return false;
  const auto position = list.position.find(key);
  if (position == list.position.end()) return false;

  auto& slot = streams_[prefetch->first];
  if (!slot || slot->generation != list.generation) slot = StartStream(prefetch->second, list);
  Stream& stream = *slot;
  if (stream.failed) return false;
  const std::vector<std::size_t>* columns = stream.rows->columns.Of(request.fields);
  if (!columns) return false;  // its own query names the missing field
  packet.width = request.fields.size();
  packet.cells.clear();
  packet.cells.reserve(stream.last_cells);
  try {
    // The rows of the notes before this one were asked by nobody; the rows of this one follow.
    while (stream.row || (!stream.ended && NextRow(stream, list))) {
      if (stream.position > position->second) break;
      if (stream.position == position->second)
        for (std::size_t f = 0; f < columns->size(); ++f)
          packet.cells.push_back(to_field_class(stream.rows->Cell((*columns)[f]), request.fields[f].cls));
      stream.row = false;
    }
  } catch (...) {
    // Whatever went wrong, the notes run their own queries, which say it where it belongs.
    stream.failed = true;
    stream.rows.reset();
    return false;
  }
  stream.last_cells = packet.cells.size();
  return !packet.cells.empty();  // a note without rows asks the database itself
}

std::unique_ptr<SqlSource::Stream> SqlSource::StartStream(const PrefetchQuery& prefetch, const NoteList& list) {
  auto stream = std::make_unique<Stream>();
  stream->generation = list.generation;
  stream->failed = true;
  for (const std::size_t arg : prefetch.query.args)
    if (arg >= list.args.size()) return stream;
  try {
    stream->rows = connection_->Stream(prefetch.query, list.args);
    for (const std::string& key : prefetch.keys) {
      const auto column = stream->rows->columns.Find(key);
      if (!column) return stream;
      stream->keys.push_back(*column);
    }
  } catch (...) {
    return stream;
  }
  stream->failed = false;
  return stream;
}

bool SqlSource::NextRow(Stream& stream, const NoteList& list) {
  if (!stream.rows->Next()) {
    stream.ended = true;
    return false;
  }
  std::string key;
  for (const std::size_t c : stream.keys)
    if (!append_key(key, stream.rows->Cell(c))) throw Error("linha sem nota");
  const auto position = list.position.find(key);
  // A note the list lacks, or out of the list's order: the query does not read the list.
  if (position == list.position.end() || position->second < stream.position) throw Error("fora da lista");
  stream.position = position->second;
  stream.row = true;
  return true;
}

SqlSource::~SqlSource() {
  statements_.clear();  // before the session they run on
}

SqlStatement& SqlSource::StatementFor(const FetchRequest& request, const ProviderQuery& query) {
  auto& slot = statements_[statement_key(request)];
  if (!slot) slot = connection_->Prepare(query, request.args);
  return *slot;
}

Packet SqlSource::Read(SqlStatement& st, const FetchRequest& request) {
  st.Run(request.args);
  std::string_view missing;
  const std::vector<std::size_t>* columns = st.columns.Of(request.fields, &missing);
  if (!columns) throw Error(missing_field_message(missing, request.dataset));
  Packet packet;
  packet.width = request.fields.size();
  packet.cells.reserve(st.last_cells);
  while (st.Next())
    for (std::size_t f = 0; f < columns->size(); ++f)
      packet.cells.push_back(to_field_class(st.Cell((*columns)[f]), request.fields[f].cls));
  st.last_cells = packet.cells.size();
  return packet;
}

Packet SqlSource::fetch(const FetchRequest& request) {
  const auto found = catalog_.find(std::string(request.provider));
  if (found == catalog_.end())
    throw Error("O provedor " + std::string(request.provider) + " (" + std::string(request.dataset) +
                ") não está no catálogo de provedores");
  const ProviderQuery& query = found->second;
  for (const std::size_t arg : query.args)
    if (arg >= request.args.size())
      throw Error("O provedor " + std::string(request.provider) + " usa o parâmetro " + std::to_string(arg + 1) +
                  ", mas " + std::string(request.dataset) + " enviou " + std::to_string(request.args.size()));
  Packet packet;
  if (prefetch_on_ && FromStream(request, packet)) {
    ++prefetched_;
    return packet;
  }
  // A statement that failed is dropped: the next fetch prepares it afresh.
  try {
    packet = Read(StatementFor(request, query), request);
    RememberList(request, packet);
    return packet;
  } catch (const Error&) {
    statements_.erase(statement_key(request));
    throw;
  } catch (const soci::soci_error& e) {
    statements_.erase(statement_key(request));
    throw Error("Erro ao consultar " + std::string(request.provider) + " (" + std::string(request.dataset) +
                ") em '" + shown_ + "': " + explain_query_failure(e.what()));
  }
}

std::unique_ptr<RecordSource> open_sql_source(const std::string& address, const SourceOptions& options) {
  auto source = std::make_unique<SqlSource>(address, options.catalog_path, options);
  if (options.fetch_ahead == FetchAhead::Off) source->Prefetch(false);
  return source;
}

}  // namespace infofiscal
