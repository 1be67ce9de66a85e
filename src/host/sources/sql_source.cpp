#include "host/sources/sql_source.h"

#include "host/error.h"

namespace infofiscal {

std::unique_ptr<RecordSource> open_sql_source(const std::string&, const std::string&, const std::string& address) {
  throw Error("Fonte de dados SQL ainda não disponível nesta versão: '" + address + "'");
}

}  // namespace infofiscal
