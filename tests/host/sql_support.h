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

// An empty Firebird database (UTF8) to copy, or "" when INFOFISCAL_TEST_FB is not set.
std::string fb_template();
inline constexpr const char* kSemFirebird =
    "INFOFISCAL_TEST_FB não definido: sem banco Firebird modelo (scripts/test cria um)";

// Skips the current test, with the message above, when `backend` has no test database here.
#define SKIP_WITHOUT(backend)                                                                     \
  do {                                                                                           \
    if ((backend) == "postgresql" && ::infofiscal::testing::pg_server().empty()) GTEST_SKIP() << ::infofiscal::testing::kSemPostgres; \
    if ((backend) == "firebird" && ::infofiscal::testing::fb_template().empty()) GTEST_SKIP() << ::infofiscal::testing::kSemFirebird; \
  } while (0)

// A database of `backend` ("sqlite", "postgresql" or "firebird") loaded with `script`, dropped (or left in
// the test folder, for the files of SQLite and Firebird) when this goes. REQUIRES: the backend
// has a test database (SKIP_WITHOUT).
class TestDatabase {
 public:
  TestDatabase(const std::string& backend, const std::string& name, const std::string& script);
  ~TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;

  // The record-source address of the database.
  const std::string& address() const { return address_; }

 private:
  void Drop();

  std::string address_, pg_name_;
};

// The reference schema followed by the demo month.
std::string demo_script();
// The provider catalog of this source tree.
std::string catalog_path();

}  // namespace infofiscal::testing
