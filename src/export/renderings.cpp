#include "export/renderings.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace infofiscal {

namespace {

void append_two_digits(std::string& out, int value) {
  out += static_cast<char>('0' + value / 10 % 10);
  out += static_cast<char>('0' + value % 10);
}

void append_padded(std::string& out, int value, int width) {
  char digits[16];
  auto [end, ec] = std::to_chars(digits, digits + sizeof digits, value < 0 ? -value : value);
  if (value < 0) out += '-';
  for (int n = static_cast<int>(end - digits); n < width; ++n) out += '0';
  out.append(digits, end);
}

}  // namespace

void append_integer(std::string& out, std::int64_t value) {
  char digits[24];
  auto [end, ec] = std::to_chars(digits, digits + sizeof digits, value);
  out.append(digits, end);
}

void append_amount(std::string& out, double value) {
  if (!std::isfinite(value)) value = 0;
  // Shortest round-trip text in fixed notation: "-1234.5", "0.00001", "10000000000000000".
  char text[400];
  auto [end, ec] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed);
  const char* p = text;
  const bool negative = *p == '-';
  if (negative) ++p;
  const char* point = std::find(p, static_cast<const char*>(end), '.');
  // Integer digits plus two decimals, as one digit string; the third decimal decides rounding.
  std::string digits(p, point);
  const char* decimals = point == end ? end : point + 1;
  for (int i = 0; i < 2; ++i) digits += decimals + i < end ? decimals[i] : '0';
  if (decimals + 2 < end && decimals[2] >= '5') {
    std::size_t i = digits.size();
    while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
    if (i == 0)
      digits.insert(digits.begin(), '1');
    else
      ++digits[i - 1];
  }
  const bool zero = digits.find_first_not_of('0') == std::string::npos;
  if (negative && !zero) out += '-';
  out.append(digits, 0, digits.size() - 2);
  out += ',';
  out.append(digits, digits.size() - 2, 2);
}

void append_date(std::string& out, const TimeStamp& value) {
  append_two_digits(out, value.day);
  out += '/';
  append_two_digits(out, value.month);
  out += '/';
  append_padded(out, value.year, 4);
}

void append_timestamp_text(std::string& out, const TimeStamp& value) {
  append_date(out, value);
  if (value.midnight()) return;
  out += ' ';
  append_two_digits(out, value.hour);
  out += ':';
  append_two_digits(out, value.minute);
  out += ':';
  append_two_digits(out, value.second);
}

void append_float_text(std::string& out, double value) {
  char text[400];
  auto [end, ec] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed);
  for (const char* p = text; p != end; ++p) out += *p == '.' ? ',' : *p;
}

std::string format_count(std::int64_t value) {
  std::string digits = std::to_string(value < 0 ? -value : value);
  if (digits.size() < 2) digits.insert(0, 2 - digits.size(), '0');
  std::string out = value < 0 ? "-" : "";
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) out += '.';
    out += digits[i];
  }
  return out;
}

}  // namespace infofiscal
