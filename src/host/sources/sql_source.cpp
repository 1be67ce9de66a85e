#include "host/sources/sql_source.h"

#include <unistd.h>

#include <cctype>
#include <cstdlib>
#include <charconv>
#include <cmath>
#include <fstream>
#include <set>
#include <sstream>
#include <unordered_map>

#include <soci/firebird/soci-firebird.h>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include "host/error.h"

namespace infofiscal {

namespace {

std::string trim(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// Rewrites the `?` and `?N` of one SELECT as :p1, :p2, ... (and as $1, $2, ...) and drops
// comments (a colon in a comment would read as a placeholder); quoted text is copied as it is.
ProviderQuery rewrite_placeholders(const std::string& sql, const std::string& where) {
  ProviderQuery query;
  const auto emit = [&](std::string_view named, std::string_view numbered) {
    query.sql += named;
    query.numbered_sql += numbered;
  };
  std::size_t next = 0;
  for (std::size_t i = 0; i < sql.size();) {
    const char c = sql[i];
    if (c == '\'' || c == '"') {
      const auto end = sql.find(c, i + 1);
      const auto stop = end == std::string::npos ? sql.size() : end + 1;
      const std::string_view quoted(sql.data() + i, stop - i);
      emit(quoted, quoted);
      i = stop;
    } else if (c == '-' && i + 1 < sql.size() && sql[i + 1] == '-') {
      i = std::min(sql.find('\n', i), sql.size());
    } else if (c == '/' && i + 1 < sql.size() && sql[i + 1] == '*') {
      const auto end = sql.find("*/", i + 2);
      i = end == std::string::npos ? sql.size() : end + 2;
      emit(" ", " ");
    } else if (c == '?') {
      std::size_t digits = i + 1;
      while (digits < sql.size() && std::isdigit(static_cast<unsigned char>(sql[digits]))) ++digits;
      // As SQLite numbers them: `?` is one more than the largest number used so far.
      std::size_t arg = next;
      if (digits > i + 1) {
        std::from_chars(sql.data() + i + 1, sql.data() + digits, arg);
        if (arg == 0) throw Error(where + ": parâmetro ?0 inválido (os parâmetros contam de 1)");
        --arg;
      }
      next = std::max(next, arg + 1);
      query.args.push_back(arg);
      const std::string number = std::to_string(query.args.size());
      emit(":p" + number, "$" + number);
      i = digits;
    } else {
      emit(std::string_view(&c, 1), std::string_view(&c, 1));
      ++i;
    }
  }
  for (std::string* text : {&query.sql, &query.numbered_sql}) {
    *text = trim(*text);
    while (!text->empty() && text->back() == ';') *text = trim(text->substr(0, text->size() - 1));
  }
  return query;
}

std::string read_text_file(const std::string& path, const std::string& what) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw Error("Não foi possível ler " + what + " '" + path + "'");
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// SOCI connect-string value, quoted when it holds blanks.
std::string connect_value(const std::string& value) {
  return value.find_first_of(" \t'\"") == std::string::npos ? value : "\"" + value + "\"";
}

// The database's own message; a missing table, the fault an adapted catalog meets most, a file
// that is no database and a refused connection are also said in Portuguese.
std::string explain(const std::string& message) {
  // SQLite, PostgreSQL and Firebird, in this order.
  for (const char* marker : {"no such table: ", "relation \"", "Table unknown\n"}) {
    const auto at = message.find(marker);
    if (at == std::string::npos) continue;
    const auto start = at + std::char_traits<char>::length(marker);
    const auto end = message.find_first_of("\" \n", start);
    const auto table = message.substr(start, end == std::string::npos ? std::string::npos : end - start);
    return "a tabela '" + table + "' não existe no banco (" + trim(message) + ")";
  }
  // The faults of opening that a user meets first.
  for (const auto& [marker, meaning] : {std::pair{"file is not a database", "o arquivo não é um banco de dados SQLite"},
                                        std::pair{"Connection refused", "o servidor recusou a conexão"}})
    if (message.find(marker) != std::string::npos) return std::string(meaning) + " (" + trim(message) + ")";
  return trim(message);
}

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// A libpq connection-string value: %XX decoded, quoted and escaped.
std::string conninfo_value(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && hex_digit(text[i + 1]) >= 0 && hex_digit(text[i + 2]) >= 0) {
      value += static_cast<char>(hex_digit(text[i + 1]) * 16 + hex_digit(text[i + 2]));
      i += 2;
    } else {
      value += text[i];
    }
  }
  std::string quoted = "'";
  for (const char c : value) {
    if (c == '\\' || c == '\'') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

// "postgresql://[user[:password]@][host][:port][/dbname][?key=value&...]" as key=value pairs:
// SOCI reads its connection string as key=value pairs and would mangle a URI.
std::string uri_to_conninfo(std::string_view uri) {
  std::string out;
  const auto add = [&](const char* key, std::string_view value) {
    if (!value.empty()) out += std::string(out.empty() ? "" : " ") + key + "=" + conninfo_value(value);
  };
  std::string_view rest = uri.substr(uri.find("//") + 2);
  std::string_view query;
  if (const auto q = rest.find('?'); q != std::string_view::npos) query = rest.substr(q + 1), rest = rest.substr(0, q);
  std::string_view path;
  if (const auto slash = rest.find('/'); slash != std::string_view::npos) path = rest.substr(slash + 1), rest = rest.substr(0, slash);
  if (const auto at = rest.rfind('@'); at != std::string_view::npos) {
    std::string_view credentials = rest.substr(0, at);
    rest = rest.substr(at + 1);
    const auto colon = credentials.find(':');
    add("user", credentials.substr(0, colon));
    if (colon != std::string_view::npos) add("password", credentials.substr(colon + 1));
  }
  const auto colon = rest.rfind(':');
  const bool has_port = colon != std::string_view::npos && rest.find(']', colon) == std::string_view::npos;
  std::string_view host = has_port ? rest.substr(0, colon) : rest;
  if (host.size() >= 2 && host.front() == '[') host = host.substr(1, host.size() - 2);
  add("host", host);
  if (has_port) add("port", rest.substr(colon + 1));
  add("dbname", path);
  while (!query.empty()) {
    const auto amp = query.find('&');
    const std::string_view pair = query.substr(0, amp);
    if (const auto eq = pair.find('='); eq != std::string_view::npos)
      add(std::string(pair.substr(0, eq)).c_str(), pair.substr(eq + 1));
    query = amp == std::string_view::npos ? std::string_view() : query.substr(amp + 1);
  }
  return out;
}

bool whole_int(const std::string& text, std::int64_t& out) {
  const auto* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, out);
  return !text.empty() && ec == std::errc() && ptr == end;
}

bool whole_double(const std::string& text, double& out) {
  const auto* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, out);
  return !text.empty() && ec == std::errc() && ptr == end;
}

// A value in the class its field declares where the database gave it another type: SQLite
// gives expressions and undeclared types as text, and stores whole NUMERIC values as integers.
Value to_field_class(Value value, FieldClass cls) {
  if (auto* text = std::get_if<std::string>(&value)) {
    std::int64_t i;
    double d;
    TimeStamp t;
    switch (cls) {
      case FieldClass::Integer:
      case FieldClass::Smallint:
        if (whole_int(*text, i)) return i;
        break;
      case FieldClass::Float:
      case FieldClass::Single:
        if (whole_double(*text, d)) return d;
        break;
      case FieldClass::TimeStamp:
        if (parse_timestamp(*text, t)) return t;
        break;
      default:
        break;
    }
  } else if (const auto* i = std::get_if<std::int64_t>(&value)) {
    if (cls == FieldClass::Float || cls == FieldClass::Single) return static_cast<double>(*i);
  }
  return value;
}

}  // namespace

