// Functions of dates.
#include <algorithm>
#include <cmath>
#include <optional>

#include "jetsql/arguments.h"
#include "jetsql/days.h"
#include "jetsql/letters.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {

namespace {

using Kind = Argument::Kind;

[[noreturn]] void invalid_argument() {
  throw SqlError(kUnspecified, "Invalid procedure call.", SqlError::kNowhere);
}

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Interval interval_of(const Argument& argument) {
  struct Named {
    std::string_view name;
    Interval interval;
  };
  constexpr Named kNames[] = {{"yyyy", Interval::Year}, {"q", Interval::Quarter},
                              {"m", Interval::Month},   {"y", Interval::DayOfYear},
                              {"d", Interval::Day},     {"w", Interval::Weekday},
                              {"ww", Interval::Week},   {"h", Interval::Hour},
                              {"n", Interval::Minute},  {"s", Interval::Second}};
  const std::string name = text_argument(argument);
  for (const Named& known : kNames) {
    if (same_letters(known.name, name)) return known.interval;
  }
  invalid_argument();
}

// A moment as its day and the seconds within it.
struct Instant {
  std::int64_t day = 0;
  std::int64_t second = 0;
  Moment moment;
};

Instant instant_of(const Argument& argument) {
  Instant made;
  made.moment = moment_of(days_argument(argument));
  const Moment& m = made.moment;
  made.day = day_number(m.year, m.month, m.day);
  made.second = m.hour * 3600 + m.minute * 60 + m.second;
  return made;
}

constexpr std::int64_t kSecondsPerDay = 86400;
// No date is further from another than this; it keeps the arithmetic below within bounds.
constexpr std::int64_t kMostSteps = 400LL * 1000 * 1000 * 1000;

std::int64_t floor_divide(std::int64_t value, std::int64_t by) {
  return value / by - (value % by < 0 ? 1 : 0);
}

template <int Moment::*Part>
void part(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_whole(answer, moment_of(days_argument(a[0])).*Part);
}

// The first day of a week: 1 for Sunday (0 means the system's, Sunday as well).
int first_weekday(Arguments a, std::size_t place) {
  if (a.size() <= place) return 1;
  const std::int64_t first = whole_argument(a[place]);
  if (first < 0 || first > 7) invalid_argument();
  return first == 0 ? 1 : static_cast<int>(first);
}

int weekday_from(std::int64_t day, int first) {
  return (weekday_of(day) - first + 7) % 7 + 1;
}

void weekday(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_whole(answer, weekday_from(instant_of(a[0]).day, first_weekday(a, 1)));
}

// The first day of week 1 of a year: the week of January the 1st (1), the first with four days in
// the year (2), or the first whole one (3).
std::int64_t first_week(std::int64_t year, int first, std::int64_t rule) {
  const std::int64_t new_year = day_number(year, 1, 1);
  const int weekday = weekday_from(new_year, first);
  const std::int64_t begin = new_year - (weekday - 1);
  const bool next = (rule == 2 && weekday > 4) || (rule == 3 && weekday > 1);
  return next ? begin + 7 : begin;
}

std::int64_t week_of_year(const Instant& at, int first, std::int64_t rule) {
  if (rule <= 1) return (at.day - first_week(at.moment.year, first, 1)) / 7 + 1;
  std::int64_t begin = first_week(at.moment.year, first, rule);
  if (at.day < begin) begin = first_week(at.moment.year - 1, first, rule);
  if (at.day >= first_week(at.moment.year + 1, first, rule)) return 1;
  return (at.day - begin) / 7 + 1;
}

void date_part(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const Instant at = instant_of(a[1]);
  const int first = first_weekday(a, 2);
  const std::int64_t rule = a.size() > 3 ? whole_argument(a[3]) : 1;
  switch (interval_of(a[0])) {
    case Interval::Year:
      return answer_whole(answer, at.moment.year);
    case Interval::Quarter:
      return answer_whole(answer, (at.moment.month + 2) / 3);
    case Interval::Month:
      return answer_whole(answer, at.moment.month);
    case Interval::DayOfYear:
      return answer_whole(answer, at.day - day_number(at.moment.year, 1, 1) + 1);
    case Interval::Day:
      return answer_whole(answer, at.moment.day);
    case Interval::Weekday:
      return answer_whole(answer, weekday_from(at.day, first));
    case Interval::Week:
      return answer_whole(answer, week_of_year(at, first, rule));
    case Interval::Hour:
      return answer_whole(answer, at.moment.hour);
    case Interval::Minute:
      return answer_whole(answer, at.moment.minute);
    case Interval::Second:
      return answer_whole(answer, at.moment.second);
  }
}

// A day that the month does not have becomes its last.
double add_months(const Instant& at, std::int64_t count) {
  const std::int64_t months = at.moment.year * 12LL + at.moment.month - 1 + count;
  const std::int64_t year = floor_divide(months, 12);
  const int month = static_cast<int>(months - year * 12) + 1;
  const std::int64_t day = std::min(at.moment.day, days_in_month(year, month));
  return days_of(day_number(year, month, day), at.second);
}

double add_seconds(const Instant& at, std::int64_t count) {
  const std::int64_t total = at.second + count;
  const std::int64_t days = floor_divide(total, kSecondsPerDay);
  return days_of(at.day + days, total - days * kSecondsPerDay);
}

void date_add(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const Instant at = instant_of(a[2]);
  // Parts of a step are cut off.
  const double steps = std::trunc(number_argument(a[1]));
  if (!(std::fabs(steps) < static_cast<double>(kMostSteps))) invalid_argument();
  const auto count = static_cast<std::int64_t>(steps);
  switch (interval_of(a[0])) {
    case Interval::Year:
      return answer_date(answer, add_months(at, count * 12));
    case Interval::Quarter:
      return answer_date(answer, add_months(at, count * 3));
    case Interval::Month:
      return answer_date(answer, add_months(at, count));
    case Interval::DayOfYear:
    case Interval::Day:
    case Interval::Weekday:
      return answer_date(answer, days_of(at.day + count, at.second));
    case Interval::Week:
      return answer_date(answer, days_of(at.day + count * 7, at.second));
    case Interval::Hour:
      return answer_date(answer, add_seconds(at, count * 3600));
    case Interval::Minute:
      return answer_date(answer, add_seconds(at, count * 60));
    case Interval::Second:
      return answer_date(answer, add_seconds(at, count));
  }
}

// Borders passed between the two, not whole intervals; "w" alone counts whole weeks.
void date_diff(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const Instant from = instant_of(a[1]);
  const Instant to = instant_of(a[2]);
  const std::int64_t days = to.day - from.day;
  const std::int64_t months =
      (to.moment.year - from.moment.year) * 12LL + to.moment.month - from.moment.month;
  const auto steps = [&](std::int64_t seconds) {
    return days * (kSecondsPerDay / seconds) + to.second / seconds - from.second / seconds;
  };
  switch (interval_of(a[0])) {
    case Interval::Year:
      return answer_whole(answer, to.moment.year - from.moment.year);
    case Interval::Quarter:
      return answer_whole(answer, (to.moment.year - from.moment.year) * 4LL +
                                      (to.moment.month - 1) / 3 - (from.moment.month - 1) / 3);
    case Interval::Month:
      return answer_whole(answer, months);
    case Interval::DayOfYear:
    case Interval::Day:
      return answer_whole(answer, days);
    case Interval::Weekday:
      return answer_whole(answer, days / 7);
    case Interval::Week: {
      const int first = first_weekday(a, 3);
      const std::int64_t begin = from.day - weekday_from(from.day, first);
      const std::int64_t end = to.day - weekday_from(to.day, first);
      return answer_whole(answer, (end - begin) / 7);
    }
    case Interval::Hour:
      return answer_whole(answer, steps(3600));
    case Interval::Minute:
      return answer_whole(answer, steps(60));
    case Interval::Second:
      return answer_whole(answer, steps(1));
  }
}

std::int64_t bounded(const Argument& argument) {
  constexpr std::int64_t kMost = 10'000'000;  // beyond any date
  const std::int64_t value = whole_argument(argument);
  if (value < -kMost || value > kMost) invalid_argument();
  return value;
}

void date_serial(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  std::int64_t year = bounded(a[0]);
  if (year >= 0 && year < 100) year += year < 30 ? 2000 : 1900;
  answer_date(answer, days_of(day_number(year, bounded(a[1]), bounded(a[2])), 0));
}

void time_serial(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t seconds = bounded(a[0]) * 3600 + bounded(a[1]) * 60 + bounded(a[2]);
  answer_date(answer, add_seconds(Instant{}, seconds));
}

void date_value(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_date(answer, days_of(instant_of(a[0]).day, 0));
}

void time_value(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_date(answer, days_of(0, instant_of(a[0]).second));
}

void date(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_date(answer, days_argument(a[0]));
}

void days(Arguments a, Answer& answer) {
  if (!any_null(a)) answer_number(answer, days_argument(a[0]));
}

void is_date(Arguments a, Answer& answer) {
  answer_flag(answer, a[0].kind == Kind::Text && parse_date(a[0].text).has_value());
}

constexpr std::string_view kMonths[] = {"January",   "February", "March",    "April",
                                        "May",       "June",     "July",     "August",
                                        "September", "October",  "November", "December"};
constexpr std::string_view kWeekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                          "Thursday", "Friday", "Saturday"};

