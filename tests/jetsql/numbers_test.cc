#include "jetsql/numbers.h"

#include <gtest/gtest.h>

#include <limits>

#include "jetsql/sql_error.h"

namespace rk::jetsql {
namespace {

TEST(NumberText, IsTheShortestOfFifteenDigits) {
  EXPECT_EQ(number_text(100), "100");
  EXPECT_EQ(number_text(99.5), "99.5");
  EXPECT_EQ(number_text(0.5), "0.5");
  EXPECT_EQ(number_text(-0.0), "0");
  EXPECT_EQ(number_text(0.1 + 0.2), "0.3");
  EXPECT_EQ(number_text(1e20), "1E+20");
  EXPECT_EQ(number_text(123456789012345), "123456789012345");
  EXPECT_EQ(number_text(1.0 / 3), "0.333333333333333");
}

TEST(ParseNumber, TakesOneNumberAndNothingElse) {
  EXPECT_EQ(parse_number(" -1.5e2 "), -150);
  EXPECT_EQ(parse_number("+5"), 5);
  EXPECT_EQ(parse_number(".5"), 0.5);
  for (const char* none :
       {"", " ", "x", "1x", "--1", "+-1", "inf", "nan", "0x10", "1e999", "1 2"}) {
    EXPECT_FALSE(parse_number(none)) << none;
  }
}

TEST(RoundHalfEven, GoesToTheEvenNeighbour) {
  EXPECT_EQ(round_half_even(0.5), 0);
  EXPECT_EQ(round_half_even(1.5), 2);
  EXPECT_EQ(round_half_even(-2.5), -2);
  EXPECT_EQ(round_half_even(2.4999), 2);
}

TEST(WholeNumber, OverflowsOutsideItsRange) {
  EXPECT_EQ(whole_number(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
  EXPECT_THROW(whole_number(9223372036854775808.0), SqlError);
  EXPECT_THROW(whole_number(std::numeric_limits<double>::quiet_NaN()), SqlError);
}

}  // namespace
}  // namespace rk::jetsql
