#include "support/sql_script.h"

#include <sstream>

#include <soci/soci.h>

#include "base/error.h"
#include "host/sources/sql_connection.h"

namespace infofiscal {

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

}  // namespace infofiscal
