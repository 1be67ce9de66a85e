#include "host/sources/sql_statement.h"

#include <libpq-fe.h>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <ctime>
#include <deque>

#include <fmt/format.h>
#include <soci/soci.h>

#include "base/error.h"

namespace infofiscal {

std::string upper_case(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

namespace {
constexpr std::string_view kBlanks = " \t\r\n";
}  // namespace

void trim_start(std::string& text) { text.erase(0, std::min(text.find_first_not_of(kBlanks), text.size())); }

void trim_end(std::string& text) { text.erase(text.find_last_not_of(kBlanks) + 1); }

std::string trim(const std::string& text) {
  std::string trimmed = text;
  trim_end(trimmed);
  trim_start(trimmed);
  return trimmed;
}

void ColumnNames::Add(std::string_view name) { by_name_.emplace(upper_case(name), count_++); }

std::optional<std::size_t> ColumnNames::Find(std::string_view upper_name) const {
  const auto found = by_name_.find(std::string(upper_name));
  if (found == by_name_.end()) return std::nullopt;
  return found->second;
}

const std::vector<std::size_t>* ColumnNames::Of(std::span<const FieldDef> fields, std::string_view* missing) {
  const auto same = [&] {
    if (fields.size() != last_fields_.size()) return false;
    for (std::size_t f = 0; f < fields.size(); ++f)
      if (fields[f].name != last_fields_[f]) return false;
    return true;
  };
  if (same()) return &last_columns_;
  last_fields_.clear();
  last_columns_.clear();
  for (const FieldDef& field : fields) {
    const auto column = Find(upper_case(field.name));
    if (!column) {
      if (missing) *missing = field.name;
      last_columns_.clear();
      return nullptr;
    }
    last_columns_.push_back(*column);
  }
  for (const FieldDef& field : fields) last_fields_.emplace_back(field.name);
  return &last_columns_;
}

std::unique_ptr<RowCursor> SqlConnection::Stream(const ProviderQuery& query, std::span<const Value> args) {
  auto statement = Prepare(query, args);
  statement->Run(args);
  return statement;
}

namespace {

// A value as the text of a bound parameter.
std::string parameter_text(const Value& value) {
  if (const auto* i = std::get_if<std::int64_t>(&value)) return std::to_string(*i);
  if (const auto* d = std::get_if<double>(&value)) return fmt::format("{}", *d);
  if (const auto* t = std::get_if<TimeStamp>(&value))
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", t->year, t->month, t->day, t->hour, t->minute, t->second);
  return std::get<std::string>(value);
}

// SQLite's statements, on a connection of their own.
class SqliteStatement : public SqlStatement {
 public:
  SqliteStatement(sqlite3* db, const ProviderQuery& query) : db_(db), args_(query.args) {
    if (sqlite3_prepare_v3(db, query.sql.c_str(), static_cast<int>(query.sql.size()), SQLITE_PREPARE_PERSISTENT,
                           &statement_, nullptr) != SQLITE_OK)
      throw soci::soci_error(std::string(sqlite3_errmsg(db)) + " em \"" + query.sql + "\"");
    for (int c = 0; c < sqlite3_column_count(statement_); ++c) columns.Add(sqlite3_column_name(statement_, c));
  }
  ~SqliteStatement() override { sqlite3_finalize(statement_); }

  void Run(std::span<const Value> args) override {
    sqlite3_reset(statement_);
    // The placeholders :p1, :p2, ... are SQLite's parameters 1, 2, ... in order of appearance.
    for (std::size_t p = 0; p < args_.size(); ++p) Bind(static_cast<int>(p + 1), args[args_[p]]);
  }

  bool Next() override {
    const int result = sqlite3_step(statement_);
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) return false;
    throw soci::soci_error(sqlite3_errmsg(db_));
  }

  // The type a cell is stored in: SQLite's columns have no fixed type.
  Value Cell(std::size_t column) const override {
    const int c = static_cast<int>(column);
    switch (sqlite3_column_type(statement_, c)) {
      case SQLITE_INTEGER:
        return std::int64_t{sqlite3_column_int64(statement_, c)};
      case SQLITE_FLOAT:
        return sqlite3_column_double(statement_, c);
      case SQLITE_NULL:
        return std::monostate{};
      default: {  // text, or a blob read as its bytes
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, c));
        return std::string(bytes ? bytes : "", static_cast<std::size_t>(sqlite3_column_bytes(statement_, c)));
      }
    }
  }

