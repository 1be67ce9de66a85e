#include "host/sources/sql_values.h"

#include <charconv>
#include <string>

namespace infofiscal {

namespace {

bool whole_int(const std::string& text, std::int64_t& out) {
  const auto* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, out);
  return !text.empty() && ec == std::errc() && ptr == end;
}

bool whole_double(const std::string& text, double& out) {
  const auto* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, out);
  return !text.empty() && ec == std::errc() && ptr == end;
}

}  // namespace

Value to_field_class(Value value, FieldClass cls) {
  if (auto* text = std::get_if<std::string>(&value)) {
    std::int64_t i;
    double d;
    TimeStamp t;
    switch (cls) {
      case FieldClass::Integer:
      case FieldClass::Smallint:
        if (whole_int(*text, i)) return i;
        break;
      case FieldClass::Float:
      case FieldClass::Single:
        if (whole_double(*text, d)) return d;
        break;
      case FieldClass::TimeStamp:
        if (parse_timestamp(*text, t)) return t;
        break;
      default:
        break;
    }
  } else if (const auto* i = std::get_if<std::int64_t>(&value)) {
    if (cls == FieldClass::Float || cls == FieldClass::Single) return static_cast<double>(*i);
  }
  return value;
}

}  // namespace infofiscal
