#include "value/date_functions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "value/dates.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk {

namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kMonthsOfYear = 12;
constexpr int kMonthsOfQuarter = 3;
constexpr std::int64_t kSecondsOfDay = 86400;

struct IntervalName {
  std::string_view text;
  Interval interval;
};

constexpr IntervalName kNames[] = {
    {"yyyy", Interval::Year},   {"q", Interval::Quarter}, {"m", Interval::Month},
    {"y", Interval::DayOfYear}, {"d", Interval::Day},     {"w", Interval::Weekday},
    {"ww", Interval::Week},     {"h", Interval::Hour},    {"n", Interval::Minute},
    {"s", Interval::Second},
};

double checked(double days) {
  if (!(days >= kFirstDate && days < kPastLastDate)) raise(errors::kInvalidCall);
  return days;
}

// Seconds since day 0, the time of day counted forward also before it.
std::int64_t seconds_of(double days) {
  const CalendarTime at = calendar_time(days);
  return day_number(at.year, at.month, at.day) * kSecondsOfDay + at.hour * 3600 + at.minute * 60 +
         at.second;
}

double from_seconds(std::int64_t seconds) {
  std::int64_t day = seconds / kSecondsOfDay;
  std::int64_t rest = seconds % kSecondsOfDay;
  if (rest < 0) {
    rest += kSecondsOfDay;
    --day;
  }
  const double fraction = static_cast<double>(rest) / static_cast<double>(kSecondsOfDay);
  const auto whole = static_cast<double>(day);
  return checked(day < 0 && rest != 0 ? whole - fraction : whole + fraction);
}

double months_later(double days, double count) {
  CalendarTime at = calendar_time(days);
  const double months = static_cast<double>(at.year) * kMonthsOfYear + (at.month - 1) + count;
  if (!(std::fabs(months) < kMonthsOfYear * 10000.0)) raise(errors::kInvalidCall);
  const auto total = static_cast<int>(months);
  if (total < 100 * kMonthsOfYear) raise(errors::kInvalidCall);
  at.year = total / kMonthsOfYear;
  at.month = total % kMonthsOfYear + 1;
  at.day = std::min(at.day, days_in_month(at.year, at.month));
  return checked(date_value(at));
}

std::int64_t day_of(double days) {
  const CalendarTime at = calendar_time(days);
  return day_number(at.year, at.month, at.day);
}

// The day on which the week of a day begins.
std::int64_t week_start(std::int64_t day, int first_weekday) {
  return day - (weekday_from(static_cast<double>(day), first_weekday) - 1);
}

// The day on which week 1 of a year begins.
std::int64_t first_week_start(int year, int first_weekday, FirstWeek rule) {
  const std::int64_t january = day_number(year, 1, 1);
  const std::int64_t start = week_start(january, first_weekday);
  const auto before = static_cast<int>(january - start);  // days of the old year in that week
  switch (rule) {
    case FirstWeek::January1:
      return start;
    case FirstWeek::FourDays:
      return before <= kDaysOfWeek - 4 ? start : start + kDaysOfWeek;
    case FirstWeek::Full:
      return before == 0 ? start : start + kDaysOfWeek;
  }
  return start;
}

int week_of_year(double days, int first_weekday, FirstWeek rule) {
  const CalendarTime at = calendar_time(days);
  const std::int64_t day = day_number(at.year, at.month, at.day);
  if (rule != FirstWeek::January1 && at.year < 9999 &&
      day >= first_week_start(at.year + 1, first_weekday, rule)) {
    return 1;
  }
  std::int64_t start = first_week_start(at.year, first_weekday, rule);
  if (day < start) start = first_week_start(at.year - 1, first_weekday, rule);
  return static_cast<int>((day - start) / kDaysOfWeek) + 1;
}

std::int64_t floor_divide(std::int64_t a, std::int64_t b) {
  return a / b - (a % b != 0 && (a < 0) != (b < 0) ? 1 : 0);
}