namespace {

// One entry of the catalog: the words of its marker line after the name, and its SQL.
struct CatalogEntry {
  std::string name, dialect, sql, where;
  std::vector<std::string> words;
  int line = 0;
};

constexpr std::string_view kProviderMarker = "-- provider:";
constexpr std::string_view kPrefetchMarker = "-- prefetch:";

// Every entry under `marker`; a line of either marker ends the entry before it.
std::vector<CatalogEntry> catalog_entries(const std::string& text, std::string_view marker, const std::string& origin) {
  std::vector<CatalogEntry> entries;
  bool inside = false;  // in an entry of `marker`
  std::istringstream in(text);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    const bool provider = line.rfind(kProviderMarker, 0) == 0, prefetch = line.rfind(kPrefetchMarker, 0) == 0;
    if (provider || prefetch) {
      inside = line.rfind(marker, 0) == 0;
      if (!inside) continue;
      const std::string at = "Catálogo '" + origin + "', linha " + std::to_string(number);
      std::istringstream words(line.substr(marker.size()));
      CatalogEntry entry;
      entry.line = number;
      words >> entry.name;
      if (entry.name.empty()) throw Error(at + ": provedor sem nome");
      for (std::string word; words >> word;) entry.words.push_back(word);
      if (!entry.words.empty() && entry.words.back().front() == '[') {
        entry.dialect = entry.words.back();
        entry.words.pop_back();
        if (entry.dialect.size() < 3 || entry.dialect.back() != ']')
          throw Error(at + ": use [banco] depois do nome");
        entry.dialect = entry.dialect.substr(1, entry.dialect.size() - 2);
      }
      if (marker == kProviderMarker && !entry.words.empty()) throw Error(at + ": use [banco] depois do nome");
      entry.where = "Catálogo '" + origin + "', " + (marker == kProviderMarker ? "provedor " : "leitura antecipada de ") +
                    entry.name + " (linha " + std::to_string(number) + ")";
      entries.push_back(std::move(entry));
    } else if (inside) {
      entries.back().sql += line + "\n";
    }
  }
  std::set<std::string> seen;  // name + dialect
  for (const CatalogEntry& entry : entries)
    if (!seen.insert(entry.name + "[" + entry.dialect + "]").second) throw Error(entry.where + ": provedor repetido");
  return entries;
}

