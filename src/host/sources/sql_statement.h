// The database side of the SQL record source: a connection that prepares the provider queries,
// and the prepared statements that answer every fetch row by row. SQLite is read through its
// own interface, on a connection without locks (it runs in this process, where every copy and
// every lock shows in a large month); PostgreSQL and Firebird through SOCI.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/record_source.h"
#include "base/value.h"

namespace soci {
class session;
}

namespace infofiscal {

// One provider's SELECT, made ready for the database: each `?` rewritten as a named placeholder
// (:p1, :p2, ... in order of appearance), with the fetch value (0-based) that each one takes.
struct ProviderQuery {
  std::string sql;
  std::vector<std::size_t> args;
  std::vector<std::string> between;  // the SELECT around its placeholders: args.size() + 1 pieces
};

// `text` with ASCII letters in upper case: column and field names compare so.
std::string upper_case(std::string_view text);

// `text` without the blanks, tabs and line breaks at its ends; trim_start and trim_end take
// them from one end, in place.
std::string trim(const std::string& text);
void trim_start(std::string& text);
void trim_end(std::string& text);

// The names of a SELECT's columns, and which column holds each declared field of a dataset
// (by name, ignoring case; the first column of a name wins).
class ColumnNames {
 public:
  void Add(std::string_view name);
  std::size_t Count() const { return count_; }
  std::optional<std::size_t> Find(std::string_view upper_name) const;
  // The column of each field, or nullptr when the SELECT lacks one (its name goes to
  // `missing`). Datasets ask with the same fields every time: the last answer is kept.
  const std::vector<std::size_t>* Of(std::span<const FieldDef> fields, std::string_view* missing = nullptr);

 private:
  std::size_t count_ = 0;
  std::unordered_map<std::string, std::size_t> by_name_;  // upper case
  std::vector<std::string> last_fields_;
  std::vector<std::size_t> last_columns_;
};

// The rows of a SELECT that runs, read one by one. Database errors throw soci::soci_error, as
// SOCI's own do.
class RowCursor {
 public:
  virtual ~RowCursor() = default;
  // Moves to the next row; false after the last.
  virtual bool Next() = 0;
  // A cell of the current row, in the type the database gave it. Throws Error naming the
  // column and the value when a value sent as text does not read as its column's type.
  virtual Value Cell(std::size_t column) const = 0;

  ColumnNames columns;  // of a statement, known after its first Run
};

// A prepared SELECT, run again for every fetch.
class SqlStatement : public RowCursor {
 public:
  // Binds the fetch's values (each placeholder the one its query names) and runs the SELECT.
  virtual void Run(std::span<const Value> args) = 0;

  std::size_t last_cells = 0;  // cells of the last answer: the next one is likely as large
};

class SqlConnection {
 public:
  virtual ~SqlConnection() = default;
  // `query` prepared for values of the kinds of `args` (the SOCI back ends bind by type).
  virtual std::unique_ptr<SqlStatement> Prepare(const ProviderQuery& query, std::span<const Value> args) = 0;
  // `query` run once with `args`, its rows read as they are needed, alongside every other
  // statement; its columns are known on return.
  virtual std::unique_ptr<RowCursor> Stream(const ProviderQuery& query, std::span<const Value> args);
};

// A read-only connection to the SQLite file at `path`, in one read transaction for the whole run
// (one consistent view of the month, and no file lock taken and dropped around every query),
// begun here. While another program writes the file, this waits up to `busy_wait`, telling
// `notice` (when set) once that it waits; then it gives up with Error naming the file. Throws
// soci::soci_error for a file that cannot be opened or is no database.
std::unique_ptr<SqlConnection> open_sqlite_reader(const std::string& path, std::chrono::milliseconds busy_wait,
                                                  const std::function<void(const std::string&)>& notice);

// Statements through a SOCI session (PostgreSQL, Firebird). With `postgresql_conninfo`, the
// session's own, a Stream reads its rows as the server sends them, on a connection of its own.
std::unique_ptr<SqlConnection> soci_connection(std::unique_ptr<soci::session> session,
                                               std::string postgresql_conninfo = {});

}  // namespace infofiscal
