// Connections of the SQL sources: the source address ("sqlite:PATH", "postgresql:CONNINFO",
// "postgresql://...", "firebird:DATABASE" or "firebird:service=... user=...") turned into a
// database connection, and the database's messages said in Portuguese.
#pragma once

#include <memory>
#include <string>

#include "host/sources/sql_statement.h"

namespace soci {
class session;
}

namespace infofiscal {

// The scheme of an address and what follows its first colon; both empty without a colon.
struct Address {
  std::string scheme, rest;
};
Address split_address(const std::string& address);

// The database's own message; a missing table, the fault an adapted catalog meets most, a file
// that is no database, a refused connection and a locked database are also said in Portuguese.
std::string explain(const std::string& message);

// The same for a query that failed during the run, where a connection that the server closed
// is said in one line, with the server's reason and without the SQL that was running.
std::string explain_query_failure(const std::string& message);

// A writable SOCI session on `address` (an SQLite file is created when missing): what setting
// up a database needs. Throws Error naming the address.
std::unique_ptr<soci::session> open_session(const std::string& address);

// The connection a record source reads through; an SQLite file must exist and is opened
// read-only, waited for as `options` say while another program writes it. Throws Error naming
// the address (its password hidden).
std::unique_ptr<SqlConnection> open_connection(const std::string& address, const SourceOptions& options);

}  // namespace infofiscal