 private:
  void Bind(int parameter, const Value& value) {
    int result = SQLITE_OK;
    if (const auto* i = std::get_if<std::int64_t>(&value)) {
      result = sqlite3_bind_int64(statement_, parameter, *i);
    } else if (const auto* d = std::get_if<double>(&value)) {
      result = sqlite3_bind_double(statement_, parameter, *d);
    } else if (is_null(value)) {
      result = sqlite3_bind_null(statement_, parameter);
    } else {  // text, and times as text
      const std::string text = parameter_text(value);
      result = sqlite3_bind_text(statement_, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
    if (result != SQLITE_OK) throw soci::soci_error(sqlite3_errmsg(db_));
  }

  sqlite3* db_;
  std::vector<std::size_t> args_;
  sqlite3_stmt* statement_ = nullptr;
};

class SqliteReader : public SqlConnection {
 public:
  SqliteReader(const std::string& path, std::chrono::milliseconds busy_wait,
               const std::function<void(const std::string&)>& notice)
      : path_(path), busy_wait_(busy_wait), notice_(notice) {
    // No mutex: the connection is used by one thread at a time, and SQLite's locks cost as
    // much as the reading of a note.
    const int opened = sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    if (opened != SQLITE_OK) Fail();
    sqlite3_busy_handler(db_, &SqliteReader::Busy, this);
    // The read transaction takes its lock on its first read, here: a writer that holds the
    // file is waited for now, not in the middle of the run. SQLite reads the file lazily, so
    // that read is also where a file that is no database fails.
    Execute("BEGIN");
    Execute("SELECT count(*) FROM sqlite_master");
    // A page cache that holds the notes' indexes and the catalogues: the default one (2 MiB)
    // sends most lookups of a large month back to the file.
    Execute("PRAGMA cache_size = -65536");
  }
  ~SqliteReader() override { sqlite3_close_v2(db_); }

  std::unique_ptr<SqlStatement> Prepare(const ProviderQuery& query, std::span<const Value>) override {
    return std::make_unique<SqliteStatement>(db_, query);
  }

 private:
  // SQLite's busy handler: true to try again. Says once that it waits, and waits in steps of
  // 50 ms up to busy_wait_ from the first call of this wait.
  static int Busy(void* self, int calls) {
    auto& reader = *static_cast<SqliteReader*>(self);
    const auto now = std::chrono::steady_clock::now();
    if (calls == 0) {
      reader.busy_since_ = now;
      if (reader.notice_)
        reader.notice_(fmt::format("Banco de dados SQLite '{}' bloqueado por outro programa: aguardando até {} s",
                                   reader.path_, reader.WaitSeconds()));
    }
    if (now - reader.busy_since_ >= reader.busy_wait_) return 0;
    sqlite3_sleep(50);
    return 1;
  }
  long long WaitSeconds() const { return std::chrono::ceil<std::chrono::seconds>(busy_wait_).count(); }

  [[noreturn]] void Fail() {
    const bool busy = db_ && sqlite3_errcode(db_) == SQLITE_BUSY;
    const std::string message = db_ ? sqlite3_errmsg(db_) : "sem memória";
    sqlite3_close_v2(db_);
    db_ = nullptr;
    if (busy)
      throw Error(fmt::format(
          "Banco de dados SQLite '{}' bloqueado por outro programa há {} s: tente de novo quando ele terminar de gravar",
          path_, WaitSeconds()));
    throw soci::soci_error(message);
  }
  void Execute(const char* sql) {
    if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
  }

  std::string path_;
  std::chrono::milliseconds busy_wait_;
  std::function<void(const std::string&)> notice_;
  std::chrono::steady_clock::time_point busy_since_;
  sqlite3* db_ = nullptr;
};

TimeStamp from_tm(const std::tm& t) {
  return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec};
}

// A SOCI statement with the storage its placeholders are bound to. Fixed in memory: SOCI keeps
// pointers to the bound variables and to the row.
class SociStatement : public SqlStatement {
 public:
  SociStatement(soci::session& session, const ProviderQuery& query, std::span<const Value> args)
      : statement_(session), params_(args.size()) {
    statement_.exchange(soci::into(row_));
    for (const std::size_t arg : query.args) {
      Param& p = params_[arg];
      switch (args[arg].index()) {
        case 2:
          statement_.exchange(soci::use(p.number, p.indicator));
          break;
        case 3:
          statement_.exchange(soci::use(p.text, p.indicator));
          break;
        case 4:
          statement_.exchange(soci::use(p.time, p.indicator));
          break;
        default:  // integers, and nulls (bound as a null integer)
          statement_.exchange(soci::use(p.integer, p.indicator));
          break;
      }
    }
    // Bound before the prepare, so that a failure to prepare quotes the values of this request.
    Assign(args);
    statement_.alloc();
    statement_.prepare(query.sql);
    statement_.define_and_bind();
  }

