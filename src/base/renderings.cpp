#include "base/renderings.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include <fmt/format.h>

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

namespace {

// Cents of |value| by plain arithmetic, when that provably rounds like the shortest text:
// the shortest text lies within half an ulp of the value, so only a value within a few ulps
// of a half cent can round differently. Returns -1 when the slow path must decide.
std::int64_t cents_when_clear(double magnitude) {
  const double c = magnitude * 100;
  if (!(c < 1e15)) return -1;
  const double n = std::floor(c + 0.5);
  const double distance = 0.5 - std::fabs(c - n);  // to the nearer half cent
  if (distance <= c * 1e-12 + 1e-12) return -1;
  return static_cast<std::int64_t>(n);
}

}  // namespace

void append_amount(std::string& out, double value) {
  if (!std::isfinite(value)) value = 0;
  if (std::int64_t cents = cents_when_clear(std::fabs(value)); cents >= 0) {
    // Written backwards into a buffer and appended once: this runs for most columns of a line.
    char text[32];
    char* p = text + sizeof text;
    const bool negative = value < 0 && cents != 0;
    *--p = static_cast<char>('0' + cents % 10);
    *--p = static_cast<char>('0' + cents / 10 % 10);
    *--p = ',';
    cents /= 100;
    do *--p = static_cast<char>('0' + cents % 10); while ((cents /= 10) != 0);
    if (negative) *--p = '-';
    out.append(p, text + sizeof text);
    return;
  }
  // Shortest round-trip text in fixed notation: "-1234.5", "0.00001", "10000000000000000".
  char text[400];
  const char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
  const char* p = text;
  const bool negative = *p == '-';
  if (negative) ++p;
  const char* point = std::find(p, end, '.');
  // Integer digits and two decimals as one digit string, with room for a carry in front;
  // the third decimal decides the rounding.
  char digits[400];
  char* d = digits + 1;
  d = std::copy(p, point, d);
  const char* decimals = point == end ? end : point + 1;
  for (int i = 0; i < 2; ++i) *d++ = decimals + i < end ? decimals[i] : '0';
  char* first = digits + 1;
  if (decimals + 2 < end && decimals[2] >= '5') {
    char* q = d;
    while (q != first && q[-1] == '9') *--q = '0';
    if (q == first)
      *--first = '1';
    else
      ++q[-1];
  }
  const bool zero = std::all_of(first, d, [](char c) { return c == '0'; });
  if (negative && !zero) out += '-';
  out.append(first, d - 2);
  out += ',';
  out.append(d - 2, d);
}

bool amount_fits(double value) { return std::fabs(value) < 0x1p63 / 100; }  // false for NaN too

std::string amount_too_large(std::string_view as_stored, std::string_view where) {
  return "o valor " + std::string(as_stored) + " não cabe no arquivo de informações (" + std::string(where) +
         "; o máximo é 92233720368547758,07)";
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

namespace {

// `digits` (no sign) with "." between thousands, after `sign`.
std::string grouped(std::string_view sign, std::string_view digits) {
  std::string out(sign);
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) out += '.';
    out += digits[i];
  }
  return out;
}

// The magnitude's digits; also of the most negative value, whose magnitude no int64 holds.
std::string magnitude(std::int64_t value) {
  return std::to_string(value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value));
}

}  // namespace

std::string format_count(std::int64_t value) {
  std::string digits = magnitude(value);
  if (digits.size() < 2) digits.insert(0, 2 - digits.size(), '0');
  return grouped(value < 0 ? "-" : "", digits);
}

std::string format_grouped(std::int64_t value) { return grouped(value < 0 ? "-" : "", magnitude(value)); }

std::string format_hundredths(std::int64_t hundredths) {
  std::string digits = magnitude(hundredths);
  if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
  const std::size_t inteiros = digits.size() - 2;
  return grouped(hundredths < 0 ? "-" : "", std::string_view(digits).substr(0, inteiros)) + ',' + digits.substr(inteiros);
}

std::string counted(std::size_t n, const char* one, const char* many) {
  return format_grouped(static_cast<std::int64_t>(n)) + " " + (n == 1 ? one : many);
}

std::string excerpt(std::string_view text, std::size_t max) {
  // A UTF-8 character starts at any byte but a continuation byte.
  const auto starts = [](unsigned char c) { return (c & 0xC0) != 0x80; };
  std::string out;
  std::size_t characters = 0;
  for (const unsigned char c : text) {
    if (starts(c) && characters++ == max) {
      const auto total = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), starts));
      return out + "... (" + counted(total, "caractere", "caracteres") + ")";
    }
    if (c == '\r') out += "\\r";
    else if (c == '\n') out += "\\n";
    else if (c == '\t') out += "\\t";
    else if (c < 0x20 || c == 0x7F) out += fmt::format("\\x{:02X}", c);
    else out += static_cast<char>(c);
  }
  return out;
}

}  // namespace infofiscal
