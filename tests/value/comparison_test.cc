#include "value/comparison.h"

#include <gtest/gtest.h>

#include <random>

#include "value/script_error.h"

namespace rk {
namespace {

TEST(CompareText, OrdersBySixteenBitUnits) {
  std::mt19937 random(1);
  const std::u16string alphabet = u"aZ\u00E9\u4E2D\uE000\uFFFD";
  for (int i = 0; i < 3000; ++i) {
    std::u16string a;
    std::u16string b;
    for (std::size_t n = random() % 4; n > 0; --n) a += alphabet[random() % alphabet.size()];
    for (std::size_t n = random() % 4; n > 0; --n) b += alphabet[random() % alphabet.size()];
    if (random() % 2 == 0) a += u"\U0001F600";
    if (random() % 2 == 0) b += u"\U0001F600";
    EXPECT_EQ(compare_text(Text::from_units(a).view(), Text::from_units(b).view()), a <=> b);
  }
}

TEST(CompareLoosely, PutsEveryNumberBelowEveryText) {
  EXPECT_EQ(compare_loosely(Value::integer(5), Value::text("5")), std::strong_ordering::less);
  EXPECT_EQ(compare_loosely(Value::text("1"), Value::integer(5)), std::strong_ordering::greater);
}

TEST(CompareLoosely, ReadsEmptyAsZeroOrAsNoText) {
  EXPECT_EQ(compare_loosely(Value(), Value::text("")), std::strong_ordering::equal);
  EXPECT_EQ(compare_loosely(Value(), Value::integer(0)), std::strong_ordering::equal);
  EXPECT_EQ(compare_loosely(Value(), Value()), std::strong_ordering::equal);
}

TEST(CompareLoosely, AnswersNothingForNull) {
  EXPECT_FALSE(compare_loosely(Value::null(), Value::null()).has_value());
  EXPECT_FALSE(compare_loosely(Value::text("a"), Value::null()).has_value());
}

TEST(CompareNumber, ReadsTextsAsNumbers) {
  EXPECT_TRUE(above(Value::text("1.5"), 1));
  EXPECT_FALSE(above(Value::null(), 0));
  EXPECT_FALSE(differs_from(Value::null(), 0));
  EXPECT_FALSE(equals(Value::null(), 0));
  EXPECT_TRUE(differs_from(Value::boolean(true), 0));
  EXPECT_THROW(above(Value::text("x"), 0), ScriptError);
}

TEST(EqualsText, ComparesTheTextOfANumber) {
  EXPECT_TRUE(equals(Value::integer(0), "0"));
  EXPECT_TRUE(equals(Value(), ""));
  EXPECT_FALSE(equals(Value::null(), ""));
  EXPECT_FALSE(equals(Value::text(" 0"), "0"));
}

}  // namespace
}  // namespace rk
