// How values become column text. Pinned to Brazilian conventions, never the machine's locale:
// decimal comma, no grouping in amounts, dates dd/mm/yyyy, times hh:nn:ss.
#pragma once

#include <cstdint>
#include <string>

#include "base/value.h"

namespace infofiscal {

// Decimal digits, minus sign for negatives.
void append_integer(std::string& out, std::int64_t value);

// The mask "0.00": the shortest decimal text that reads back as `value`, rounded to two
// decimals half away from zero on that text, at least one integer digit, no exponent, a minus
// sign only when the rounded value is not zero. 1.005 gives "1,01", -0.004 gives "0,00".
void append_amount(std::string& out, double value);

// "dd/mm/yyyy".
void append_date(std::string& out, const TimeStamp& value);

// A timestamp as text: "dd/mm/yyyy" at midnight, else "dd/mm/yyyy hh:nn:ss".
void append_timestamp_text(std::string& out, const TimeStamp& value);

// A float field as text: the shortest text that reads back as `value`, decimal comma, no
// exponent.
void append_float_text(std::string& out, double value);

// The mask "###,#00": at least two digits, "." between thousands (7 gives "07", 1234 "1.234").
std::string format_count(std::int64_t value);

}  // namespace infofiscal
