// SQL back ends of the record source: one SELECT per provider, read from the provider catalog.
//
// The catalog (db/providers.sql) is plain SQL with a marker line before each provider:
//
//   -- provider: DspCompra
//   SELECT ... FROM compra c WHERE c.cdcompra = ?;
//
//   -- provider: DspCompra [firebird]     (a variant for one back end; the plain entry serves
//   SELECT ...;                            the others)
//
// `?N` takes the N-th value of the fetch (from 1: the parameters of a parameter open, or the
// data-request array), `?` the one after the largest number used so far (the first, at first); the values are bound with their own types. Values that the
// SELECT does not use are ignored. The columns are matched to the dataset's declared fields by
// name, ignoring case.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/record_source.h"

namespace soci {
class session;
}

namespace infofiscal {

// One provider's SELECT, made ready for SOCI: each `?` rewritten as a named placeholder, with
// the fetch value (0-based) that each placeholder takes, in order of appearance.
struct ProviderQuery {
  std::string sql;
  std::vector<std::size_t> args;
};

// Provider name -> query, for one back end ("sqlite", "postgresql", "firebird").
using ProviderCatalog = std::map<std::string, ProviderQuery>;

// Parses catalog text for `dialect`; `origin` names the file in messages. Throws Error for a
// provider given twice, a provider without SELECT, or a bad `?N`.
ProviderCatalog parse_provider_catalog(const std::string& text, const std::string& dialect,
                                       const std::string& origin);

// The catalog that the SQL sources read by default: db/providers.sql of this source tree.
std::string default_catalog_path();

// Every fetch runs one prepared statement, found or prepared in StatementFor, the one place
// that knows them: fetching the answers of a whole note list ahead can be added there.
class SqlSource : public RecordSource {
 public:
  // Connects to `address` ("sqlite:PATH", "postgresql:CONNINFO", "postgresql://...",
  // "firebird:DATABASE" or "firebird:service=... user=...") and reads
  // the catalog at `catalog_path`. Throws Error naming the address or the file when either
  // cannot be used; an SQLite file is opened read-only and must exist.
  SqlSource(const std::string& address, const std::string& catalog_path);
  ~SqlSource() override;

  // Runs the provider's SELECT with the request's values and returns one cell per declared
  // field. A provider the catalog lacks, a declared field the SELECT does not return, or a
  // database error throws Error naming the provider and the dataset.
  Packet fetch(const FetchRequest& request) override;

  // How many statements have been prepared so far (one per provider and kinds of values).
  std::size_t PreparedStatements() const { return statements_.size(); }

 private:
  struct Statement;
  // The one cache of prepared statements: found or prepared here, reused by every fetch.
  Statement& StatementFor(const FetchRequest& request, const ProviderQuery& query);
  Packet Read(Statement& statement, const FetchRequest& request);

  std::string address_, dialect_;
  std::unique_ptr<soci::session> session_;
  ProviderCatalog catalog_;
  std::map<std::string, std::unique_ptr<Statement>> statements_;
};

// Runs an SQL script on a writable connection to `address` (an SQLite file is created when
// missing): statements end with ';' at the end of a line, lines starting with "--" are
// comments. For setting up databases (tests, demo). Throws Error quoting the failing statement.
void run_sql_script(const std::string& address, const std::string& script);

// Opens "sqlite:PATH", "postgresql:..." or "firebird:..." with the default catalog (scheme and
// the rest of the address split at the first colon); `address` is the whole address.
std::unique_ptr<RecordSource> open_sql_source(const std::string& scheme, const std::string& rest,
                                              const std::string& address);

}  // namespace infofiscal
