#include "tvx/transfer/date_stamp.h"

#include <chrono>
#include <cmath>

#include "tvx/base/strings.h"

namespace tvx::transfer {
namespace {

std::u16string padded(std::int64_t number, std::size_t digits) {
  const std::u16string text = to_text(number);
  return std::u16string(digits - std::min(digits, text.size()), u'0') + text;
}

}  // namespace

std::u16string date_stamp(double date) {
  using std::chrono::days;
  constexpr double least = -657434, most = 2958466;  // the years 100 to 9999
  if (!(date >= least && date < most)) date = 0;
  const double whole = std::floor(date);
  // Of a date a fraction of a second may be missing at its end.
  const std::int64_t seconds = std::llround((date - whole) * 86400);
  const std::chrono::sys_days first(std::chrono::year(1899) / 12 / 30);
  const auto moment = first + days(static_cast<int>(whole)) + std::chrono::seconds(seconds);
  const auto day = std::chrono::floor<days>(moment);
  const std::chrono::year_month_day civil(day);
  const std::int64_t minutes = (moment - day) / std::chrono::minutes(1);
  return padded(static_cast<int>(civil.year()), 4) + padded(static_cast<unsigned>(civil.month()), 2) +
         padded(static_cast<unsigned>(civil.day()), 2) + padded(minutes / 60, 2) + padded(minutes % 60, 2);
}

}  // namespace tvx::transfer
