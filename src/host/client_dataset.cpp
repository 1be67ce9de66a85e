#include "host/client_dataset.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "base/renderings.h"
#include "base/error.h"

namespace infofiscal {

namespace {

const Value kNull{};

// Optional blanks, an optional sign and decimal digits, within the 64-bit integers.
std::optional<std::int64_t> text_to_integer(const std::string& text) {
  std::size_t i = text.find_first_not_of(' ');
  if (i == std::string::npos) return std::nullopt;
  const bool negative = text[i] == '-';
  if (text[i] == '-' || text[i] == '+') ++i;
  if (i == text.size() || text.find_first_not_of("0123456789", i) != std::string::npos) return std::nullopt;
  std::uint64_t magnitude = 0;
  const auto [end, ec] = std::from_chars(text.data() + i, text.data() + text.size(), magnitude);
  if (ec != std::errc() || magnitude > (negative ? 9223372036854775808ULL : 9223372036854775807ULL))
    return std::nullopt;
  return negative ? static_cast<std::int64_t>(0 - magnitude) : static_cast<std::int64_t>(magnitude);
}

// A plain decimal number with a point: no "inf", "nan" or blanks.
std::optional<double> text_to_float(const std::string& text) {
  double value = 0;
  const char* first = text.data();
  if (!text.empty() && text[0] == '+') ++first;
  if (first == text.data() + text.size() || (std::string_view("-.0123456789").find(*first) == std::string_view::npos))
    return std::nullopt;
  const auto [end, ec] = std::from_chars(first, text.data() + text.size(), value, std::chars_format::general);
  if (ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

const char* const kNotInteger = "não é um valor inteiro válido";
const char* const kNotFloat = "não é um valor de ponto flutuante válido";
const char* const kNotDateTime = "não é uma data e hora válida";

}  // namespace

ClientDataSet::ClientDataSet(std::string name, std::string provider, std::vector<FieldDef> fields, int params, int key)
    : name_(std::move(name)),
      provider_(std::move(provider)),
      fields_(std::move(fields)),
      params_(params),
      key_(std::min<std::size_t>(key, fields_.size())) {}

void ClientDataSet::SetParam(int index, Value value) {
  if (index < 0 || index >= static_cast<int>(params_.size()))
    throw Error("Parâmetro " + std::to_string(index + 1) + " inexistente em " + name_);
  params_[index] = std::move(value);
}

void ClientDataSet::Open() { Fetch(FetchKind::ParameterOpen, params_); }

void ClientDataSet::Reopen(std::initializer_list<std::int64_t> params) {
  Close();
  int index = 0;
  for (const std::int64_t param : params) SetParam(index++, param);
  Open();
}

void ClientDataSet::DataRequest(std::vector<Value> request) { Fetch(FetchKind::DataRequest, std::move(request)); }

void ClientDataSet::Close() {
  active_ = false;
  packet_ = Packet{};
  rows_ = cursor_ = 0;
  eof_ = true;
}

void ClientDataSet::Fetch(FetchKind kind, std::vector<Value> args) {
  Close();
  if (source_ == nullptr) throw Error(name_ + ": fonte de dados não definida");
  FetchRequest request{name_, provider_, kind, args, fields_};
  packet_ = source_->fetch(request);
  packet_.width = fields_.size();
  rows_ = packet_.rows();
  active_ = true;
  First();
}

void ClientDataSet::First() {
  cursor_ = 0;
  eof_ = rows_ == 0;
}

void ClientDataSet::Next() {
  if (cursor_ + 1 < rows_)
    ++cursor_;
  else
    eof_ = true;
}

void ClientDataSet::Last() {
  cursor_ = rows_ == 0 ? 0 : rows_ - 1;
  eof_ = true;
}

int ClientDataSet::FieldIndex(std::string_view name) const {
  for (std::size_t i = 0; i < fields_.size(); ++i)
    if (fields_[i].name == name) return static_cast<int>(i);
  throw Error(missing_field_message(name, name_));
}

const Value& ClientDataSet::Cell(int index) const {
  if (rows_ == 0) return kNull;
  return packet_.cells[cursor_ * fields_.size() + index];
}

const Value& Field::value() const { return dataset_->Cell(index_); }

bool Field::IsNull() const { return is_null(value()); }

void Field::AppendString(std::string& out) const {
  const Value& v = value();
  if (const auto* s = std::get_if<std::string>(&v))
    out += *s;
  else if (const auto* i = std::get_if<std::int64_t>(&v))
    append_integer(out, *i);
  else if (const auto* d = std::get_if<double>(&v))
    append_float_text(out, *d);
  else if (const auto* t = std::get_if<TimeStamp>(&v))
    append_timestamp_text(out, *t);
}

std::string Field::AsString() const {
  std::string out;
  AppendString(out);
  return out;
}

std::int64_t Field::AsInteger() const {
  const Value& v = value();
  if (const auto* i = std::get_if<std::int64_t>(&v)) return *i;
  if (const auto* s = std::get_if<std::string>(&v)) {
    if (const auto i = text_to_integer(*s)) return *i;
  } else if (const auto* d = std::get_if<double>(&v)) {
    const double rounded = std::nearbyint(*d);
    if (rounded >= -0x1p63 && rounded < 0x1p63) return static_cast<std::int64_t>(rounded);
  } else if (std::holds_alternative<std::monostate>(v)) {
    return 0;
  }
  // A time, or a number past the integers' range.
  Fail(kNotInteger);
}

double Field::AsFloat() const {
  const Value& v = value();
  double result = 0;
  if (const auto* d = std::get_if<double>(&v)) {
    result = *d;
  } else if (const auto* i = std::get_if<std::int64_t>(&v)) {
    result = static_cast<double>(*i);
  } else if (const auto* s = std::get_if<std::string>(&v)) {
    const auto read = text_to_float(*s);
    if (!read) Fail(kNotFloat);
    result = *read;
  } else if (std::holds_alternative<TimeStamp>(v)) {
    Fail(kNotFloat);
  }
  if (dataset_->fields_[index_].cls == FieldClass::Single) result = static_cast<float>(result);
  return result;
}

TimeStamp Field::AsDateTime() const {
  const Value& v = value();
  if (const auto* t = std::get_if<TimeStamp>(&v)) return *t;
  if (const auto* s = std::get_if<std::string>(&v)) {
    TimeStamp t;
    if (parse_timestamp(*s, t)) return t;
  } else if (is_null(v)) {
    return TimeStamp{1899, 12, 30};
  }
  Fail(kNotDateTime);
}

std::string Field::Describe() const {
  std::string where = "campo " + std::string(dataset_->fields_[index_].name) + " de " + dataset_->Name() + ", registro";
  for (std::size_t f = 0; f < dataset_->key_; ++f) {
    where += ' ';
    where += dataset_->fields_[f].name;
    where += '=';
    dataset_->FieldAt(static_cast<int>(f)).AppendString(where);
  }
  if (dataset_->key_ == 0) where += " " + std::to_string(dataset_->RecNo());
  return where;
}

void Field::Fail(std::string_view problem) const {
  throw Error("'" + excerpt(AsString()) + "' " + std::string(problem) + " (" + Describe() + ")");
}

}  // namespace infofiscal