// What `make` makes of each entry (every one, so that mistakes in the variants of other
// databases show too), by name: a "[database]" variant replaces the plain entry for its database.
template <class Make>
auto choose(const std::vector<CatalogEntry>& entries, const std::string& dialect, Make make) {
  std::map<std::string, decltype(make(entries.front()))> chosen;
  for (const CatalogEntry& entry : entries) {
    auto value = make(entry);
    if (entry.dialect.empty())
      chosen.emplace(entry.name, std::move(value));  // a variant seen earlier stays
    else if (entry.dialect == dialect)
      chosen.insert_or_assign(entry.name, std::move(value));
  }
  return chosen;
}

ProviderQuery entry_query(const CatalogEntry& entry) {
  ProviderQuery query = rewrite_placeholders(entry.sql, entry.where);
  if (query.sql.empty()) throw Error(entry.where + ": falta o SELECT");
  return query;
}

}  // namespace

ProviderCatalog parse_provider_catalog(const std::string& text, const std::string& dialect,
                                       const std::string& origin) {
  return choose(catalog_entries(text, kProviderMarker, origin), dialect, entry_query);
}

PrefetchCatalog parse_prefetch_catalog(const std::string& text, const std::string& dialect,
                                       const std::string& origin) {
  return choose(catalog_entries(text, kPrefetchMarker, origin), dialect, [](const CatalogEntry& entry) {
    if (entry.words.size() < 2)
      throw Error(entry.where + ": use '-- prefetch: PROVEDOR LISTA CHAVE...' (a lista e as colunas que nomeiam a nota)");
    PrefetchQuery prefetch{entry.words.front(), {}, entry_query(entry)};
    for (auto key = entry.words.begin() + 1; key != entry.words.end(); ++key) prefetch.keys.push_back(upper_case(*key));
    return prefetch;
  });
}

std::string default_catalog_path() { return INFOFISCAL_SOURCE_DIR "/db/providers.sql"; }

