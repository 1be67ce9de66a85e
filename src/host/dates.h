// The framework's date service: first and last day of a month.
#pragma once

#include "host/value.h"

namespace infofiscal {

bool is_leap_year(int year);
// Days of a month 1-12; 0 for any other month.
int days_in_month(int month, int year);

// REQUIRES: nothing. Fails with "Mês inválido: <month>" for a month outside 1-12.
TimeStamp first_day_of_month(int month, int year);
TimeStamp last_day_of_month(int month, int year);

}  // namespace infofiscal
