// SQL back ends of the record source: each fetch answered by its provider's SELECT from the
// provider catalog (host/sources/sql_catalog.h). The columns are matched to the dataset's
// declared fields by name, ignoring case; the values are bound with their own types, and values
// that the SELECT does not use are ignored.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/record_source.h"
#include "host/sources/sql_catalog.h"
#include "host/sources/sql_statement.h"

namespace infofiscal {

// Every fetch runs one prepared statement, found or prepared in StatementFor, the one place
// that knows them. A per-note provider with a prefetch entry is answered, while its list is
// the one fetched last, from the stream of one query for the whole list, read as far as the
// note asked for; any failure of that query, a note it does not answer, or rows out of the
// list's order, fall back to the provider's own query, so that every error surfaces at the note
// where it would have without fetching ahead.
class SqlSource : public RecordSource {
 public:
  // Connects to `address` ("sqlite:PATH", "postgresql:CONNINFO", "postgresql://...",
  // "firebird:DATABASE" or "firebird:service=... user=...") and reads
  // the catalog at `catalog_path`. Throws Error naming the address or the file when either
  // cannot be used; an SQLite file is opened read-only and must exist (`options`: how long it
  // is waited for while another program writes it).
  SqlSource(const std::string& address, const std::string& catalog_path, const SourceOptions& options = {});
  ~SqlSource() override;

  // Runs the provider's SELECT with the request's values and returns one cell per declared
  // field. A provider the catalog lacks, a declared field the SELECT does not return, or a
  // database error throws Error naming the provider and the dataset.
  Packet fetch(const FetchRequest& request) override;
  std::vector<std::string> files() const override { return files_of_address(address_); }

  // How many statements have been prepared so far (one per provider and kinds of values).
  std::size_t PreparedStatements() const { return statements_.size(); }

  // Fetching ahead is on for PostgreSQL and off for the others unless set here; off, every
  // note runs its own query.
  void Prefetch(bool on) { prefetch_on_ = on; }
  // How many fetches were answered from a stream.
  std::size_t PrefetchedAnswers() const { return prefetched_; }

 private:
  struct NoteList;
  struct Stream;
  // The one cache of prepared statements: found or prepared here, reused by every fetch.
  SqlStatement& StatementFor(const FetchRequest& request, const ProviderQuery& query);
  Packet Read(SqlStatement& statement, const FetchRequest& request);
  // Keeps the order of the notes of a list that prefetch entries stream.
  void RememberList(const FetchRequest& request, const Packet& packet);
  // The answer from the stream of the list, or false when the provider's own query must run.
  bool FromStream(const FetchRequest& request, Packet& packet);
  std::unique_ptr<Stream> StartStream(const PrefetchQuery& prefetch, const NoteList& list);
  // Steps the stream to its next row and finds that row's note in the list; false at the end.
  // Throws for a row of no note of the list, or out of the list's order.
  bool NextRow(Stream& stream, const NoteList& list);

  std::string address_, shown_, dialect_;  // shown_: the address as messages show it
  std::unique_ptr<SqlConnection> connection_;
  ProviderCatalog catalog_;
  PrefetchCatalog prefetch_;
  std::map<std::string, std::unique_ptr<SqlStatement>> statements_;
  std::map<std::string, std::unique_ptr<NoteList>, std::less<>> lists_;  // by list provider
  std::map<std::string, std::unique_ptr<Stream>, std::less<>> streams_;  // by per-note provider
  std::uint64_t list_generation_ = 0;
  std::size_t prefetched_ = 0;
  bool prefetch_on_ = true;
};

// Opens "sqlite:PATH", "postgresql:..." or "firebird:..." with the catalog and waits of
// `options`; fetching ahead as the back end's default, or off (to measure what it gains).
std::unique_ptr<RecordSource> open_sql_source(const std::string& address, const SourceOptions& options);

}  // namespace infofiscal
