// The general error class: every failure of the system is one of these, carrying only a message.
#pragma once

#include <stdexcept>
#include <string>

namespace infofiscal {

class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The system's reason for a failed call (an errno value) in Portuguese, for messages such as
// "Não foi possível gravar o arquivo 'x': disco cheio"; an uncommon one keeps the C library's
// text with its number (base/system.h).
std::string system_reason(int erro);

}  // namespace infofiscal
