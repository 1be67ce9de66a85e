// How values become column text. Pinned to Brazilian conventions, never the machine's locale:
// decimal comma, no grouping in amounts, dates dd/mm/yyyy, times hh:nn:ss.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/value.h"

namespace infofiscal {

// Decimal digits, minus sign for negatives.
void append_integer(std::string& out, std::int64_t value);

// The mask "0.00": the shortest decimal text that reads back as `value`, rounded to two
// decimals half away from zero on that text, at least one integer digit, no exponent, a minus
// sign only when the rounded value is not zero. 1.005 gives "1,01", -0.004 gives "0,00".
void append_amount(std::string& out, double value);

// Whether the information file holds `value` as an amount: finite, and at most
// 92233720368547758,07 in magnitude (its readers count amounts in 64-bit hundredths).
bool amount_fits(double value);
// The refusal of an amount that does not fit, `as_stored` the value as the source gave it and
// `where` what names it: "o valor 100000000000000000 não cabe no arquivo de informações
// (<where>; o máximo é 92233720368547758,07)".
std::string amount_too_large(std::string_view as_stored, std::string_view where);

// "dd/mm/yyyy".
void append_date(std::string& out, const TimeStamp& value);

// A timestamp as text: "dd/mm/yyyy" at midnight, else "dd/mm/yyyy hh:nn:ss".
void append_timestamp_text(std::string& out, const TimeStamp& value);

// A float field as text: the shortest text that reads back as `value`, decimal comma, no
// exponent.
void append_float_text(std::string& out, double value);

// The mask "###,#00": at least two digits, "." between thousands (7 gives "07", 1234 "1.234").
std::string format_count(std::int64_t value);
// "." between thousands, no padding: 7 gives "7", -1234567 "-1.234.567".
std::string format_grouped(std::int64_t value);
// Hundredths as an amount for people to read, "." between thousands and two decimals: 123456
// gives "1.234,56", -5 "-0,05".
std::string format_hundredths(std::int64_t hundredths);

// A value of the data as a message quotes it: control characters shown as \r, \n, \t or
// \xNN (a line break inside a value must not break the message), and a value longer than
// `max` characters cut to its first `max`, then "... (N caracteres)", so that a 10 MB value
// does not become a 10 MB message. UTF-8 characters are never cut in half.
std::string excerpt(std::string_view text, std::size_t max = 60);

// A count and its noun, for messages: "1 linha", "3 linhas", "1.234 linhas" (format_count
// would pad 3 to "03").
std::string counted(std::size_t n, const char* one, const char* many);

}  // namespace infofiscal
