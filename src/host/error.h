// The general error class: every failure of the system is one of these, carrying only a message.
#pragma once

#include <stdexcept>
#include <string>

namespace infofiscal {

class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace infofiscal
