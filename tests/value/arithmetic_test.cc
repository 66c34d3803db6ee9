#include "value/arithmetic.h"

#include <gtest/gtest.h>

#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk {
namespace {

using Kind = Value::Kind;

template <class Operation>
int error_of(Operation operation) {
  try {
    operation();
  } catch (const ScriptError& error) {
    return error.number();
  }
  return 0;
}

TEST(Arithmetic, WholeKindsWidenWhereTheyOverflow) {
  EXPECT_EQ(add(Value::byte(200), Value::byte(100)).kind(), Kind::Integer);
  EXPECT_EQ(add(Value::integer(32767), Value::integer(1)).kind(), Kind::Long);
  EXPECT_EQ(add(Value::long_integer(2147483647), Value::integer(1)).kind(), Kind::Double);
  EXPECT_EQ(multiply(Value::long_integer(100000), Value::long_integer(100000)).as_double(), 1e10);
}

TEST(Arithmetic, CurrencyIsExact) {
  const Value sum = add(Value::currency(1000), Value::currency(2000));
  EXPECT_EQ(sum.kind(), Kind::Currency);
  EXPECT_EQ(sum.as_currency(), 3000);
  EXPECT_EQ(multiply(Value::currency(15000), Value::integer(3)).as_currency(), 45000);
  EXPECT_EQ(error_of([] { add(Value::currency(INT64_MAX), Value::currency(1)); }), 6);
}

TEST(Arithmetic, DatesStayDatesButTheirDifferenceDoesNot) {
  EXPECT_EQ(add(Value::date(1), Value::integer(1)).kind(), Kind::Date);
  EXPECT_EQ(subtract(Value::date(3), Value::date(1)).kind(), Kind::Double);
  EXPECT_EQ(error_of([] { add(Value::date(2958465), Value::integer(1)); }), 6);
}

TEST(Arithmetic, NullBesideAnythingIsNull) {
  EXPECT_TRUE(add(Value::null(), Value::integer(1)).is_null());
  EXPECT_TRUE(negate(Value::null()).is_null());
  EXPECT_TRUE(power(Value::integer(2), Value::null()).is_null());
}

TEST(Arithmetic, DivisionsByZero) {
  EXPECT_EQ(error_of([] { divide(Value::integer(1), Value::integer(0)); }), 11);
  EXPECT_EQ(error_of([] { divide(Value::integer(0), Value::integer(0)); }), 6);
  EXPECT_EQ(error_of([] { modulo(Value::integer(1), Value::real(0.4)); }), 11);
}

TEST(Arithmetic, TheSmallestLongByMinusOneWidens) {
  const Value quotient = integer_divide(Value::long_integer(INT32_MIN), Value::integer(-1));
  EXPECT_EQ(quotient.as_double(), 2147483648.0);
  EXPECT_EQ(to_long(modulo(Value::long_integer(INT32_MIN), Value::integer(-1))), 0);
}

TEST(Arithmetic, LettersAndArraysAreNoNumbers) {
  EXPECT_EQ(error_of([] { add(Value::text("a"), Value::integer(1)); }), 13);
  EXPECT_EQ(error_of([] { add(Value::array(Array::of({})), Value::integer(1)); }), 13);
  EXPECT_EQ(error_of([] { add(Value::nothing(), Value::integer(1)); }), 91);
}

TEST(Arithmetic, JoiningNullsIsNull) {
  EXPECT_TRUE(concatenate(Value::null(), Value::null()).is_null());
  EXPECT_EQ(concatenate(Value::null(), Value::integer(5)).as_view(), "5");
}

TEST(Arithmetic, LogicTakesTheWiderKind) {
  EXPECT_EQ(logical_and(Value::boolean(true), Value::boolean(true)).kind(), Kind::Boolean);
  EXPECT_EQ(logical_or(Value::byte(1), Value::byte(2)).kind(), Kind::Byte);
  EXPECT_EQ(logical_xor(Value::byte(1), Value::boolean(true)).kind(), Kind::Integer);
  EXPECT_EQ(logical_eqv(Value::integer(1), Value::real(1)).kind(), Kind::Long);
}

TEST(Arithmetic, UnknownIsAnsweredWhereOneSideDecides) {
  EXPECT_FALSE(logical_and(Value::boolean(false), Value::null()).as_boolean());
  EXPECT_TRUE(logical_or(Value::null(), Value::boolean(true)).as_boolean());
  EXPECT_TRUE(logical_imp(Value::boolean(false), Value::null()).as_boolean());
  EXPECT_TRUE(logical_imp(Value::boolean(true), Value::null()).is_null());
}

}  // namespace
}  // namespace rk
