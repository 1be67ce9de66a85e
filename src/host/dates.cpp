#include "host/dates.h"

#include "base/error.h"

namespace infofiscal {

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