  void Run(std::span<const Value> args) override {
    Assign(args);
    statement_.execute(false);
    if (columns.Count() == 0)
      for (std::size_t c = 0; c < row_.size(); ++c) columns.Add(row_.get_properties(c).get_name());
  }

  bool Next() override { return statement_.fetch(); }

  Value Cell(std::size_t column) const override {
    if (row_.get_indicator(column) == soci::i_null) return std::monostate{};
    switch (row_.get_properties(column).get_data_type()) {
      case soci::dt_integer:
        return std::int64_t{row_.get<int>(column)};
      case soci::dt_long_long:
        return std::int64_t{row_.get<long long>(column)};
      case soci::dt_unsigned_long_long:
        return static_cast<std::int64_t>(row_.get<unsigned long long>(column));
      case soci::dt_double:
        return row_.get<double>(column);
      case soci::dt_date:
        return from_tm(row_.get<std::tm>(column));
      case soci::dt_string:
      case soci::dt_xml:
        return row_.get<std::string>(column);
      default:
        throw soci::soci_error("a coluna '" + row_.get_properties(column).get_name() + "' tem um tipo que a fonte não lê");
    }
  }

 private:
  struct Param {
    long long integer = 0;
    double number = 0;
    std::string text;
    std::tm time{};
    soci::indicator indicator = soci::i_ok;
  };

  // The request's values into the bound storage.
  void Assign(std::span<const Value> args) {
    for (std::size_t i = 0; i < args.size(); ++i) {
      Param& p = params_[i];
      const Value& v = args[i];
      p.indicator = is_null(v) ? soci::i_null : soci::i_ok;
      if (const auto* n = std::get_if<std::int64_t>(&v)) p.integer = *n;
      if (const auto* d = std::get_if<double>(&v)) p.number = *d;
      if (const auto* s = std::get_if<std::string>(&v)) p.text = *s;
      if (const auto* t = std::get_if<TimeStamp>(&v)) {
        // By name: the C libraries' std::tm differ past the standard's fields.
        p.time = std::tm{};
        p.time.tm_sec = t->second;
        p.time.tm_min = t->minute;
        p.time.tm_hour = t->hour;
        p.time.tm_mday = t->day;
        p.time.tm_mon = t->month - 1;
        p.time.tm_year = t->year - 1900;
        p.time.tm_isdst = -1;
      }
    }
  }

  soci::statement statement_;
  soci::row row_;
  std::deque<Param> params_;  // one per fetch value
};

using PgConnection = std::unique_ptr<PGconn, void (*)(PGconn*)>;

// The connections of the streams, kept from one stream to the next: a new server process for
// every stream would map the server's shared memory and grow its working memory afresh.
class PgConnections {
 public:
  explicit PgConnections(std::string conninfo) : conninfo_(std::move(conninfo)) {}

  // An idle connection, or a new one.
  PgConnection Take() {
    if (!idle_.empty()) {
      PgConnection connection = std::move(idle_.back());
      idle_.pop_back();
      return connection;
    }
    PgConnection connection(PQconnectdb(conninfo_.c_str()), PQfinish);
    if (PQstatus(connection.get()) != CONNECTION_OK) throw soci::soci_error(PQerrorMessage(connection.get()));
    // The rows are read at the pace of the lines written: workers that sort ahead of that
    // would cost the server their start and gain nothing.
    PQclear(PQexec(connection.get(), "SET max_parallel_workers_per_gather = 0"));
    return connection;
  }

  // Takes back a connection whose query is over.
  void Give(PgConnection connection) { idle_.push_back(std::move(connection)); }

