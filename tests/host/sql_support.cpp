#include "host/sql_support.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "host/sources/sql_source.h"
#include "support/sql_script.h"
#include "support/cli.h"

namespace infofiscal::testing {

std::string pg_server() {
  const char* address = std::getenv("INFOFISCAL_TEST_PG");
  return address ? address : "";
}

std::string fb_template() {
  const char* path = std::getenv("INFOFISCAL_TEST_FB");
  return path ? path : "";
}

TestDatabase::TestDatabase(const std::string& backend, const std::string& name, const std::string& script) {
  if (backend == "sqlite") {
    address_ = "sqlite:" + fresh_dir("sql-" + name) + "/banco.sqlite";
  } else if (backend == "firebird") {
    const std::string path = fresh_dir("sql-" + name) + "/banco.fdb";
    std::filesystem::copy_file(fb_template(), path);
    address_ = "firebird:" + path;
  } else {
    // A database of its own on the shared server: the address with another database name.
    const std::string server = pg_server();
    pg_name_ = "teste_" + name + "_" + std::to_string(getpid());
    address_ = server.substr(0, server.rfind('/') + 1) + pg_name_;
    run_sql_script(server, "CREATE DATABASE " + pg_name_ + ";\n");
  }
  try {
    run_sql_script(address_, script);
  } catch (...) {
    Drop();  // the destructor does not run for a constructor that throws
    throw;
  }
}

TestDatabase::~TestDatabase() { Drop(); }

void TestDatabase::Drop() {
  if (pg_name_.empty()) return;
  try {
    run_sql_script(pg_server(), "DROP DATABASE IF EXISTS " + pg_name_ + " WITH (FORCE);\n");
  } catch (...) {
    // The server goes with the test run anyway.
  }
}

std::string catalog_path() { return INFOFISCAL_SOURCE_DIR "/db/providers.sql"; }

std::string demo_script() {
  return read_file(INFOFISCAL_SOURCE_DIR "/db/schema.sql") + read_file(INFOFISCAL_SOURCE_DIR "/db/demo.sql");
}

}  // namespace infofiscal::testing
