// Dates as Jet counts them: days since 1899-12-30, the time of day as the fraction. Before that day
// the fraction still counts forward from midnight (-1.25 is 06:00 on 1899-12-29).
// Thread rule: pure.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace rk::jetsql {

struct Moment {
  int year = 1899, month = 12, day = 30;
  int hour = 0, minute = 0, second = 0;
};

// Whole days since 1899-12-30 of a proleptic Gregorian date; a month outside 1 to 12 and a day
// outside its month run over into their neighbours, as DateSerial has them.
std::int64_t day_number(std::int64_t year, std::int64_t month, std::int64_t day);

// Rounded to the second. Raises SqlError (kOverflow) outside the years 100 to 9999.
Moment moment_of(double days);
double days_of(const Moment& moment);

// Joins a day number and seconds within it by the rule for days before the first.
double days_of(std::int64_t day, std::int64_t seconds);

int days_in_month(std::int64_t year, int month);

// 1 for Sunday to 7 for Saturday.
int weekday_of(std::int64_t day);

// Readings: yyyy-m-d, yyyy/m/d, m/d/yyyy (d/m/yyyy where m cannot be a month), years of two digits
// (30 and above are of the 20th century), names of months, a time behind or alone (h:m, h:m:s, AM
// and PM), blanks around. None for anything else.
std::optional<double> parse_date(std::string_view text);

}  // namespace rk::jetsql
