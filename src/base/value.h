// Values as a record source delivers them, before a dataset's field conversions.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace infofiscal {

// A point in time as the ERP stores it (no time zone).
struct TimeStamp {
  int year = 0, month = 0, day = 0;
  int hour = 0, minute = 0, second = 0;

  bool midnight() const { return hour == 0 && minute == 0 && second == 0; }
  friend bool operator==(const TimeStamp&, const TimeStamp&) = default;
};

bool is_leap_year(int year);
// Days of a month 1-12; 0 for any other month.
int days_in_month(int month, int year);

// Null, whole number, floating point, text or timestamp.
using Value = std::variant<std::monostate, std::int64_t, double, std::string, TimeStamp>;

inline bool is_null(const Value& v) { return std::holds_alternative<std::monostate>(v); }

// Reads "YYYY-MM-DD", "YYYY-MM-DD HH:MM:SS" or "YYYY-MM-DDTHH:MM:SS" (fractions of a second are
// ignored); false when the text is not such a timestamp or names no real day.
bool parse_timestamp(std::string_view text, TimeStamp& out);

// Text of a value for messages and snapshots: numbers in C notation, timestamps ISO.
std::string debug_text(const Value& v);

}  // namespace infofiscal
