// Databases for the SQL source tests: SQLite files, and PostgreSQL databases on the server
// that scripts/test starts (its address in INFOFISCAL_TEST_PG).
#pragma once

#include <string>

namespace infofiscal::testing {

// The server's address, or "" when INFOFISCAL_TEST_PG is not set.
std::string pg_server();
// The message a test skips with when there is no server.
inline constexpr const char* kSemPostgres =
    "INFOFISCAL_TEST_PG não definido: sem servidor PostgreSQL (scripts/test inicia um)";

// A database of `backend` ("sqlite" or "postgresql") loaded with `script`, dropped (or left in
// the test folder, for SQLite) when this goes. REQUIRES: for "postgresql", pg_server() is set.
class TestDatabase {
 public:
  TestDatabase(const std::string& backend, const std::string& name, const std::string& script);
  ~TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;

  // The record-source address of the database.
  const std::string& address() const { return address_; }

 private:
  std::string address_, pg_name_;
};

// The reference schema followed by the demo month.
std::string demo_script();

}  // namespace infofiscal::testing
