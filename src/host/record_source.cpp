#include "host/record_source.h"

#include "base/error.h"
#include "host/sources/snapshot_source.h"
#include "host/sources/sql_source.h"

namespace infofiscal {

std::string missing_field_message(std::string_view field, std::string_view dataset) {
  return "Campo '" + std::string(field) + "' não encontrado em " + std::string(dataset);
}

std::unique_ptr<RecordSource> open_record_source(const std::string& address, FetchAhead fetch_ahead) {
  const auto colon = address.find(':');
  const std::string scheme = colon == std::string::npos ? "" : address.substr(0, colon);
  const std::string rest = colon == std::string::npos ? "" : address.substr(colon + 1);
  if (scheme == "snapshot") return std::make_unique<SnapshotSource>(rest);
  if (scheme == "sqlite" || scheme == "postgresql" || scheme == "firebird")
    return open_sql_source(address, fetch_ahead);
  throw Error("Endereço de fonte de dados desconhecido: '" + address +
              "' (use sqlite:ARQUIVO, postgresql:CONEXAO, firebird:BANCO ou snapshot:ARQUIVO.json)");
}

}  // namespace infofiscal
