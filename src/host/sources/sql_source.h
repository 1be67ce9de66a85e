// SQL back ends of the record source.
#pragma once

#include <memory>
#include <string>

#include "host/record_source.h"

namespace infofiscal {

// Opens "sqlite:PATH", "postgresql:CONNINFO" or "firebird:..." (scheme and the rest of the
// address split at the first colon); `address` is the whole address, for messages.
std::unique_ptr<RecordSource> open_sql_source(const std::string& scheme, const std::string& rest,
                                              const std::string& address);

}  // namespace infofiscal
