#include "host/dates.h"

#include "host/error.h"

namespace infofiscal {

bool is_leap_year(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int days_in_month(int month, int year) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) return 0;
  return month == 2 && is_leap_year(year) ? 29 : kDays[month - 1];
}

namespace {
void require_month(int month) {
  if (month < 1 || month > 12) throw Error("Mês inválido: " + std::to_string(month));
}
}  // namespace

TimeStamp first_day_of_month(int month, int year) {
  require_month(month);
  return TimeStamp{year, month, 1};
}

TimeStamp last_day_of_month(int month, int year) {
  require_month(month);
  return TimeStamp{year, month, days_in_month(month, year)};
}

}  // namespace infofiscal
