// The calendar behind Date values: days since 1899-12-30, the time of day as fraction. Before that
// day the fraction still counts forward: -1.25 is 1899-12-29 06:00.
#ifndef RK_VALUE_DATES_H_
#define RK_VALUE_DATES_H_

#include <cstdint>
#include <optional>
#include <string_view>

namespace rk {

struct CalendarTime {
  int year = 1899;  // 100 to 9999
  int month = 12;   // 1 to 12
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// The language's range: 0100-01-01 to 9999-12-31 23:59:59.
inline constexpr double kFirstDate = -657434.0;
inline constexpr double kPastLastDate = 2958466.0;

// Days since 1899-12-30 of a date; month and day may lie outside their ranges and carry over.
std::int64_t day_number(int year, int month, int day) noexcept;
// To the nearest second. `days` must lie in the language's range.
CalendarTime calendar_time(double days) noexcept;
// Hours, minutes and seconds may lie outside their ranges and carry over.
double date_value(const CalendarTime& time) noexcept;
bool is_leap_year(int year) noexcept;
int days_in_month(int year, int month) noexcept;
// 1 is Sunday.
int weekday_of(double days) noexcept;

// Reads all of a text as a date, a time or both: yyyy-m-d, yyyy/m/d or month first (3/4/2024 is
// the fourth of March; day first where the month would be past 12), h:m[:s] with AM or PM, month
// names in English. Two-digit years lie between 1930 and 2029.
std::optional<double> parse_date(std::string_view text);

}  // namespace rk

#endif  // RK_VALUE_DATES_H_