namespace {

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

namespace {

struct Address {
  std::string scheme, rest;
};

Address split_address(const std::string& address) {
  const auto colon = address.find(':');
  if (colon == std::string::npos) return {"", ""};
  return {address.substr(0, colon), address.substr(colon + 1)};
}

// "postgresql://..." is a URI; any other text after "postgresql:" a libpq connection string.
std::string postgresql_conninfo(const std::string& address) {
  const std::string rest = split_address(address).rest;
  return rest.rfind("//", 0) == 0 ? uri_to_conninfo(address) : rest;
}

// Throws for an address that names no database after its scheme.
void require_database(const std::string& address) {
  const auto [scheme, rest] = split_address(address);
  if (trim(rest).empty())
    throw Error("Endereço de fonte de dados incompleto: '" + address + "' (falta o banco depois de '" + scheme + ":')");
}

[[noreturn]] void cannot_open(const std::string& address, const soci::soci_error& e) {
  throw Error("Não foi possível abrir a fonte de dados '" + address + "': " + explain(e.what()));
}

// A writable session on `address` (an SQLite file is created when missing).
std::unique_ptr<soci::session> open_session(const std::string& address) {
  require_database(address);
  const auto [scheme, rest] = split_address(address);
  try {
    std::unique_ptr<soci::session> session;
    if (scheme == "sqlite") {
      session = std::make_unique<soci::session>(*soci::factory_sqlite3(), "db=" + connect_value(rest));
      // SQLite reads the file lazily: look at it now, so that a file that is no database fails here.
      int tables = 0;
      *session << "SELECT count(*) FROM sqlite_master", soci::into(tables);
    } else if (scheme == "postgresql") {
      session = std::make_unique<soci::session>(*soci::factory_postgresql(), postgresql_conninfo(address));
    } else if (scheme == "firebird") {
      // A database (a file for the embedded engine, or host:path) or SOCI's own key=value text.
      const std::string parameters = rest.find('=') != std::string::npos
                                         ? rest
                                         : "service=" + connect_value(rest) + " user=SYSDBA charset=UTF8";
      session = std::make_unique<soci::session>(*soci::factory_firebird(), parameters);
    } else {
      throw Error("Fonte de dados '" + scheme + "' não suportada nesta versão: '" + address + "'");
    }
    return session;
  } catch (const soci::soci_error& e) {
    cannot_open(address, e);
  }
}

// The connection the record source reads through; an SQLite file must exist.
std::unique_ptr<SqlConnection> open_connection(const std::string& address) {
  const auto [scheme, rest] = split_address(address);
  if (scheme == "postgresql") return soci_connection(open_session(address), postgresql_conninfo(address));
  if (scheme != "sqlite") return soci_connection(open_session(address));
  require_database(address);
  if (access(rest.c_str(), F_OK) != 0) throw Error("Banco de dados SQLite '" + rest + "' não encontrado");
  try {
    return open_sqlite_reader(rest);
  } catch (const soci::soci_error& e) {
    cannot_open(address, e);
  }
}

}  // namespace

void run_sql_script(const std::string& address, const std::string& script) {
  const auto session = open_session(address);
  const std::string scheme = split_address(address).scheme;
  // SQLite would write the file out after every statement of its own: one transaction for
  // the script, which also leaves no half-loaded file behind.
  if (scheme == "sqlite") session->begin();
  std::istringstream in(script);
  std::string line, statement;
  try {
    while (std::getline(in, line)) {
      if (trim(line).rfind("--", 0) == 0) continue;
      statement += line + "\n";
      if (trim(line).empty() || trim(line).back() != ';') continue;
      *session << trim(statement);
      // Firebird runs everything in a transaction: a table is there for the next statement
      // only once its creation is committed, and is dropped only once the rows that used it are.
      if (scheme == "firebird") session->commit();
      statement.clear();
    }
    if (scheme == "sqlite") session->commit();
  } catch (const soci::soci_error& e) {
    throw Error("Erro no script SQL em '" + address + "': " + explain(e.what()) + "\n" + trim(statement));
  }
}

SqlSource::SqlSource(const std::string& address, const std::string& catalog_path)
    : address_(address), dialect_(split_address(address).scheme) {
  const std::string text = read_text_file(catalog_path, "o catálogo de provedores");
  catalog_ = parse_provider_catalog(text, dialect_, catalog_path);
  prefetch_ = parse_prefetch_catalog(text, dialect_, catalog_path);
  connection_ = open_connection(address);
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
                ") em '" + address_ + "': " + explain(e.what()));
  }
}

std::unique_ptr<RecordSource> open_sql_source(const std::string&, const std::string&, const std::string& address) {
  auto source = std::make_unique<SqlSource>(address, default_catalog_path());
  // For measuring what fetching ahead gains (bench/run).
  if (const char* off = std::getenv("INFOFISCAL_SEM_LEITURA_ANTECIPADA"); off && *off) source->Prefetch(false);
  return source;
}

}  // namespace infofiscal
