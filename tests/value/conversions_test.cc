#include "value/conversions.h"

#include <gtest/gtest.h>

#include <limits>

#include "value/array.h"
#include "value/script_error.h"

namespace rk {
namespace {

template <class Call>
std::int32_t error_of(Call call) {
  try {
    call();
  } catch (const ScriptError& error) {
    return error.number();
  }
  return 0;
}

std::string text_of(const Value& value) {
  return to_text(value).string();
}

TEST(NumberText, IsTheShortestWithFifteenDigitsAtMost) {
  EXPECT_EQ(number_text(100), "100");
  EXPECT_EQ(number_text(99.5), "99.5");
  EXPECT_EQ(number_text(0.5), "0.5");
  EXPECT_EQ(number_text(-0.5), "-0.5");
  EXPECT_EQ(number_text(1e20), "1E+20");
  EXPECT_EQ(number_text(0.1 + 0.2), "0.3");
  EXPECT_EQ(number_text(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(number_text(999999999999999), "999999999999999");
  EXPECT_EQ(number_text(1e15), "1E+15");
  EXPECT_EQ(number_text(123456789012345678.0), "1.23456789012346E+17");
  EXPECT_EQ(number_text(0.0001), "0.0001");
  EXPECT_EQ(number_text(0.00001), "1E-05");
  EXPECT_EQ(number_text(-0.0), "0");
  EXPECT_EQ(number_text(1e300), "1E+300");
}

TEST(NumberText, OfASingleHasSevenDigits) {
  EXPECT_EQ(single_text(0.1f), "0.1");
  EXPECT_EQ(single_text(1.0f / 3), "0.3333333");
}

TEST(Currency, OfATextIsExactToItsLastDigit) {
  EXPECT_EQ(to_currency(Value::text("90071992547409.1234")), 900719925474091234);
  EXPECT_EQ(to_currency(Value::text("922337203685477.5807")), INT64_MAX);
  EXPECT_EQ(to_currency(Value::text("-922337203685477.5808")), INT64_MIN);
  EXPECT_EQ(to_currency(Value::text("1,234.5")), 12345000);
  EXPECT_EQ(to_currency(Value::text("(.5)")), -5000);
  EXPECT_EQ(to_currency(Value::text("12.5e-1")), 12500);
  EXPECT_EQ(to_currency(Value::text("00012e2")), 12000000);
  EXPECT_EQ(to_currency(Value::text("&H10")), 160000);
}

TEST(Currency, OfALargeNumberIsExact) {
  EXPECT_EQ(to_currency(Value::real(922337203685477)), 9223372036854770000);
  EXPECT_EQ(to_currency(Value::real(800000000000000.25)), 8000000000000002500);
  EXPECT_EQ(to_currency(Value::real(-0.00005)), 0);
  EXPECT_EQ(error_of([] { to_currency(Value::real(922337203685478)); }), 6);
}

TEST(Currency, OfATextRoundsHalvesToTheEvenNeighbour) {
  EXPECT_EQ(to_currency(Value::text("0.00005")), 0);
  EXPECT_EQ(to_currency(Value::text("0.00015")), 2);
  EXPECT_EQ(to_currency(Value::text("0.000050001")), 1);
  EXPECT_EQ(to_currency(Value::text("0.00004999")), 0);
  EXPECT_EQ(to_currency(Value::text("9e-99999999999999999999")), 0);
}

TEST(Currency, OfATextThatIsTooLargeOverflows) {
  for (const char* text : {"922337203685477.5808", "-922337203685477.5809", "1e15", "1e300",
                           "1e99999999999999999999", "922337203685477.58075"}) {
    EXPECT_EQ(error_of([&] { to_currency(Value::text(text)); }), 6) << text;
  }
  EXPECT_EQ(to_currency(Value::text("0e99999999999999999999")), 0);
  EXPECT_EQ(error_of([] { to_currency(Value::text("ten")); }), 13);
}

TEST(NumberText, OfCurrencyHasFourDecimalsAtMost) {
  EXPECT_EQ(currency_text(1234500), "123.45");
  EXPECT_EQ(currency_text(10000), "1");
  EXPECT_EQ(currency_text(-5), "-0.0005");
  EXPECT_EQ(currency_text(std::numeric_limits<std::int64_t>::min()), "-922337203685477.5808");
}

TEST(ToText, ShowsEachKind) {
  EXPECT_EQ(text_of(Value()), "");
  EXPECT_EQ(text_of(Value::boolean(true)), "True");
  EXPECT_EQ(text_of(Value::boolean(false)), "False");
  EXPECT_EQ(text_of(Value::integer(-7)), "-7");
  EXPECT_EQ(text_of(Value::date(45355)), "2024-03-04");
  EXPECT_EQ(text_of(Value::date(45355.5)), "2024-03-04 12:00:00");
  EXPECT_EQ(text_of(Value::date(0.25)), "06:00:00");
  EXPECT_EQ(text_of(Value::date(-1.25)), "1899-12-29 06:00:00");
}

TEST(ToText, RaisesOnNullAndJoinedTextDoesNot) {
  EXPECT_EQ(error_of([] { to_text(Value::null()); }), 94);
  EXPECT_TRUE(joined_text(Value::null()).empty());
  EXPECT_FALSE(try_text(Value::null()).has_value());
}

TEST(ToText, RaisesTypeMismatchForArraysAndObjectNotSetForNothing) {
  EXPECT_EQ(error_of([] { to_text(Value::array(Array::of({}))); }), 13);
  EXPECT_EQ(error_of([] { to_text(Value::nothing()); }), 91);
}

TEST(IsNumber, RaisesNothingForOneThatIsTooLarge) {
  EXPECT_FALSE(is_number("1e400"));
  EXPECT_FALSE(is_numeric(Value::text("-1e400")));
  EXPECT_TRUE(is_number("1e-400"));
  EXPECT_EQ(error_of([] { parse_number("1e400"); }), 6);
}

TEST(ParseNumber, ReadsTheFormsThatPagesWrite) {
  EXPECT_EQ(parse_number(" 12 "), 12);
  EXPECT_EQ(parse_number("-1.5"), -1.5);
  EXPECT_EQ(parse_number("1.5-"), -1.5);
  EXPECT_EQ(parse_number("(3)"), -3);
  EXPECT_EQ(parse_number("1,234.5"), 1234.5);
  EXPECT_EQ(parse_number(".5"), 0.5);
  EXPECT_EQ(parse_number("5."), 5);
  EXPECT_EQ(parse_number("1e3"), 1000);
  EXPECT_EQ(parse_number("1E-2"), 0.01);
  EXPECT_EQ(parse_number("&HFF"), 255);
  EXPECT_EQ(parse_number("&hFFFF"), -1);
  EXPECT_EQ(parse_number("&O17"), 15);
}

TEST(ParseNumber, RefusesWhatIsNoNumber) {
  for (const std::string_view text : {"", " ", "abc", "1x", "1 2", "--1", "1e", "e5", ".", "+",
                                      "&H", "1.2.3", "1,2,x", "2024-01-01", "True"}) {
    EXPECT_FALSE(parse_number(text).has_value()) << text;
  }
}

TEST(ToLong, RoundsHalvesToEvenAndOverflows) {
  EXPECT_EQ(to_long(Value::real(2.5)), 2);
  EXPECT_EQ(to_long(Value::real(3.5)), 4);
  EXPECT_EQ(to_long(Value::text("7")), 7);
  EXPECT_EQ(to_long(Value::boolean(true)), -1);
  EXPECT_EQ(error_of([] { to_long(Value::real(3e9)); }), 6);
  EXPECT_EQ(error_of([] { to_integer(Value::long_integer(40000)); }), 6);
  EXPECT_EQ(error_of([] { to_long(Value::text("x")); }), 13);
  EXPECT_EQ(error_of([] { to_long(Value::null()); }), 94);
  EXPECT_EQ(error_of([] { to_double(Value::text("1e999")); }), 6);
}

TEST(ToBoolean, ReadsNamesAndNumbers) {
  EXPECT_TRUE(to_boolean(Value::text("true")));
  EXPECT_FALSE(to_boolean(Value::text("FALSE")));
  EXPECT_TRUE(to_boolean(Value::text("2")));
  EXPECT_FALSE(to_boolean(Value()));
  EXPECT_EQ(error_of([] { to_boolean(Value::text("yes")); }), 13);
}

TEST(ToDate, ReadsDatesAndDayNumbers) {
  EXPECT_EQ(to_date(Value::text("2024-3-4")), 45355);
  EXPECT_EQ(to_date(Value::text("3/4/2024")), 45355);
  EXPECT_EQ(to_date(Value::text("45355")), 45355);
  EXPECT_EQ(error_of([] { to_date(Value::text("tomorrow")); }), 13);
}

TEST(ToNumber, KeepsTheKindsOfNumbersAndNull) {
  EXPECT_EQ(to_number(Value::text("2.5")).as_double(), 2.5);
  EXPECT_EQ(to_number(Value::long_integer(3)).kind(), Value::Kind::Long);
  EXPECT_TRUE(to_number(Value::null()).is_null());
  EXPECT_EQ(error_of([] { to_number(Value::text("")); }), 13);
}

TEST(IsNumeric, FollowsTheLanguage) {
  EXPECT_TRUE(is_numeric(Value()));
  EXPECT_TRUE(is_numeric(Value::text("1e3")));
  EXPECT_FALSE(is_numeric(Value::null()));
  EXPECT_FALSE(is_numeric(Value::date(1)));
  EXPECT_FALSE(is_numeric(Value::text("")));
}

}  // namespace
}  // namespace rk