std::int64_t difference(Interval interval, double from, double to, int first_weekday) {
  const CalendarTime a = calendar_time(from);
  const CalendarTime b = calendar_time(to);
  const std::int64_t years = std::int64_t{b.year} - a.year;
  switch (interval) {
    case Interval::Year:
      return years;
    case Interval::Quarter:
      return years * 4 + (b.month - 1) / kMonthsOfQuarter - (a.month - 1) / kMonthsOfQuarter;
    case Interval::Month:
      return years * kMonthsOfYear + b.month - a.month;
    case Interval::DayOfYear:
    case Interval::Day:
      return day_of(to) - day_of(from);
    case Interval::Weekday:
      return (day_of(to) - day_of(from)) / kDaysOfWeek;
    case Interval::Week:
      return (week_start(day_of(to), first_weekday) - week_start(day_of(from), first_weekday)) /
             kDaysOfWeek;
    case Interval::Hour:
      return floor_divide(seconds_of(to), 3600) - floor_divide(seconds_of(from), 3600);
    case Interval::Minute:
      return floor_divide(seconds_of(to), 60) - floor_divide(seconds_of(from), 60);
    case Interval::Second:
      return seconds_of(to) - seconds_of(from);
  }
  return 0;
}

}  // namespace

std::optional<Interval> parse_interval(std::string_view text) {
  for (const IntervalName& name : kNames) {
    if (equal_ignoring_case(text, name.text)) return name.interval;
  }
  return std::nullopt;
}

double date_plus(double days, Interval interval, double count) {
  checked(days);
  if (!(std::fabs(count) < 1e12)) raise(errors::kInvalidCall);
  const double whole = std::nearbyint(count);
  switch (interval) {
    case Interval::Year:
      return months_later(days, whole * kMonthsOfYear);
    case Interval::Quarter:
      return months_later(days, whole * kMonthsOfQuarter);
    case Interval::Month:
      return months_later(days, whole);
    case Interval::DayOfYear:
    case Interval::Day:
    case Interval::Weekday:
      return from_seconds(seconds_of(days) + static_cast<std::int64_t>(whole) * kSecondsOfDay);
    case Interval::Week:
      return from_seconds(seconds_of(days) +
                          static_cast<std::int64_t>(whole) * kDaysOfWeek * kSecondsOfDay);
    case Interval::Hour:
      return from_seconds(seconds_of(days) + static_cast<std::int64_t>(whole) * 3600);
    case Interval::Minute:
      return from_seconds(seconds_of(days) + static_cast<std::int64_t>(whole) * 60);
    case Interval::Second:
      return from_seconds(seconds_of(days) + static_cast<std::int64_t>(whole));
  }
  return days;
}

std::int32_t date_difference(Interval interval, double from, double to, int first_weekday) {
  const std::int64_t result = difference(interval, checked(from), checked(to), first_weekday);
  if (result < std::numeric_limits<std::int32_t>::min() ||
      result > std::numeric_limits<std::int32_t>::max()) {
    raise(errors::kOverflow);
  }
  return static_cast<std::int32_t>(result);
}

int date_part(Interval interval, double days, int first_weekday, FirstWeek first_week) {
  const CalendarTime at = calendar_time(checked(days));
  switch (interval) {
    case Interval::Year:
      return at.year;
    case Interval::Quarter:
      return (at.month - 1) / kMonthsOfQuarter + 1;
    case Interval::Month:
      return at.month;
    case Interval::DayOfYear:
      return static_cast<int>(day_of(days) - day_number(at.year, 1, 1)) + 1;
    case Interval::Day:
      return at.day;
    case Interval::Weekday:
      return weekday_from(days, first_weekday);
    case Interval::Week:
      return week_of_year(days, first_weekday, first_week);
    case Interval::Hour:
      return at.hour;
    case Interval::Minute:
      return at.minute;
    case Interval::Second:
      return at.second;
  }
  return 0;
}

int weekday_from(double days, int first_weekday) {
  return (weekday_of(days) - first_weekday + kDaysOfWeek) % kDaysOfWeek + 1;
}

}  // namespace rk