 private:
  std::string conninfo_;
  std::vector<PgConnection> idle_;
};

// How a column's text is read, by the type the server declares for it: the cells are those
// SOCI would give (integers, numbers, times, text). A column of any other type fails the stream.
enum class PgKind : std::uint8_t { Integer, Number, Time, Text };

PgKind pg_kind(Oid type, const std::string& column) {
  switch (type) {
    case 20: case 21: case 23: case 26:  // int8, int2, int4, oid
      return PgKind::Integer;
    case 700: case 701: case 1700:  // float4, float8, numeric
      return PgKind::Number;
    case 1082: case 1114:  // date, timestamp
      return PgKind::Time;
    case 18: case 19: case 25: case 1042: case 1043:  // char, name, text, bpchar, varchar
      return PgKind::Text;
    default:
      throw soci::soci_error("a coluna '" + column + "' tem um tipo que a leitura antecipada não lê");
  }
}

// A cell's text, as the server writes it, in its column's kind. Throws Error naming the column
// and the text for one that does not read so.
Value pg_value(PgKind kind, std::string_view text, const std::string& column) {
  switch (kind) {
    case PgKind::Integer: {
      std::int64_t i = 0;
      const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), i);
      if (ec == std::errc() && end == text.data() + text.size() && !text.empty()) return i;
      break;
    }
    case PgKind::Number: {
      double d = 0;
      const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), d);
      if (ec == std::errc() && end == text.data() + text.size() && !text.empty()) return d;
      break;
    }
    case PgKind::Time: {
      TimeStamp t;
      if (parse_timestamp(text, t)) return t;
      break;
    }
    case PgKind::Text:
      return std::string(text);
  }
  throw Error(fmt::format("Valor '{}' ilegível na coluna '{}' da leitura antecipada", text, column));
}

// The SELECT with each placeholder replaced by its value as a quoted literal, escaped by libpq
// for this connection (its encoding and its rules for backslashes), or by NULL: COPY takes no
// bound values. A quoted literal has no type of its own, as a value bound without one: the
// server reads it as the type its place in the SELECT asks for.
std::string with_literals(PGconn* connection, const ProviderQuery& query, std::span<const Value> args) {
  std::string sql = query.between.front();
  for (std::size_t p = 0; p < query.args.size(); ++p) {
    const Value& value = args[query.args[p]];
    if (is_null(value)) {
      sql += "NULL";
    } else {
      const std::string text = parameter_text(value);
      const std::unique_ptr<char, void (*)(void*)> literal(PQescapeLiteral(connection, text.data(), text.size()),
                                                           PQfreemem);
      if (!literal) throw soci::soci_error(PQerrorMessage(connection));
      sql += literal.get();
    }
    sql += query.between[p + 1];
  }
  return sql;
}

using PgResult = std::unique_ptr<PGresult, void (*)(PGresult*)>;

// The rows of one SELECT as PostgreSQL sends them through `COPY (SELECT ...) TO STDOUT`, on a
// connection of its own: the server writes the rows as text without a result object per row on
// either side, the answer of a whole note list is never held at once, and the server computes
// the next rows while this process writes the lines of the first. The columns' names and types
// come from the SELECT described before it runs.
class PostgresqlStream : public RowCursor {
 public:
  PostgresqlStream(PgConnections& pool, const ProviderQuery& query, std::span<const Value> args)
      : pool_(pool), connection_(pool.Take()) {
    const std::string select = with_literals(Connection(), query, args);
    Describe(select);
    const std::string copy = "COPY (" + select + ") TO STDOUT";
    Expect(PgResult(PQexec(Connection(), copy.c_str()), PQclear), PGRES_COPY_OUT);
  }

  // The connection goes back to the pool when what is left of the COPY can be read without
  // waiting (a stream read to its end, or whose last rows have arrived); otherwise it is closed,
  // which stops the query.
  ~PostgresqlStream() override {
    PQfreemem(row_);
    if (!PQconsumeInput(Connection())) return;
    if (!ended_) {
      char* rest = nullptr;
      int length = 0;
      while ((length = PQgetCopyData(Connection(), &rest, 1)) > 0) PQfreemem(rest);
      if (length == 0) return;  // more rows are on their way
    }
    while (!PQisBusy(Connection())) {
      PGresult* result = PQgetResult(Connection());
      if (result == nullptr) {
        if (PQtransactionStatus(Connection()) == PQTRANS_IDLE) pool_.Give(std::move(connection_));
        return;
      }
      PQclear(result);
    }
  }

  bool Next() override {
    if (ended_) return false;
    PQfreemem(row_);
    row_ = nullptr;
    const int length = PQgetCopyData(Connection(), &row_, 0);
    if (length > 0) {
      Split(length);
      return true;
    }
    ended_ = true;
    if (length == -1)  // the COPY is over: its result says whether the SELECT ran to its end
      Expect(PgResult(PQgetResult(Connection()), PQclear), PGRES_COMMAND_OK);
    else
      Fail(PQerrorMessage(Connection()));
    return false;
  }

  Value Cell(std::size_t column) const override {
    const std::string_view text = cells_[column];
    if (text.data() == nullptr) return std::monostate{};
    return pg_value(kinds_[column], text, names_[column]);
  }