void named(Arguments a, Answer& answer, std::string_view name) {
  const bool shortened = a.size() > 1 && number_argument(a[1]) != 0;
  answer_text(answer, std::string(shortened ? name.substr(0, 3) : name));
}

void month_name(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t month = whole_argument(a[0]);
  if (month < 1 || month > 12) invalid_argument();
  named(a, answer, kMonths[month - 1]);
}

void weekday_name(Arguments a, Answer& answer) {
  if (any_null(a)) return;
  const std::int64_t day = whole_argument(a[0]);
  if (day < 1 || day > 7) invalid_argument();
  named(a, answer, kWeekdays[(day - 1 + first_weekday(a, 2) - 1) % 7]);
}

constexpr Function kFunctions[] = {
    {"jet_year", 1, true, part<&Moment::year>},
    {"jet_month", 1, true, part<&Moment::month>},
    {"jet_day", 1, true, part<&Moment::day>},
    {"jet_hour", 1, true, part<&Moment::hour>},
    {"jet_minute", 1, true, part<&Moment::minute>},
    {"jet_second", 1, true, part<&Moment::second>},
    {"jet_weekday", -1, true, weekday},
    {"jet_dateadd", 3, true, date_add},
    {"jet_datediff", -1, true, date_diff},
    {"jet_datepart", -1, true, date_part},
    {"jet_dateserial", 3, true, date_serial},
    {"jet_timeserial", 3, true, time_serial},
    {"jet_datevalue", 1, true, date_value},
    {"jet_timevalue", 1, true, time_value},
    {"jet_date", 1, true, date},
    {"jet_days", 1, true, days},
    {"jet_isdate", 1, true, is_date},
    {"jet_monthname", -1, true, month_name},
    {"jet_weekdayname", -1, true, weekday_name},
};

}  // namespace

std::span<const Function> date_functions() {
  return kFunctions;
}

}  // namespace rk::jetsql
