// A client dataset: declared persistent fields over one provider of the record source.
//
// The dataset is fetched whole (a packet of rows) and then walked with a cursor. Reading a
// field goes through one of four conversions; on an empty dataset every field reads as null.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "host/record_source.h"

namespace infofiscal {

class ClientDataSet;

// One field of the current row. Cheap to copy; valid while its dataset is not refetched.
class Field {
 public:
  Field(const ClientDataSet& dataset, int index) : dataset_(&dataset), index_(index) {}

  bool IsNull() const;
  // Null gives "", an integer its digits, a float its shortest text with a decimal comma, a
  // timestamp "dd/mm/yyyy" or "dd/mm/yyyy hh:nn:ss".
  std::string AsString() const;
  // Null gives 0; text must be optional blanks, an optional sign and digits, else
  // "'<text>' não é um valor inteiro válido (<Describe()>)".
  std::int64_t AsInteger() const;
  // Null gives 0; text must be a decimal number with a point, else
  // "'<text>' não é um valor de ponto flutuante válido (<Describe()>)". A single-precision field
  // is rounded to single precision.
  double AsFloat() const;
  // Null gives 30/12/1899 (the zero date); text must read as a timestamp, else
  // "'<text>' não é uma data e hora válida (<Describe()>)".
  TimeStamp AsDateTime() const;
  // Appends AsString() to `out` without a temporary for text values.
  void AppendString(std::string& out) const;

  const Value& value() const;

  // Where this value was read, for messages: "campo CDMES de TabRegistroInfoFiscal, registro
  // CDREGISTROFISCAL=7". The row is named by its dataset's key fields, or else by its number.
  std::string Describe() const;

 private:
  // Throws Error "'<text>' <problem> (<Describe()>)".
  [[noreturn]] void Fail(std::string_view problem) const;

  const ClientDataSet* dataset_;
  int index_;
};

class ClientDataSet {
 public:
  // `name` is the dataset's own name (e.g. "TabCompra"), used in messages; `params` is the
  // number of positional parameters of a parameter open; the first `key` fields name a row in
  // messages (0: its number).
  ClientDataSet(std::string name, std::string provider, std::vector<FieldDef> fields, int params = 0, int key = 1);

  ClientDataSet(const ClientDataSet&) = delete;
  ClientDataSet& operator=(const ClientDataSet&) = delete;

  // The provider connection the dataset fetches through. REQUIRES: set before Open.
  void SetRemoteServer(RecordSource* source) { source_ = source; }

  const std::string& Name() const { return name_; }
  const std::string& ProviderName() const { return provider_; }
  const std::vector<FieldDef>& Fields() const { return fields_; }

  // Sets parameter `index` (0-based) for the next parameter open.
  void SetParam(int index, Value value);

  // Parameter open (a reopen when the dataset has no parameters): fetches with the current
  // parameters. On failure the dataset stays closed and the source's error passes unchanged.
  void Open();
  void Close();
  // Close, set the parameters in order and open: the usual way to fetch one key's rows.
  void Reopen(std::initializer_list<std::int64_t> params);
  // Close, send `request` as a data request, load the answer and open.
  void DataRequest(std::vector<Value> request);
  bool Active() const { return active_; }

  void First();
  void Next();
  // Moves to the last row; like the dataset library, also sets Eof.
  void Last();
  bool Eof() const { return eof_; }
  int RecordCount() const { return static_cast<int>(rows_); }
  // 1-based number of the current row; 0 when the dataset is empty.
  int RecNo() const { return rows_ == 0 ? 0 : static_cast<int>(cursor_) + 1; }

  // The index of a declared field; throws Error naming the dataset when not declared.
  int FieldIndex(std::string_view name) const;
  Field FieldByName(std::string_view name) const { return Field(*this, FieldIndex(name)); }
  Field FieldAt(int index) const { return Field(*this, index); }

 private:
  friend class Field;
  void Fetch(FetchKind kind, std::vector<Value> args);
  const Value& Cell(int index) const;

  std::string name_, provider_;
  std::vector<FieldDef> fields_;
  std::vector<Value> params_;
  std::size_t key_;
  RecordSource* source_ = nullptr;
  Packet packet_;
  std::size_t rows_ = 0, cursor_ = 0;
  bool active_ = false, eof_ = true;
};

}  // namespace infofiscal
