#include "value/dates.h"

#include <gtest/gtest.h>

#include "value/conversions.h"

namespace rk {
namespace {

TEST(Dates, EveryDayOfTheRangeComesBackFromItsNumber) {
  for (std::int64_t day = static_cast<std::int64_t>(kFirstDate);
       day < static_cast<std::int64_t>(kPastLastDate); day += 13) {
    const CalendarTime at = calendar_time(static_cast<double>(day));
    ASSERT_EQ(day_number(at.year, at.month, at.day), day);
  }
}

TEST(Dates, CountFromTheEndOf1899) {
  EXPECT_EQ(day_number(1899, 12, 30), 0);
  EXPECT_EQ(day_number(1900, 1, 1), 2);
  EXPECT_EQ(day_number(100, 1, 1), -657434);
  EXPECT_EQ(day_number(9999, 12, 31), 2958465);
}

TEST(Dates, MonthsAndDaysCarryOver) {
  EXPECT_EQ(day_number(2024, 13, 1), day_number(2025, 1, 1));
  EXPECT_EQ(day_number(2024, 0, 1), day_number(2023, 12, 1));
  EXPECT_EQ(day_number(2024, -11, 1), day_number(2023, 1, 1));
  EXPECT_EQ(day_number(2024, -12, 1), day_number(2022, 12, 1));
  EXPECT_EQ(day_number(2024, 3, 0), day_number(2024, 2, 29));
}

TEST(Dates, WeekBeginsWithSunday) {
  EXPECT_EQ(weekday_of(static_cast<double>(day_number(2024, 3, 3))), 1);
  EXPECT_EQ(weekday_of(static_cast<double>(day_number(2024, 3, 9))), 7);
  EXPECT_EQ(weekday_of(-1), 6);
}

TEST(Dates, TextsAreReadInTheKnownForms) {
  const struct {
    std::string_view text;
    std::string_view date;
  } rows[] = {
      {"2024-3-4", "2024-03-04"},
      {"2024/03/04", "2024-03-04"},
      {"3/4/2024", "2024-03-04"},
      {"25/12/2024", "2024-12-25"},
      {"2024-3-4 5:06", "2024-03-04 05:06:00"},
      {"2024-3-4 5:06:07 PM", "2024-03-04 17:06:07"},
      {"12:00 AM", "00:00:00"},
      {"1:02:03", "01:02:03"},
      {"4 Mar 2024", "2024-03-04"},
      {"March 4, 2024", "2024-03-04"},
      {"1/2/03", "2003-01-02"},
      {"1/2/30", "1930-01-02"},
      {"5 PM", "17:00:00"},
  };
  for (const auto& row : rows) {
    const auto date = parse_date(row.text);
    ASSERT_TRUE(date.has_value()) << row.text;
    EXPECT_EQ(date_text(*date), row.date) << row.text;
  }
}

TEST(Dates, TextsThatAreNoDateAreRefused) {
  for (const std::string_view text :
       {"", "abc", "2024-13-01", "2024-02-30", "1/2", "12", "25:00", "1:60", "2024-1-1 x", "-1-2-3",
        "1/2/3/4", "13:00 PM", "2024-01-01T10:00", "12345678-1-1"}) {
    EXPECT_FALSE(parse_date(text).has_value()) << text;
  }
}

TEST(Dates, TheLastHalfSecondRoundsToTheNextDay) {
  EXPECT_EQ(date_text(1.999999999), "1900-01-01");
}

}  // namespace
}  // namespace rk
