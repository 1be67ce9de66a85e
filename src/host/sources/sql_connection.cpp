#include "host/sources/sql_connection.h"

#include <cctype>
#include <filesystem>
#include <optional>
#include <string_view>

#include <soci/firebird/soci-firebird.h>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include "base/error.h"
#include "base/system.h"

namespace infofiscal {

namespace {

// SOCI connect-string value, quoted when it holds blanks.
std::string connect_value(const std::string& value) {
  return value.find_first_of(" \t'\"") == std::string::npos ? value : "\"" + value + "\"";
}

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// A libpq connection-string value: %XX decoded, quoted and escaped.
std::string conninfo_value(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && hex_digit(text[i + 1]) >= 0 && hex_digit(text[i + 2]) >= 0) {
      value += static_cast<char>(hex_digit(text[i + 1]) * 16 + hex_digit(text[i + 2]));
      i += 2;
    } else {
      value += text[i];
    }
  }
  std::string quoted = "'";
  for (const char c : value) {
    if (c == '\\' || c == '\'') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

// "postgresql://[user[:password]@][host][:port][/dbname][?key=value&...]" as key=value pairs:
// SOCI reads its connection string as key=value pairs and would mangle a URI.
std::string uri_to_conninfo(std::string_view uri) {
  std::string out;
  const auto add = [&](const char* key, std::string_view value) {
    if (!value.empty()) out += std::string(out.empty() ? "" : " ") + key + "=" + conninfo_value(value);
  };
  std::string_view rest = uri.substr(uri.find("//") + 2);
  std::string_view query;
  if (const auto q = rest.find('?'); q != std::string_view::npos) query = rest.substr(q + 1), rest = rest.substr(0, q);
  std::string_view path;
  if (const auto slash = rest.find('/'); slash != std::string_view::npos) path = rest.substr(slash + 1), rest = rest.substr(0, slash);
  if (const auto at = rest.rfind('@'); at != std::string_view::npos) {
    std::string_view credentials = rest.substr(0, at);
    rest = rest.substr(at + 1);
    const auto colon = credentials.find(':');
    add("user", credentials.substr(0, colon));
    if (colon != std::string_view::npos) add("password", credentials.substr(colon + 1));
  }
  const auto colon = rest.rfind(':');
  const bool has_port = colon != std::string_view::npos && rest.find(']', colon) == std::string_view::npos;
  std::string_view host = has_port ? rest.substr(0, colon) : rest;
  if (host.size() >= 2 && host.front() == '[') host = host.substr(1, host.size() - 2);
  add("host", host);
  if (has_port) add("port", rest.substr(colon + 1));
  add("dbname", path);
  while (!query.empty()) {
    const auto amp = query.find('&');
    const std::string_view pair = query.substr(0, amp);
    if (const auto eq = pair.find('='); eq != std::string_view::npos)
      add(std::string(pair.substr(0, eq)).c_str(), pair.substr(eq + 1));
    query = amp == std::string_view::npos ? std::string_view() : query.substr(amp + 1);
  }
  return out;
}

// "postgresql://..." is a URI; any other text after "postgresql:" a libpq connection string.
std::string postgresql_conninfo(const std::string& address) {
  const std::string rest = split_address(address).rest;
  return rest.rfind("//", 0) == 0 ? uri_to_conninfo(address) : rest;
}

// Throws for an address that names no database after its scheme.
void require_database(const std::string& address) {
  const auto [scheme, rest] = split_address(address);
  if (trim(rest).empty())
    throw Error("Endereço de fonte de dados incompleto: '" + shown_address(address) + "' (falta o banco depois de '" +
                scheme + ":')");
}

[[noreturn]] void cannot_open(const std::string& address, const soci::soci_error& e) {
  throw Error("Não foi possível abrir a fonte de dados '" + shown_address(address) + "': " + explain(e.what()));
}

}  // namespace

Address split_address(const std::string& address) {
  const auto colon = address.find(':');
  if (colon == std::string::npos) return {"", ""};
  return {address.substr(0, colon), address.substr(colon + 1)};
}

namespace {

// What the client libraries say when the server went away in the middle of a run (PostgreSQL,
// then Firebird); the first marker found is the reason given.
constexpr const char* kConnectionLost[] = {
    "FATAL:", "server closed the connection unexpectedly", "no connection to the server",
    "could not receive data from server", "could not send data to server", "SSL SYSCALL error",
    "connection shutdown", "Error reading data from the connection", "Error writing data to the connection"};

// "a conexão com o servidor foi perdida: <reason>", the reason the rest of the marker's line,
// or nothing when `message` tells of no lost connection.
std::optional<std::string> lost_connection(const std::string& message) {
  for (const std::string_view marker : kConnectionLost) {
    const auto at = message.find(marker);
    if (at == std::string::npos) continue;
    const auto start = marker == "FATAL:" ? at + marker.size() : at;
    const auto end = message.find_first_of("\r\n", start);
    const auto reason = message.substr(start, end == std::string::npos ? end : end - start);
    return "a conexão com o servidor foi perdida: " + trim(reason);
  }
  return std::nullopt;
}

}  // namespace

std::string explain_query_failure(const std::string& message) {
  return lost_connection(message).value_or(explain(message));
}

std::string explain(const std::string& message) {
  // SQLite, PostgreSQL and Firebird, in this order.
  for (const char* marker : {"no such table: ", "relation \"", "Table unknown\n"}) {
    const auto at = message.find(marker);
    if (at == std::string::npos) continue;
    const auto start = at + std::char_traits<char>::length(marker);
    const auto end = message.find_first_of("\" \n", start);
    const auto table = message.substr(start, end == std::string::npos ? std::string::npos : end - start);
    return "a tabela '" + table + "' não existe no banco (" + trim(message) + ")";
  }
  // The faults of opening that a user meets first.
  constexpr std::pair<const char*, const char*> kFaults[] = {
      {"file is not a database", "o arquivo não é um banco de dados SQLite"},
      {"Connection refused", "o servidor recusou a conexão"},
      {"database is locked", "o banco de dados está bloqueado por outro programa"}};
  for (const auto& [marker, meaning] : kFaults)
    if (message.find(marker) != std::string::npos) return std::string(meaning) + " (" + trim(message) + ")";
  return trim(message);
}

std::unique_ptr<soci::session> open_session(const std::string& address) {
  require_database(address);
  const auto [scheme, rest] = split_address(address);
  try {
    std::unique_ptr<soci::session> session;
    if (scheme == "sqlite") {
      session = std::make_unique<soci::session>(*soci::factory_sqlite3(), "db=" + connect_value(rest));
      // SQLite reads the file lazily: look at it now, so that a file that is no database fails here.
      int tables = 0;
      *session << "SELECT count(*) FROM sqlite_master", soci::into(tables);
    } else if (scheme == "postgresql") {
      session = std::make_unique<soci::session>(*soci::factory_postgresql(), postgresql_conninfo(address));
    } else if (scheme == "firebird") {
      if (!firebird_client_available())
        throw Error("Não foi possível abrir a fonte de dados '" + shown_address(address) +
                    "': o cliente do Firebird (fbclient.dll) não foi encontrado; instale o cliente do Firebird "
                    "ou copie fbclient.dll para a pasta do programa");
      // A database (a file for the embedded engine, or host:path) or SOCI's own key=value text.
      const std::string parameters = rest.find('=') != std::string::npos
                                         ? rest
                                         : "service=" + connect_value(rest) + " user=SYSDBA charset=UTF8";
      session = std::make_unique<soci::session>(*soci::factory_firebird(), parameters);
    } else {
      throw Error("Fonte de dados '" + scheme + "' não suportada nesta versão: '" + shown_address(address) + "'");
    }
    return session;
  } catch (const soci::soci_error& e) {
    cannot_open(address, e);
  }
}

std::unique_ptr<SqlConnection> open_connection(const std::string& address, const SourceOptions& options) {
  const auto [scheme, rest] = split_address(address);
  if (scheme == "postgresql") return soci_connection(open_session(address), postgresql_conninfo(address));
  if (scheme != "sqlite") return soci_connection(open_session(address));
  require_database(address);
  std::error_code ec;
  if (!std::filesystem::exists(path_of(rest), ec)) throw Error("Banco de dados SQLite '" + rest + "' não encontrado");
  try {
    return open_sqlite_reader(rest, options.busy_wait, options.notice);
  } catch (const soci::soci_error& e) {
    cannot_open(address, e);
  }
}

}  // namespace infofiscal
