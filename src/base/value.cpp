#include "base/value.h"

#include <charconv>

#include <fmt/format.h>


namespace infofiscal {

bool is_leap_year(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int days_in_month(int month, int year) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) return 0;
  return month == 2 && is_leap_year(year) ? 29 : kDays[month - 1];
}

namespace {

bool read_int(std::string_view text, std::size_t pos, std::size_t len, int& out) {
  if (pos + len > text.size()) return false;
  for (std::size_t i = pos; i < pos + len; ++i)
    if (text[i] < '0' || text[i] > '9') return false;
  std::from_chars(text.data() + pos, text.data() + pos + len, out);
  return true;
}

}  // namespace

bool parse_timestamp(std::string_view text, TimeStamp& out) {
  TimeStamp t;
  if (text.size() < 10 || text[4] != '-' || text[7] != '-') return false;
  if (!read_int(text, 0, 4, t.year) || !read_int(text, 5, 2, t.month) || !read_int(text, 8, 2, t.day))
    return false;
  if (text.size() > 10) {
    if (text.size() < 19 || (text[10] != 'T' && text[10] != ' ') || text[13] != ':' || text[16] != ':')
      return false;
    if (!read_int(text, 11, 2, t.hour) || !read_int(text, 14, 2, t.minute) ||
        !read_int(text, 17, 2, t.second))
      return false;
    if (text.size() > 19 && text[19] != '.') return false;
  }
  if (t.month < 1 || t.month > 12 || t.day < 1 || t.day > days_in_month(t.month, t.year)) return false;
  if (t.hour > 23 || t.minute > 59 || t.second > 59) return false;
  out = t;
  return true;
}

std::string debug_text(const Value& v) {
  struct Visitor {
    std::string operator()(std::monostate) const { return "null"; }
    std::string operator()(std::int64_t i) const { return std::to_string(i); }
    std::string operator()(double d) const { return fmt::format("{}", d); }
    std::string operator()(const std::string& s) const { return s; }
    std::string operator()(const TimeStamp& t) const {
      return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", t.year, t.month, t.day, t.hour, t.minute,
                         t.second);
    }
  };
  return std::visit(Visitor{}, v);
}

}  // namespace infofiscal