 private:
  // The SELECT's columns, from the server's description of it (a COPY's rows come without one).
  void Describe(const std::string& select) {
    Expect(PgResult(PQprepare(Connection(), "", select.c_str(), 0, nullptr), PQclear), PGRES_COMMAND_OK);
    const PgResult description(PQdescribePrepared(Connection(), ""), PQclear);
    Expect(description, PGRES_COMMAND_OK);
    for (int c = 0; c < PQnfields(description.get()); ++c) {
      names_.emplace_back(PQfname(description.get(), c));
      columns.Add(names_.back());
      kinds_.push_back(pg_kind(PQftype(description.get(), c), names_.back()));
    }
  }

  // The row in row_ split at its tabs into cells_; a null cell (`\N`) is a view without data.
  void Split(int length) {
    cells_.clear();
    char* cell = row_;
    char* const end = row_ + length - (length > 0 && row_[length - 1] == '\n' ? 1 : 0);
    for (;;) {
      char* const tab = static_cast<char*>(std::memchr(cell, '\t', static_cast<std::size_t>(end - cell)));
      const auto size = static_cast<std::size_t>((tab ? tab : end) - cell);
      if (size == 2 && cell[0] == '\\' && cell[1] == 'N')
        cells_.emplace_back();
      else
        cells_.push_back(Unescape(cell, size));
      if (!tab) break;
      cell = tab + 1;
    }
    if (cells_.size() != kinds_.size())
      Fail(fmt::format("a linha do COPY tem {} colunas em vez de {}", cells_.size(), kinds_.size()).c_str());
  }

  // A cell's text with COPY's escapes undone in place (each is longer than the character it
  // stands for). The server escapes only the backslash and the control characters below; what
  // follows any other backslash stands for itself.
  static std::string_view Unescape(char* cell, std::size_t size) {
    char* in = static_cast<char*>(std::memchr(cell, '\\', size));
    if (in == nullptr) return {cell, size};
    char* const end = cell + size;
    char* out = in;
    while (in < end) {
      char c = *in++;
      if (c == '\\' && in < end) {
        switch (c = *in++) {
          case 'b': c = '\b'; break;
          case 'f': c = '\f'; break;
          case 'n': c = '\n'; break;
          case 'r': c = '\r'; break;
          case 't': c = '\t'; break;
          case 'v': c = '\v'; break;
          default: break;
        }
      }
      *out++ = c;
    }
    return {cell, static_cast<std::size_t>(out - cell)};
  }

  void Expect(const PgResult& result, ExecStatusType status) {
    if (PQresultStatus(result.get()) != status) Fail(PQerrorMessage(Connection()));
  }
  [[noreturn]] static void Fail(const char* message) { throw soci::soci_error(message ? message : "?"); }
  PGconn* Connection() const { return connection_.get(); }

  PgConnections& pool_;
  PgConnection connection_;
  std::vector<std::string> names_;
  std::vector<PgKind> kinds_;
  char* row_ = nullptr;                   // the current row, as libpq gave it, unescaped in place
  std::vector<std::string_view> cells_;   // into row_; a null cell without data
  bool ended_ = false;                    // the COPY is over (or failed)
};

class SociConnection : public SqlConnection {
 public:
  SociConnection(std::unique_ptr<soci::session> session, std::string postgresql_conninfo)
      : session_(std::move(session)) {
    if (!postgresql_conninfo.empty()) streams_ = std::make_unique<PgConnections>(std::move(postgresql_conninfo));
  }

  std::unique_ptr<SqlStatement> Prepare(const ProviderQuery& query, std::span<const Value> args) override {
    return std::make_unique<SociStatement>(*session_, query, args);
  }

  std::unique_ptr<RowCursor> Stream(const ProviderQuery& query, std::span<const Value> args) override {
    if (!streams_) return SqlConnection::Stream(query, args);
    return std::make_unique<PostgresqlStream>(*streams_, query, args);
  }

 private:
  std::unique_ptr<soci::session> session_;
  std::unique_ptr<PgConnections> streams_;  // PostgreSQL's
};

}  // namespace

std::unique_ptr<SqlConnection> open_sqlite_reader(const std::string& path, std::chrono::milliseconds busy_wait,
                                                  const std::function<void(const std::string&)>& notice) {
  return std::make_unique<SqliteReader>(path, busy_wait, notice);
}

std::unique_ptr<SqlConnection> soci_connection(std::unique_ptr<soci::session> session,
                                               std::string postgresql_conninfo) {
  return std::make_unique<SociConnection>(std::move(session), std::move(postgresql_conninfo));
}

}  // namespace infofiscal
