// What is bound for a literal, by the conversion that the column it meets asks for.
#include "jetsql/translate.h"

#include <gtest/gtest.h>

#include "jetsql/numbers.h"

namespace rk::jetsql {
namespace {

using Conversion = Parameter::Conversion;
using Kind = Literal::Kind;

Literal text(const char* value) {
  Literal made;
  made.kind = Kind::Text;
  made.text = value;
  return made;
}

Literal whole(std::int64_t value, Kind kind = Kind::Integer) {
  Literal made;
  made.kind = kind;
  made.integer = value;
  return made;
}

Literal real(double value, Kind kind = Kind::Double) {
  Literal made;
  made.kind = kind;
  made.number = value;
  return made;
}

std::string bound(const Literal& given, Conversion conversion, bool negate = false) {
  Parameter parameter;
  parameter.conversion = conversion;
  parameter.negate = negate;
  try {
    const Literal value = bound_value(parameter, given);
    switch (value.kind) {
      case Kind::Null:
        return "Null";
      case Kind::Text:
        return "'" + value.text + "'";
      case Kind::Integer:
        return std::to_string(value.integer);
      case Kind::Double:
        return number_text(value.number) + "d";
      default:
        return "neither";
    }
  } catch (const SqlError& error) {
    return "error " + std::to_string(error.number());
  }
}

const std::string kMismatch = "error " + std::to_string(kTypeMismatch);

TEST(BoundValue, IsTheValueItselfWhereNothingAsksForMore) {
  EXPECT_EQ(bound(text("a"), Conversion::None), "'a'");
  EXPECT_EQ(bound(whole(5), Conversion::None), "5");
  EXPECT_EQ(bound(real(1.5), Conversion::None), "1.5d");
  EXPECT_EQ(bound(real(46086, Kind::Date), Conversion::None), "'2026-03-05'");
  EXPECT_EQ(bound(whole(1, Kind::Boolean), Conversion::None), "-1");
  EXPECT_EQ(bound(whole(0, Kind::Boolean), Conversion::None), "0");
  EXPECT_EQ(bound(whole(5), Conversion::None, true), "-5");
  EXPECT_EQ(bound(real(1.5), Conversion::None, true), "-1.5d");
}

TEST(BoundValue, OfANullIsNull) {
  for (const Conversion conversion :
       {Conversion::None, Conversion::Flag, Conversion::StoredFlag, Conversion::DateText,
        Conversion::StoredInteger, Conversion::StoredNumber, Conversion::StoredMoney,
        Conversion::StoredText}) {
    EXPECT_EQ(bound(Literal(), conversion), "Null");
    EXPECT_EQ(bound(Literal(), conversion, true), "Null");
  }
}

TEST(BoundValue, BesideAFlagTakesMinusOneForTrue) {
  EXPECT_EQ(bound(whole(1), Conversion::Flag), "1");
  EXPECT_EQ(bound(whole(1), Conversion::Flag, true), "1");
  EXPECT_EQ(bound(whole(0), Conversion::Flag), "0");
  EXPECT_EQ(bound(whole(2), Conversion::Flag), "2");
  EXPECT_EQ(bound(whole(1, Kind::Boolean), Conversion::Flag), "1");
}

TEST(BoundValue, StoredIntoAFlagIsNoughtOrOne) {
  EXPECT_EQ(bound(whole(5), Conversion::StoredFlag), "1");
  EXPECT_EQ(bound(whole(1), Conversion::StoredFlag, true), "1");
  EXPECT_EQ(bound(whole(0), Conversion::StoredFlag), "0");
  EXPECT_EQ(bound(text("True"), Conversion::StoredFlag), "1");
  EXPECT_EQ(bound(text("0"), Conversion::StoredFlag), "0");
  EXPECT_EQ(bound(text("x"), Conversion::StoredFlag), kMismatch);
}

TEST(BoundValue, BesideADateBecomesADatesText) {
  EXPECT_EQ(bound(text("3/4/2026 1:02:03"), Conversion::DateText), "'2026-03-04 01:02:03'");
  EXPECT_EQ(bound(whole(46086), Conversion::DateText), "'2026-03-05'");
  EXPECT_EQ(bound(real(46086.5), Conversion::DateText), "'2026-03-05 12:00:00'");
  EXPECT_EQ(bound(text("x"), Conversion::DateText), kMismatch);
  EXPECT_EQ(bound(text(""), Conversion::DateText), kMismatch);
  EXPECT_EQ(bound(real(1e12), Conversion::DateText), "error " + std::to_string(kOverflow));
}

TEST(BoundValue, StoredIntoAnIntegerRoundsHalvesToTheEven) {
  EXPECT_EQ(bound(text("7"), Conversion::StoredInteger), "7");
  EXPECT_EQ(bound(text(" 7.5 "), Conversion::StoredInteger), "8");
  EXPECT_EQ(bound(real(2.5), Conversion::StoredInteger), "2");
  EXPECT_EQ(bound(real(3.5), Conversion::StoredInteger), "4");
  EXPECT_EQ(bound(real(2.5), Conversion::StoredInteger, true), "-2");
  EXPECT_EQ(bound(text(""), Conversion::StoredInteger), kMismatch);
  EXPECT_EQ(bound(real(1e300), Conversion::StoredInteger), "error " + std::to_string(kOverflow));
}

TEST(BoundValue, StoredIntoANumberReadsTexts) {
  EXPECT_EQ(bound(text("1.5e2"), Conversion::StoredNumber), "150d");
  EXPECT_EQ(bound(whole(7), Conversion::StoredNumber), "7");
  EXPECT_EQ(bound(real(46086, Kind::Date), Conversion::StoredNumber), "46086d");
  for (const char* none : {"x", "", "1x", "0x5", "inf", "nan", "--1", "+-1", "1e", "."}) {
    EXPECT_EQ(bound(text(none), Conversion::StoredNumber), kMismatch) << none;
  }
}

TEST(BoundValue, StoredIntoACurrencyHasFourDecimalsAndItsRange) {
  EXPECT_EQ(bound(text("33.333333"), Conversion::StoredMoney), "33.3333d");
  EXPECT_EQ(bound(real(-1.23456), Conversion::StoredMoney), "-1.2346d");
  EXPECT_EQ(bound(whole(7), Conversion::StoredMoney), "7");
  EXPECT_EQ(bound(whole(922337203685477), Conversion::StoredMoney), "922337203685477");
  const std::string overflow = "error " + std::to_string(kOverflow);
  EXPECT_EQ(bound(whole(922337203685478), Conversion::StoredMoney), overflow);
  EXPECT_EQ(bound(real(1e20), Conversion::StoredMoney), overflow);
  EXPECT_EQ(bound(text("-1e15"), Conversion::StoredMoney), overflow);
  EXPECT_EQ(bound(text("x"), Conversion::StoredMoney), kMismatch);
}

TEST(BoundValue, StoredIntoATextIsWritten) {
  EXPECT_EQ(bound(whole(5), Conversion::StoredText), "'5'");
  EXPECT_EQ(bound(real(0.1), Conversion::StoredText), "'0.1'");
  EXPECT_EQ(bound(real(1e20), Conversion::StoredText), "'1E+20'");
  EXPECT_EQ(bound(real(46086, Kind::Date), Conversion::StoredText), "'2026-03-05'");
  EXPECT_EQ(bound(whole(5), Conversion::StoredText, true), "'-5'");
  EXPECT_EQ(bound(whole(1, Kind::Boolean), Conversion::StoredText), "'True'");
  EXPECT_EQ(bound(whole(0, Kind::Boolean), Conversion::StoredText), "'False'");
}

}  // namespace
}  // namespace rk::jetsql
