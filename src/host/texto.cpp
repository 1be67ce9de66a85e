#include "host/texto.h"

namespace infofiscal {

std::string clean_text(std::string_view value, std::string_view removed) {
  std::string out;
  out.reserve(value.size());
  for (const char c : value)
    if (removed.find(c) == std::string_view::npos) out += c;
  return out;
}

}  // namespace infofiscal
