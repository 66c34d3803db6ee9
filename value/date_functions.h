// Date functions of the page language: intervals, parts and differences of dates.
#ifndef RK_VALUE_DATE_FUNCTIONS_H_
#define RK_VALUE_DATE_FUNCTIONS_H_

#include <cstdint>
#include <optional>
#include <string_view>

namespace rk {

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

// "yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s" in any letter case.
std::optional<Interval> parse_interval(std::string_view text);

// Which week of a year is its first: the one with the first of January, the first with four days
// of the year, the first whole one.
enum class FirstWeek { January1 = 1, FourDays = 2, Full = 3 };

// Months and years keep the day where the month has it, else take the month's last. Raises 5 past
// the range of dates.
double date_plus(double days, Interval interval, double count);

// Boundaries of the interval between two dates; Weekday counts whole weeks. `first_weekday`: 1 is
// Sunday. Raises 6 where it does not fit 32 bits.
std::int32_t date_difference(Interval interval, double from, double to, int first_weekday);

int date_part(Interval interval, double days, int first_weekday, FirstWeek first_week);
// 1 to 7, counted from `first_weekday`.
int weekday_from(double days, int first_weekday);

}  // namespace rk

#endif  // RK_VALUE_DATE_FUNCTIONS_H_
