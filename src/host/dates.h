// The framework's date service: first and last day of a month.
#pragma once

#include "base/value.h"

namespace infofiscal {

// REQUIRES: nothing. Fails with "Mês inválido: <month>" for a month outside 1-12.
TimeStamp first_day_of_month(int month, int year);
TimeStamp last_day_of_month(int month, int year);

}  // namespace infofiscal
