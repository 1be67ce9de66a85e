#include "host/record_source.h"

#include "base/error.h"
#include "host/sources/snapshot_source.h"
#include "host/sources/sql_source.h"

namespace infofiscal {

std::string missing_field_message(std::string_view field, std::string_view dataset) {
  return "Campo '" + std::string(field) + "' não encontrado em " + std::string(dataset);
}

namespace {

// The back end's name: the address up to its first colon.
std::string scheme_of(const std::string& address) {
  const auto colon = address.find(':');
  return colon == std::string::npos ? "" : address.substr(0, colon);
}

}  // namespace

bool reads_provider_catalog(const std::string& address) {
  const std::string scheme = scheme_of(address);
  return scheme == "sqlite" || scheme == "postgresql" || scheme == "firebird";
}

std::unique_ptr<RecordSource> open_record_source(const std::string& address, FetchAhead fetch_ahead,
                                                 const std::string& catalog_path) {
  const std::string scheme = scheme_of(address);
  if (scheme == "snapshot") return std::make_unique<SnapshotSource>(address.substr(scheme.size() + 1));
  if (reads_provider_catalog(address)) return open_sql_source(address, fetch_ahead, catalog_path);
  throw Error("Endereço de fonte de dados desconhecido: '" + address +
              "' (use sqlite:ARQUIVO, postgresql:CONEXAO, firebird:BANCO ou snapshot:ARQUIVO.json)");
}

}  // namespace infofiscal
