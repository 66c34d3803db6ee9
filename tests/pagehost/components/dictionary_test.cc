#include "pagehost/components/dictionary.h"

#include <gtest/gtest.h>

#include "tests/support/object_calls.h"
#include "value/array.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;
using tests::walked;

class DictionaryTest : public ::testing::Test {
 protected:
  Value d_ = Value::object(make_ref<Dictionary>());
  static Value t(std::string_view text) { return Value::text(text); }
};

TEST_F(DictionaryTest, KeepsTheOrderOfComing) {
  let(d_, "", {t("b"), t("1")});
  let(d_, "", {t("a"), t("2")});
  get(d_, "Remove", {t("b")});
  get(d_, "Add", {t("b"), t("3")});
  EXPECT_EQ(walked(d_), "a,b");
  EXPECT_EQ(text_of(get(d_, "Items").as_array().elements()[1]), "3");
  EXPECT_EQ(text_of(get(d_, "Count")), "2");
}

TEST_F(DictionaryTest, ReadingAKeyThatIsNotThereMakesIt) {
  EXPECT_TRUE(get(d_, "Item", {t("x")}).is_empty());
  EXPECT_TRUE(get(d_, "Exists", {t("x")}).as_boolean());
}

TEST_F(DictionaryTest, AddingAKeyTwiceIsAnError) {
  get(d_, "Add", {t("x"), t("1")});
  EXPECT_EQ(error_number([&] { get(d_, "Add", {t("x"), t("2")}); }), 457);
}

TEST_F(DictionaryTest, NumbersAreKeysByTheirValueAndNotByTheirText) {
  let(d_, "", {Value::integer(1), t("one")});
  EXPECT_EQ(text_of(get(d_, "", {Value::real(1.0)})), "one");
  EXPECT_FALSE(get(d_, "Exists", {t("1")}).as_boolean());
}

TEST_F(DictionaryTest, LetterCaseCountsUnlessCompareModeSaysOtherwise) {
  let(d_, "", {t("A"), t("1")});
  EXPECT_FALSE(get(d_, "Exists", {t("a")}).as_boolean());
  EXPECT_EQ(error_number([&] { let(d_, "CompareMode", {Value::integer(1)}); }), 5);
  get(d_, "RemoveAll");
  let(d_, "CompareMode", {Value::integer(1)});
  let(d_, "", {t("A"), t("1")});
  EXPECT_TRUE(get(d_, "Exists", {t("a")}).as_boolean());
}

TEST_F(DictionaryTest, AKeyCanBeRenamedInItsPlace) {
  let(d_, "", {t("a"), t("1")});
  let(d_, "", {t("b"), t("2")});
  let(d_, "Key", {t("a"), t("c")});
  EXPECT_EQ(walked(d_), "c,b");
  EXPECT_EQ(error_number([&] { let(d_, "Key", {t("c"), t("b")}); }), 457);
  EXPECT_EQ(error_number([&] { let(d_, "Key", {t("x"), t("y")}); }), 32811);
}

TEST_F(DictionaryTest, RemovingWhatIsNotThereIsAnError) {
  EXPECT_EQ(error_number([&] { get(d_, "Remove", {t("x")}); }), 32811);
}

TEST_F(DictionaryTest, KeysWithoutLetterCaseCompareAsTextsDo) {
  let(d_, "CompareMode", {Value::integer(1)});
  let(d_, "", {t("\u00C9"), t("1")});
  let(d_, "", {t("\u042F"), t("2")});
  EXPECT_EQ(text_of(get(d_, "", {t("\u00E9")})), "1");
  EXPECT_EQ(text_of(get(d_, "", {t("\u044F")})), "2");
}

TEST_F(DictionaryTest, KeepsOrderAndItemsThroughManyComingsAndGoings) {
  for (std::int16_t i = 0; i < 1000; ++i) {
    let(d_, "", {Value::integer(i), Value::integer(i)});
    if (i >= 10) get(d_, "Remove", {Value::integer(static_cast<std::int16_t>(i - 10))});
  }
  EXPECT_EQ(walked(d_), "990,991,992,993,994,995,996,997,998,999");
  EXPECT_EQ(text_of(get(d_, "", {Value::integer(995)})), "995");
  EXPECT_FALSE(get(d_, "Exists", {Value::integer(989)}).as_boolean());
}

TEST_F(DictionaryTest, AnEmptyKeyAndNullAreKeysOfTheirOwn) {
  let(d_, "", {Value(), t("empty")});
  let(d_, "", {Value::null(), t("null")});
  let(d_, "", {t(""), t("text")});
  let(d_, "", {Value::integer(0), t("zero")});
  EXPECT_EQ(text_of(get(d_, "Count")), "4");
  EXPECT_EQ(text_of(get(d_, "", {Value::null()})), "null");
}

// An object whose plain value is read by filling a dictionary.
class FillsWhenRead final : public Object {
 public:
  explicit FillsWhenRead(const Value& filled) : filled_(filled) {}
  std::string_view type_name() const override { return "FillsWhenRead"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) override {
    for (std::int16_t i = 0; i < 1000; ++i) let(filled_, "", {Value::integer(i), Value()});
    return Value::text("read");
  }

 private:
  const Value& filled_;
};

TEST_F(DictionaryTest, AnItemWhoseReadingFillsTheDictionaryIsKept) {
  let(d_, "", {t("x"), Value()});
  let(d_, "", {t("x"), Value::object(make_ref<FillsWhenRead>(d_))});
  EXPECT_EQ(text_of(get(d_, "", {t("x")})), "read");
  EXPECT_EQ(text_of(get(d_, "Count")), "1001");
}

TEST_F(DictionaryTest, WhatCanBeNoKeyIsRefusedEverywhere) {
  const Value array = Value::array(Array::make({}));
  EXPECT_EQ(error_number([&] { get(d_, "Exists", {array}); }), 5);
  EXPECT_EQ(error_number([&] { let(d_, "", {array, t("1")}); }), 5);
  let(d_, "", {Value::integer(1), t("1")});
  EXPECT_EQ(error_number([&] { get(d_, "Exists", {array}); }), 5);
  EXPECT_EQ(error_number([&] { let(d_, "Key", {Value::integer(1), array}); }), 5);
  EXPECT_EQ(text_of(get(d_, "", {Value::integer(1)})), "1");
}

TEST_F(DictionaryTest, TellsWhatItHolds) {
  let(d_, "", {t("a"), t("1")});
  rk::HeldMemory held;
  d_.as_object()->add_held(held);
  EXPECT_EQ(held.values.size(), 2U);
  EXPECT_GT(held.bytes, 0U);
}

}  // namespace
}  // namespace rk::pagehost
