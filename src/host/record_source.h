// The record source: named providers that answer a fetch with a packet of rows.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/value.h"

namespace infofiscal {

// Field classes of a client dataset, as the module declares them.
enum class FieldClass : std::uint8_t { String, Integer, Smallint, Float, Single, TimeStamp, Blob };

// One persistent field: name, class and size in characters (sizes are documentation: values
// pass as stored, neither cut nor padded).
struct FieldDef {
  std::string_view name;
  FieldClass cls = FieldClass::String;
  int size = 0;
};

// How a dataset is fetched. A reopen is a parameter open without parameters.
enum class FetchKind : std::uint8_t { ParameterOpen, DataRequest };

// What a dataset asks of the source on open.
struct FetchRequest {
  std::string_view dataset;           // the dataset's name, for messages
  std::string_view provider;          // e.g. "DspCompra"
  FetchKind kind = FetchKind::ParameterOpen;
  std::span<const Value> args;        // parameters in order, or the data-request array
  std::span<const FieldDef> fields;   // the declared fields, in declared order
};

// The answer: one cell per declared field per row, row after row, in declared-field order.
struct Packet {
  std::size_t width = 0;     // number of declared fields
  std::vector<Value> cells;  // rows() * width values

  std::size_t rows() const { return width == 0 ? 0 : cells.size() / width; }
};

// The message of a declared field that the provider did not deliver.
std::string missing_field_message(std::string_view field, std::string_view dataset);

// A back end of the record source (SQL database, snapshot, ...). A fetch either returns the
// packet or throws Error with a message that names what went wrong.
class RecordSource {
 public:
  virtual ~RecordSource() = default;
  virtual Packet fetch(const FetchRequest& request) = 0;
  // The files on this machine that the source reads (a database file, a snapshot): what no
  // run may write over.
  virtual std::vector<std::string> files() const { return {}; }
};

// Whether an SQL source fetches a note list's answers ahead (its back end's default: on for
// PostgreSQL, off for the others) or never, which the benchmark uses to measure what it gains.
enum class FetchAhead { Default, Off };

// Whether the back end that `address` names reads the provider catalog: the SQL back ends do,
// a snapshot does not (nor does an address of no back end, which open_record_source refuses).
bool reads_provider_catalog(const std::string& address);

struct SourceOptions {
  // The provider catalog (host/sources/sql_catalog.h) that an SQL back end reads its SELECTs
  // from; the others ignore it. Where the catalog lives is the caller's business: an installed
  // program, a build tree and a host application each know their own.
  std::string catalog_path{};
  FetchAhead fetch_ahead = FetchAhead::Default;
  // How long a database that another program is writing (an SQLite file locked by its writer)
  // is waited for before the source gives up.
  std::chrono::milliseconds busy_wait{30'000};
  // Told, in Portuguese, when the source starts such a wait; nothing is said when unset.
  std::function<void(const std::string&)> notice{};
};

// Opens the back end that an address names: "snapshot:FILE.json", "sqlite:PATH",
// "postgresql:..." or "postgresql://...", "firebird:...". Throws Error for an unknown or
// unusable address, or an SQL address with a catalog that cannot be read.
std::unique_ptr<RecordSource> open_record_source(const std::string& address, const SourceOptions& options);

// The files on this machine that the source of `address` would read, found from the address
// alone (nothing is opened): the SQLite file, an embedded Firebird database that exists here,
// the snapshot.
std::vector<std::string> files_of_address(const std::string& address);

// `address` as messages show it: the password of a connection string ("password=...", in a
// URI "user:password@" or "?password=...") replaced by "***". Messages, message boxes,
// snapshots and logs name a source only so.
std::string shown_address(const std::string& address);

}  // namespace infofiscal
