#include "jetsql/days.h"

#include <gtest/gtest.h>

#include <string>

#include "jetsql/translate.h"

namespace rk::jetsql {
namespace {

std::string reading(const char* text) {
  const std::optional<double> days = parse_date(text);
  return days ? date_text(*days) : "none";
}

struct Case {
  const char* text;
  const char* date;
};

TEST(ParseDate, ReadsWhatPagesWrite) {
  const Case cases[] = {
      {"2026-3-5", "2026-03-05"},
      {"2026-03-05", "2026-03-05"},
      {"2026/3/5", "2026-03-05"},
      {"3/4/2024", "2024-03-04"},
      {"13/4/2024", "2024-04-13"},
      {"3-4-2024", "2024-03-04"},
      {"3/4/24", "2024-03-04"},
      {"3/4/30", "1930-03-04"},
      {"3/4/29", "2029-03-04"},
      {"5 Mar 2026", "2026-03-05"},
      {"Mar 5, 2026", "2026-03-05"},
      {"5-March-2026", "2026-03-05"},
      {"2026 Mar 5", "2026-03-05"},
      {" 2026-3-5 ", "2026-03-05"},
      {"2026-3-5 14:30", "2026-03-05 14:30:00"},
      {"2026-3-5 14:30:15", "2026-03-05 14:30:15"},
      {"2026-3-5 2:30 PM", "2026-03-05 14:30:00"},
      {"2026-3-5 12:00 AM", "2026-03-05"},
      {"2026-3-5 12:00:00 pm", "2026-03-05 12:00:00"},
      {"3/4/2024 0:00:00", "2024-03-04"},
      {"10:30", "1899-12-30 10:30:00"},
      {"10 PM", "1899-12-30 22:00:00"},
      {"2024-2-29", "2024-02-29"},
      {"1900-1-1", "1900-01-01"},
      {"0100-1-1", "0100-01-01"},
      {"9999-12-31 23:59:59", "9999-12-31 23:59:59"},
  };
  for (const Case& one : cases) EXPECT_EQ(reading(one.text), one.date) << one.text;
}

TEST(ParseDate, RefusesWhatIsNoDate) {
  for (const char* text : {"",
                           " ",
                           "x",
                           "2026",
                           "2026-3",
                           "3/4",
                           "2026-13-1",
                           "2026-2-30",
                           "2025-2-29",
                           "2026-0-1",
                           "2026-1-0",
                           "2026-1-1 24:00",
                           "2026-1-1 1:60",
                           "2026-1-1 1:00:60",
                           "2026-1-1 13:00 PM",
                           "1.5",
                           "5",
                           "2026-1-1x",
                           "2026-1-1 x",
                           "2026-1-1 10",
                           "--1",
                           "1/2/3/4",
                           "Foo 5, 2026",
                           "99999-1-1",
                           "123-1-1",
                           "2026-1-1 10:00:00.5"}) {
    EXPECT_EQ(reading(text), "none") << text;
  }
}

TEST(Days, CountFromTheEndOf1899) {
  EXPECT_EQ(day_number(1899, 12, 30), 0);
  EXPECT_EQ(day_number(1900, 1, 1), 2);
  EXPECT_EQ(day_number(2026, 3, 5), 46086);
  EXPECT_EQ(day_number(1899, 12, 29), -1);
}

TEST(Days, TimeCountsForwardBeforeTheFirstDay) {
  EXPECT_EQ(date_text(-1.25), "1899-12-29 06:00:00");
  EXPECT_DOUBLE_EQ(*parse_date("1899-12-29 06:00"), -1.25);
}

TEST(Days, ComeBackFromEveryDayOfFourCenturies) {
  for (std::int64_t day = day_number(1800, 1, 1); day < day_number(2200, 1, 1); ++day) {
    const Moment moment = moment_of(static_cast<double>(day));
    ASSERT_EQ(day_number(moment.year, moment.month, moment.day), day);
    ASSERT_EQ(*parse_date(date_text(static_cast<double>(day))), static_cast<double>(day));
  }
}

TEST(Days, RoundToTheSecond) {
  EXPECT_EQ(date_text(1 + 86399.6 / 86400), "1900-01-01");
  EXPECT_EQ(date_text(1.0 / 86400), "1899-12-30 00:00:01");
}

TEST(Days, RaiseOutsideTheCalendar) {
  EXPECT_THROW(date_text(1e9), SqlError);
  EXPECT_THROW(date_text(-1e9), SqlError);
}

TEST(Days, KnowTheirWeekday) {
  EXPECT_EQ(weekday_of(day_number(2026, 3, 1)), 1);
  EXPECT_EQ(weekday_of(day_number(2026, 3, 7)), 7);
  EXPECT_EQ(weekday_of(day_number(1850, 1, 1)), 3);
}

}  // namespace
}  // namespace rk::jetsql
