// The framework's text service: cleaning of values before they are written.
#pragma once

#include <string>
#include <string_view>

namespace infofiscal {

// `value` without any occurrence of the characters of `removed`, in order otherwise.
// Line 04 of a purchase cleans its note number and access key with ". " (full stops and blanks).
std::string clean_text(std::string_view value, std::string_view removed);

}  // namespace infofiscal
