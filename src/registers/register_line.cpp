#include "registers/register_line.h"

namespace infofiscal {

// One append per tag: the tags are the bulk of a line's characters.
void TLinhaRegistro::Open(int column) {
  const char tag[] = {'[', 'C', static_cast<char>('0' + column / 10), static_cast<char>('0' + column % 10), ']'};
  text_.append(tag, sizeof tag);
}

void TLinhaRegistro::Close(int column) {
  const char tag[] = {'[', '/', 'C', static_cast<char>('0' + column / 10), static_cast<char>('0' + column % 10), ']'};
  text_.append(tag, sizeof tag);
}

void TLinhaRegistro::Head(int type) {
  text_.clear();
  Open(0);
  text_ += static_cast<char>('0' + type / 10);
  text_ += static_cast<char>('0' + type % 10);
  Close(0);
}

void TLinhaRegistro::Text(int column, std::string_view value) {
  Open(column);
  text_.append(value);
  Close(column);
}

void TLinhaRegistro::Integer(int column, std::int64_t value) {
  Open(column);
  append_integer(text_, value);
  Close(column);
}

void TLinhaRegistro::Amount(int column, double value) {
  Open(column);
  append_amount(text_, value);
  Close(column);
}

void TLinhaRegistro::Date(int column, const TimeStamp& value) {
  Open(column);
  append_date(text_, value);
  Close(column);
}

void TLinhaRegistro::DateTime(int column, const TimeStamp& value) {
  Open(column);
  append_timestamp_text(text_, value);
  Close(column);
}

void TLinhaRegistro::FieldText(int column, const Field& field) {
  Open(column);
  field.AppendString(text_);
  Close(column);
}

void TLinhaRegistro::Trailer(int count) {
  Open(99);
  text_ += static_cast<char>('0' + count / 10);
  text_ += static_cast<char>('0' + count % 10);
  Close(99);
}

ColumnTable::ColumnTable(const ClientDataSet& dataset, std::span<const Column> columns) : dataset_(&dataset) {
  columns_.reserve(columns.size());
  for (const Column& c : columns) {
    const bool reads_field = c.render != Render::Constant && c.render != Render::Empty;
    columns_.push_back({c, reads_field ? dataset.FieldIndex(c.source) : -1});
  }
}

void ColumnTable::Write(TLinhaRegistro& line) const {
  for (const Bound& b : columns_) {
    const Field field = dataset_->FieldAt(b.field < 0 ? 0 : b.field);
    switch (b.column.render) {
      case Render::Text: line.FieldText(b.column.number, field); break;
      case Render::Integer: line.Integer(b.column.number, field.AsInteger()); break;
      case Render::Amount: {
        const double amount = field.AsFloat();
        if (!amount_fits(amount)) throw Error(amount_too_large(field.AsString(), field.Describe()));
        line.Amount(b.column.number, amount);
        break;
      }
      case Render::Date: line.Date(b.column.number, field.AsDateTime()); break;
      case Render::DateTimeText: line.DateTime(b.column.number, field.AsDateTime()); break;
      case Render::Constant: line.Text(b.column.number, b.column.source); break;
      case Render::Empty: line.Empty(b.column.number); break;
    }
  }
}

void WriteLine(TLinhaRegistro& line, int type, const ColumnTable& columns, int trailer, TStringList& list) {
  line.Head(type);
  columns.Write(line);
  line.Trailer(trailer);
  line.AddTo(list);
}

}  // namespace infofiscal
