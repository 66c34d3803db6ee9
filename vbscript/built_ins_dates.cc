// Built-in functions on dates, and the Format functions.

#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "value/date_functions.h"
#include "value/dates.h"
#include "value/text.h"
#include "vbscript/built_in_functions.h"
#include "vbscript/machine.h"

namespace rk::vbscript::functions {

namespace {

constexpr std::array<std::string_view, 12> kMonths{"January",   "February", "March",    "April",
                                                   "May",       "June",     "July",     "August",
                                                   "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                    "Thursday", "Friday", "Saturday"};
constexpr std::size_t kShortName = 3;

// The days of a date argument; nothing for Null.
std::optional<double> days_of(const Value& argument) {
  const Value value = plain(argument);
  if (value.is_null()) return std::nullopt;
  if (value.is_text()) {
    const auto date = parse_date(value.as_view());
    if (date) return date;
  }
  return to_date(value);
}

Value part(Arguments arguments, int CalendarTime::*field) {
  const std::optional<double> days = days_of(*arguments[0]);
  if (!days) return Value::null();
  const CalendarTime time = calendar_time(*days);
  return Value::integer(static_cast<std::int16_t>(time.*field));
}

Interval interval_argument(const Value& value) {
  const std::optional<Interval> interval = parse_interval(to_text(value).view());
  if (!interval) raise(errors::kInvalidCall);
  return *interval;
}

// 1 to 7; 0 is the system's, which is Sunday.
int weekday_argument(Arguments arguments, std::size_t i) {
  const std::int32_t day = long_or(arguments, i, 1);
  if (day < 0 || day > 7) raise(errors::kInvalidCall);
  return day == 0 ? 1 : day;
}

FirstWeek first_week_argument(Arguments arguments, std::size_t i) {
  const std::int32_t rule = long_or(arguments, i, 1);
  if (rule < 0 || rule > 3) raise(errors::kInvalidCall);
  return static_cast<FirstWeek>(rule == 0 ? 1 : rule);
}

double time_of_day(double days) {
  const CalendarTime at = calendar_time(days);
  return rk::date_value(CalendarTime{1899, 12, 30, at.hour, at.minute, at.second});
}

double day_alone(double days) {
  const CalendarTime at = calendar_time(days);
  return static_cast<double>(day_number(at.year, at.month, at.day));
}

double now_of(Machine& machine) {
  const platform::Clock* clock = machine.services().clock;
  return clock == nullptr ? 0 : clock->now();
}

std::string two_digits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

Value now(Machine& machine, Arguments) {
  return Value::date(rk::date_value(calendar_time(now_of(machine))));
}
Value date(Machine& machine, Arguments) {
  return Value::date(day_alone(now_of(machine)));
}
Value time(Machine& machine, Arguments) {
  return Value::date(time_of_day(now_of(machine)));
}

// Seconds since midnight.
Value timer(Machine& machine, Arguments) {
  constexpr double kSecondsOfDay = 86400;
  const double days = now_of(machine);
  return Value::single(static_cast<float>((days - std::floor(days)) * kSecondsOfDay));
}

Value year(Machine&, Arguments arguments) {
  return part(arguments, &CalendarTime::year);
}
Value month(Machine&, Arguments arguments) {
  return part(arguments, &CalendarTime::month);
}
Value day(Machine&, Arguments arguments) {
  return part(arguments, &CalendarTime::day);
}
Value hour(Machine&, Arguments arguments) {
  return part(arguments, &CalendarTime::hour);
}
Value minute(Machine&, Arguments arguments) {
  return part(arguments, &CalendarTime::minute);
}
Value second(Machine&, Arguments arguments) {
  return part(arguments, &CalendarTime::second);
}

Value weekday(Machine&, Arguments arguments) {
  const std::optional<double> days = days_of(*arguments[0]);
  if (!days) return Value::null();
  return Value::integer(
      static_cast<std::int16_t>(weekday_from(*days, weekday_argument(arguments, 1))));
}

Value date_add(Machine&, Arguments arguments) {
  const Interval interval = interval_argument(*arguments[0]);
  const double count = to_double(*arguments[1]);
  const std::optional<double> days = days_of(*arguments[2]);
  if (!days) return Value::null();
  return Value::date(date_plus(*days, interval, count));
}

Value date_diff(Machine&, Arguments arguments) {
  const Interval interval = interval_argument(*arguments[0]);
  const std::optional<double> from = days_of(*arguments[1]);
  const std::optional<double> to = days_of(*arguments[2]);
  if (!from || !to) return Value::null();
  first_week_argument(arguments, 4);
  return Value::long_integer(date_difference(interval, *from, *to, weekday_argument(arguments, 3)));
}

Value date_part(Machine&, Arguments arguments) {
  const Interval interval = interval_argument(*arguments[0]);
  const std::optional<double> days = days_of(*arguments[1]);
  if (!days) return Value::null();
  return Value::integer(static_cast<std::int16_t>(rk::date_part(
      interval, *days, weekday_argument(arguments, 2), first_week_argument(arguments, 3))));
}

// Years below 100 lie between 1930 and 2029; months and days carry over.
Value date_serial(Machine&, Arguments arguments) {
  int year = to_integer(*arguments[0]);
  const int month = to_integer(*arguments[1]);
  const int day = to_integer(*arguments[2]);
  if (year < 0) raise(errors::kInvalidCall);
  if (year < 30) {
    year += 2000;
  } else if (year < 100) {
    year += 1900;
  }
  const auto days = static_cast<double>(day_number(year, month, day));
  if (days < kFirstDate || days >= kPastLastDate) raise(errors::kInvalidCall);
  return Value::date(days);
}

Value time_serial(Machine&, Arguments arguments) {
  const int hour = to_integer(*arguments[0]);
  const int minute = to_integer(*arguments[1]);
  const int second = to_integer(*arguments[2]);
  return Value::date(rk::date_value(CalendarTime{1899, 12, 30, hour, minute, second}));
}

Value date_value(Machine&, Arguments arguments) {
  const std::optional<double> days = days_of(*arguments[0]);
  if (!days) raise(errors::kInvalidNull);
  return Value::date(day_alone(*days));
}

Value time_value(Machine&, Arguments arguments) {
  const std::optional<double> days = days_of(*arguments[0]);
  if (!days) raise(errors::kInvalidNull);
  return Value::date(time_of_day(*days));
}

Value month_name(Machine&, Arguments arguments) {
  const std::int32_t month = to_long(*arguments[0]);
  if (month < 1 || month > 12) raise(errors::kInvalidCall);
  const std::string_view name = kMonths[static_cast<std::size_t>(month) - 1];
  const bool is_short = given(arguments, 1) && to_boolean(*arguments[1]);
  return Value::text(is_short ? name.substr(0, kShortName) : name);
}

Value weekday_name(Machine&, Arguments arguments) {
  const std::int32_t day = to_long(*arguments[0]);
  if (day < 1 || day > 7) raise(errors::kInvalidCall);
  const int first = weekday_argument(arguments, 2);
  const std::string_view name = kWeekdays[static_cast<std::size_t>((day + first - 2) % 7)];
  const bool is_short = given(arguments, 1) && to_boolean(*arguments[1]);
  return Value::text(is_short ? name.substr(0, kShortName) : name);
}

// --- Format functions ---------------------------------------------------------------------------

Value format_date_time(Machine&, Arguments arguments) {
  const std::optional<double> days = days_of(*arguments[0]);
  if (!days) raise(errors::kInvalidNull);
  const CalendarTime at = calendar_time(*days);
  std::array<char, 48> text;
  switch (long_or(arguments, 1, 0)) {
    case 0:
      return Value::text(date_text(*days));
    case 1: {
      const std::string_view weekday = kWeekdays[static_cast<std::size_t>(weekday_of(*days)) - 1];
      std::string out(weekday);
      out += ", ";
      out += kMonths[static_cast<std::size_t>(at.month) - 1];
      out += " " + std::to_string(at.day) + ", " + std::to_string(at.year);
      return Value::text(out);
    }
    case 2:
      std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", at.year, at.month, at.day);
      return Value::text(text.data());
    case 3:
      return Value::text(two_digits(at.hour) + ":" + two_digits(at.minute) + ":" +
                         two_digits(at.second));
    case 4:
      return Value::text(two_digits(at.hour) + ":" + two_digits(at.minute));
    default:
      raise(errors::kInvalidCall);
  }
}

namespace {

constexpr std::int32_t kDefault = -2;
constexpr std::int32_t kDefaultDigits = 2;
constexpr std::int32_t kMostDigits = 99;

struct NumberFormat {
  int digits = kDefaultDigits;
  bool leading_zero = true;
  bool brackets = false;  // for minus
  bool groups = true;
};

NumberFormat format_arguments(Arguments arguments, bool brackets) {
  NumberFormat format;
  const std::int32_t digits = long_or(arguments, 1, -1);
  if (digits < -1 || digits > kMostDigits) raise(errors::kInvalidCall);
  if (digits >= 0) format.digits = digits;
  const auto flag = [&](std::size_t i, bool otherwise) {
    const std::int32_t value = long_or(arguments, i, kDefault);
    return value == kDefault ? otherwise : value != 0;
  };
  format.leading_zero = flag(2, true);
  format.brackets = flag(3, brackets);
  format.groups = flag(4, true);
  return format;
}

// Halves go away from zero, as they are seen in the decimal text of the number.
std::string fixed_digits(double number, int digits) {
  constexpr int kExactDigits = 15;
  std::array<char, 512> buffer;
  // The shortest decimal text decides what is a half, so that 1.005 rounds to 1.01.
  const int whole_digits = number < 1 ? 1 : static_cast<int>(std::floor(std::log10(number))) + 1;
  const int exact = std::max(0, kExactDigits - whole_digits);
  if (digits >= exact) {
    std::snprintf(buffer.data(), buffer.size(), "%.*f", digits, number);
    return buffer.data();
  }
  std::snprintf(buffer.data(), buffer.size(), "%.*f", exact, number);
  std::string text = buffer.data();
  const std::size_t point = text.find('.');
  const std::size_t cut = point + 1 + static_cast<std::size_t>(digits);
  const bool up = text[cut] >= '5';
  text.resize(cut);
  for (std::size_t i = text.size(); up && i-- > 0;) {
    if (text[i] == '.') continue;
    if (text[i] != '9') {
      ++text[i];
      break;
    }
    text[i] = '0';
    if (i == 0) text.insert(text.begin(), '1');
  }
  if (digits == 0) text.pop_back();
  return text;
}

std::string formatted(double number, const NumberFormat& format, std::string_view before,
                      std::string_view behind) {
  std::string text = fixed_digits(std::fabs(number), format.digits);
  const bool negative = number < 0 && text.find_first_not_of("0.") != std::string::npos;
  const std::size_t point = std::min(text.find('.'), text.size());
  if (format.groups) {
    for (std::size_t at = point; at > 3;) text.insert(at -= 3, ",");
  }
  if (!format.leading_zero && text.size() > 1 && text[0] == '0' && text[1] == '.') text.erase(0, 1);
  text = std::string(before) + text + std::string(behind);
  if (!negative) return text;
  return format.brackets ? "(" + text + ")" : "-" + text;
}

}  // namespace

Value format_number(Machine&, Arguments arguments) {
  const NumberFormat format = format_arguments(arguments, false);
  return Value::text(formatted(to_double(*arguments[0]), format, "", ""));
}

Value format_percent(Machine&, Arguments arguments) {
  const NumberFormat format = format_arguments(arguments, false);
  return Value::text(formatted(to_double(*arguments[0]) * 100, format, "", "%"));
}

Value format_currency(Machine&, Arguments arguments) {
  const NumberFormat format = format_arguments(arguments, true);
  return Value::text(formatted(to_double(*arguments[0]), format, "$", ""));
}

}  // namespace rk::vbscript::functions
