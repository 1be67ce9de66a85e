// The register line and its builder, the column tables, and the generator error rule.
//
// A register line is "[C00]tt[/C00]", then "[Cnn]value[/Cnn]" per column in ascending order,
// then the trailer "[C99]nn[/C99]" whose count is a constant of the line type. Values are
// written verbatim: nothing is trimmed, quoted or escaped.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/renderings.h"
#include "base/string_list.h"
#include "host/client_dataset.h"
#include "base/error.h"

namespace infofiscal {

// The line builder `oLinha`: one reusable buffer, one line at a time.
//
// Usage: Head(4); Column(...)...; Trailer(26); AddTo(AArquivo). Head clears what the previous
// line left. Columns must be added in ascending column order (not checked).
class TLinhaRegistro {
 public:
  TLinhaRegistro() = default;
  TLinhaRegistro(const TLinhaRegistro&) = delete;
  TLinhaRegistro& operator=(const TLinhaRegistro&) = delete;

  void Clear() { text_.clear(); }
  void Append(std::string_view s) { text_.append(s); }
  const std::string& ToString() const { return text_; }

  // Clears the builder and writes the head of line type `type` (1 to 19).
  void Head(int type);
  // "[Cnn]value[/Cnn]".
  void Text(int column, std::string_view value);
  void Integer(int column, std::int64_t value);
  void Amount(int column, double value);
  void Date(int column, const TimeStamp& value);
  // "dd/mm/yyyy", with " hh:nn:ss" unless the time is midnight.
  void DateTime(int column, const TimeStamp& value);
  void Empty(int column) { Text(column, {}); }
  // The field's text value (see Field::AsString).
  void FieldText(int column, const Field& field);
  // "[C99]nn[/C99]".
  void Trailer(int count);
  // Adds the finished line to the list.
  void AddTo(TStringList& list) const { list.Add(text_); }

 private:
  void Open(int column);
  void Close(int column);

  std::string text_;
};

// How a column of a table gets its text from the current row.
enum class Render : std::uint8_t {
  Text,          // the field as text
  Integer,       // the field read as an integer
  Amount,        // the field read as a float, mask "0.00"
  Date,          // the field read as a date-time, "dd/mm/yyyy"
  DateTimeText,  // the field read as a date-time, "dd/mm/yyyy[ hh:nn:ss]"
  Constant,      // a literal of the generator
  Empty,         // nothing between the tags
};

// One row of a column table: column number, rendering, and the field name (or, for a
// Constant, the literal).
struct Column {
  int number;
  Render render;
  std::string_view source = {};
};

// A column table bound to one dataset: field names are resolved once, at construction.
// REQUIRES: every named field is declared by `dataset`; the dataset outlives the table.
class ColumnTable {
 public:
  ColumnTable(const ClientDataSet& dataset, std::span<const Column> columns);
  ColumnTable(const ClientDataSet& dataset, std::initializer_list<Column> columns)
      : ColumnTable(dataset, std::span<const Column>(columns.begin(), columns.size())) {}
  // Writes every column of the table from the dataset's current row.
  void Write(TLinhaRegistro& line) const;

 private:
  struct Bound {
    Column column;
    int field;
  };
  const ClientDataSet* dataset_;
  std::vector<Bound> columns_;
};

// One whole line from a table: head, columns, trailer, added to the list.
void WriteLine(TLinhaRegistro& line, int type, const ColumnTable& columns, int trailer, TStringList& list);

// The generator error rule: runs `body`; any failure in it becomes an Error whose message is
// `prefix` followed by the caught message (e.g. "Erro ano Gerar Registro Linha 03 : ...").
// "Erro ano" is the host system's own wording: users and their support search for it, so the
// prefixes keep it as it stands.
template <class Body>
void UnderErrorRule(std::string_view prefix, Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (const std::exception& e) {
    throw Error(std::string(prefix) + e.what());
  }
}

}  // namespace infofiscal
