// The general error class: every failure of the system is one of these, carrying only a message.
#pragma once

#include <stdexcept>
#include <string>

namespace infofiscal {

class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A fault of the data of one document, item, party or product (a code the layout does not
// allow, a value that does not read): it stops that one from being booked, not the reading of
// the others. A converter records it and goes on, so that one run lists every problem of a
// month. `kind` names the rule broken, the same text for every problem of that rule
// ("chave de acesso inválida"); the message names the culprit and the value as stored.
class DataProblem : public Error {
 public:
  DataProblem(std::string kind, const std::string& message) : Error(message), kind_(std::move(kind)) {}
  const std::string& kind() const { return kind_; }
  // The same problem, its message prefixed with `where` ("Nota 12 (linha 40 ...): ").
  DataProblem within(const std::string& where) const { return DataProblem(kind_, where + what()); }

 private:
  std::string kind_;
};

// The system's reason for a failed call (an errno value) in Portuguese, for messages such as
// "Não foi possível gravar o arquivo 'x': disco cheio"; an uncommon one keeps the C library's
// text with its number (base/system.h).
std::string system_reason(int erro);

}  // namespace infofiscal
