// Setting up test databases: SQL scripts run on a writable connection.
#pragma once

#include <string>

namespace infofiscal {

// Runs an SQL script on a writable connection to `address` (an SQLite file is created when
// missing): statements end with ';' at the end of a line, lines starting with "--" are
// comments. Throws Error quoting the failing statement.
void run_sql_script(const std::string& address, const std::string& script);

}  // namespace infofiscal
