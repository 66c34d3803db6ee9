#include "pagehost/pages/http_date.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "value/dates.h"

namespace rk::pagehost {
namespace {

constexpr std::array<std::string_view, 7> kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string two_digits(int number) {
  return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

}  // namespace

std::string http_date(double utc_days) {
  const double days = std::clamp(utc_days, kFirstDate, kPastLastDate - 1);
  const CalendarTime time = calendar_time(days);
  std::string out(kDays[static_cast<std::size_t>(weekday_of(date_value(time)) - 1)]);
  out += ", " + two_digits(time.day) + " ";
  out += kMonths[static_cast<std::size_t>(time.month - 1)];
  out += " " + two_digits(time.year / 100) + two_digits(time.year % 100);
  out += " " + two_digits(time.hour) + ":" + two_digits(time.minute) + ":" +
         two_digits(time.second) + " GMT";
  return out;
}

}  // namespace rk::pagehost
