// Values of the SQL databases in the class their fields declare.
#pragma once

#include "base/value.h"
#include "host/client_dataset.h"

namespace infofiscal {

// `value` in the class its field declares where the database gave it another type: SQLite
// gives expressions and undeclared types as text, and stores whole NUMERIC values as integers.
// A value that does not read as the class is returned as it came (the dataset's conversion
// then names it).
Value to_field_class(Value value, FieldClass cls);

}  // namespace infofiscal
