#include "value/date_functions.h"

#include <gtest/gtest.h>

#include "value/dates.h"
#include "value/script_error.h"

namespace rk {
namespace {

double day(int year, int month, int day_of_month) {
  return static_cast<double>(day_number(year, month, day_of_month));
}

TEST(DateFunctions, MonthsKeepTheDayWhereTheMonthHasIt) {
  EXPECT_EQ(date_plus(day(2024, 1, 31), Interval::Month, 1), day(2024, 2, 29));
  EXPECT_EQ(date_plus(day(2024, 2, 29), Interval::Year, -1), day(2023, 2, 28));
  EXPECT_EQ(date_plus(day(2024, 1, 15), Interval::Quarter, -1), day(2023, 10, 15));
}

TEST(DateFunctions, SecondsCarryOverMidnight) {
  const double late = date_value({2024, 12, 31, 23, 59, 59});
  EXPECT_EQ(date_plus(late, Interval::Second, 1), day(2025, 1, 1));
}

TEST(DateFunctions, TheRangeOfDatesEnds) {
  EXPECT_THROW(date_plus(day(9999, 12, 31), Interval::Day, 1), ScriptError);
  EXPECT_THROW(date_plus(day(100, 1, 1), Interval::Month, -1), ScriptError);
  EXPECT_THROW(date_plus(day(2024, 1, 1), Interval::Week, 1e300), ScriptError);
}

TEST(DateFunctions, DifferencesCountBoundaries) {
  EXPECT_EQ(date_difference(Interval::Year, day(2023, 12, 31), day(2024, 1, 1), 1), 1);
  EXPECT_EQ(date_difference(Interval::Week, day(2024, 3, 2), day(2024, 3, 3), 1), 1);
  EXPECT_EQ(date_difference(Interval::Weekday, day(2024, 3, 2), day(2024, 3, 8), 1), 0);
  EXPECT_THROW(date_difference(Interval::Second, day(1900, 1, 1), day(2024, 1, 1), 1), ScriptError);
}

TEST(DateFunctions, TheFirstWeekByItsThreeRules) {
  // The first of January 2023 is a Sunday.
  EXPECT_EQ(date_part(Interval::Week, day(2023, 1, 1), 2, FirstWeek::January1), 1);
  EXPECT_EQ(date_part(Interval::Week, day(2023, 1, 1), 2, FirstWeek::FourDays), 52);
  EXPECT_EQ(date_part(Interval::Week, day(2023, 1, 2), 2, FirstWeek::Full), 1);
  EXPECT_EQ(date_part(Interval::Week, day(2023, 1, 1), 1, FirstWeek::Full), 1);
}

TEST(DateFunctions, IntervalsHaveNoLetterCase) {
  EXPECT_EQ(parse_interval("YYYY"), Interval::Year);
  EXPECT_EQ(parse_interval("ww"), Interval::Week);
  EXPECT_EQ(parse_interval("x"), std::nullopt);
}

}  // namespace
}  // namespace rk
