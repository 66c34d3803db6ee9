// The fields of record sets that a page makes itself: their columns have types of their own.
#include <gtest/gtest.h>

#include "pagehost/components/recordset_object.h"
#include "tests/support/object_calls.h"
#include "tests/support/recording_database.h"
#include "value/array.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

constexpr std::int32_t kTypeMismatch = -2147352571;

class RecordsetFields : public ::testing::Test {
 protected:
  RecordsetFields() {
    append("n", 3);
    append("d", 7);
    append("f", 11);
    append("m", 203);
    append("b", 205);
    append("c", 6);
  }
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int32_t number) { return Value::long_integer(number); }
  void append(std::string_view name, std::int32_t type) {
    get(get(rows_, "Fields"), "Append", {t(name), n(type)});
  }
  void open() {
    get(rows_, "Open");
    get(rows_, "AddNew");
  }
  void set(std::string_view name, const Value& value) { let(rows_, "", {t(name), value}); }
  Value value(std::string_view name) { return plain_value(get(rows_, "", {t(name)})); }
  Value field(std::string_view name) { return get(rows_, "", {t(name)}); }

  Value rows_ =
      Value::object(make_ref<RecordsetObject>(std::make_shared<tests::RecordingDatabase>()));
};

TEST_F(RecordsetFields, AValueBecomesItsColumnsTypeWhenItIsSet) {
  open();
  set("n", Value::real(2.5));
  EXPECT_EQ(value("n").kind(), Value::Kind::Long);
  EXPECT_EQ(text_of(value("n")), "2");
  set("n", t(" 7 "));
  EXPECT_EQ(text_of(value("n")), "7");
  set("d", t("2024-3-1"));
  EXPECT_EQ(value("d").kind(), Value::Kind::Date);
  set("f", n(1));
  EXPECT_EQ(text_of(value("f")), "True");
  set("m", n(12));
  EXPECT_TRUE(value("m").is_text());
  set("c", t("1.5"));
  EXPECT_EQ(value("c").kind(), Value::Kind::Currency);
  set("n", Value::null());
  EXPECT_TRUE(value("n").is_null());
}

TEST_F(RecordsetFields, AValueThatCannotBeOfItsColumnsTypeIsRefusedAtOnce) {
  open();
  set("n", n(4));
  for (const auto& [name, bad] :
       {std::pair("n", "abc"), std::pair("n", ""), std::pair("d", "noday"), std::pair("d", ""),
        std::pair("f", "maybe")}) {
    EXPECT_EQ(error_number([&, name = name, bad = bad] { set(name, t(bad)); }), kTypeMismatch);
  }
  EXPECT_EQ(error_number([&] { set("b", n(1)); }), kTypeMismatch);
  get(rows_, "Update");
  EXPECT_EQ(text_of(value("n")), "4");
}

TEST_F(RecordsetFields, AWholeNumberPastALongIsLeftToTheDatabase) {
  open();
  set("n", Value::real(3e9));
  EXPECT_EQ(text_of(value("n")), "3000000000");
  set("n", Value::real(2147483647));
  EXPECT_EQ(value("n").kind(), Value::Kind::Long);
}

TEST_F(RecordsetFields, CollectIsTheValueItself) {
  open();
  let(rows_, "Collect", {t("n"), t("5")});
  EXPECT_EQ(get(rows_, "Collect", {n(0)}).kind(), Value::Kind::Long);
  EXPECT_EQ(error_number([&] { get(rows_, "Collect", {t("nope")}); }), 3265);
}

TEST_F(RecordsetFields, PartsOfAnyLengthAreJoined) {
  open();
  get(field("m"), "AppendChunk", {t("abc")});
  get(field("m"), "AppendChunk", {t("def")});
  EXPECT_EQ(text_of(value("m")), "abcdef");
  get(field("b"), "AppendChunk", {Value::text(Text::from_bytes("\x01\x02\xFF"))});
  get(field("b"), "AppendChunk", {Value::array(Array::of_bytes("x"))});
  EXPECT_EQ(value("b").as_array().bytes(), "\x01\x02\xFFx");
  // Another field came between: what is appended now is a new value.
  get(field("m"), "AppendChunk", {t("new")});
  EXPECT_EQ(text_of(value("m")), "new");
  EXPECT_EQ(error_number([&] { get(field("m"), "AppendChunk", {n(1)}); }), kTypeMismatch);
}

TEST_F(RecordsetFields, APartAfterAMoveReplacesWhatTheFieldHeld) {
  open();
  get(field("m"), "AppendChunk", {t("abc")});
  get(rows_, "Update");
  get(field("m"), "AppendChunk", {t("x")});
  EXPECT_EQ(text_of(value("m")), "x");
}

TEST_F(RecordsetFields, ALongValueIsReadInPartsToItsEnd) {
  open();
  set("m", t("abcdef"));
  EXPECT_EQ(text_of(get(field("m"), "GetChunk", {n(4)})), "abcd");
  EXPECT_EQ(text_of(get(field("m"), "GetChunk", {n(4)})), "ef");
  EXPECT_TRUE(get(field("m"), "GetChunk", {n(4)}).is_null());
  get(rows_, "Update");
  get(rows_, "MoveFirst");
  EXPECT_EQ(text_of(get(field("m"), "GetChunk", {n(2)})), "ab");
}

TEST_F(RecordsetFields, WhatMovesOnStoresTheRowAndLetsTheSetClose) {
  open();
  set("n", n(1));
  get(rows_, "Update");
  for (const char* step : {"Find", "GetRows", "GetString", "MoveFirst"}) {
    get(rows_, "MoveFirst");
    set("n", n(2));
    get(rows_, step,
        step == std::string_view("Find") ? std::vector<Value>{t("n=9")} : std::vector<Value>());
    EXPECT_EQ(text_of(get(rows_, "EditMode")), "0") << step;
  }
  get(rows_, "Close");
}

TEST_F(RecordsetFields, ABytesFieldTakesTheBytesOfAText) {
  open();
  set("b", Value::text(Text::from_bytes("abc")));
  EXPECT_EQ(value("b").as_array().bytes(), "abc");
}

TEST_F(RecordsetFields, ColumnsAreKnownBeforeTheSetIsOpen) {
  const Value all = get(rows_, "Fields");
  EXPECT_EQ(text_of(get(get(all, "Item", {n(0)}), "Name")), "n");
  EXPECT_EQ(text_of(get(get(all, "Item", {t("D")}), "Type")), "7");
  EXPECT_EQ(text_of(get(get(all, "Item", {t("n")}), "DefinedSize")), "4");
  get(all, "Delete", {t("n")});
  EXPECT_EQ(text_of(get(get(all, "Item", {n(0)}), "Name")), "d");
  EXPECT_EQ(text_of(get(all, "Count")), "5");
  EXPECT_EQ(error_number([&] { get(all, "Delete", {t("n")}); }), 3265);
  EXPECT_EQ(error_number([&] { append("M", 3); }), 3367);
}

TEST_F(RecordsetFields, ASetThatAPageMadeIsHeldByTheClient) {
  get(rows_, "Open");
  EXPECT_EQ(text_of(get(rows_, "CursorLocation")), "3");
}

TEST_F(RecordsetFields, AFieldTellsWhereItComesFrom) {
  open();
  EXPECT_EQ(text_of(get(field("n"), "Properties", {t("IsAutoIncrement")})), "False");
  EXPECT_TRUE(plain_value(get(field("n"), "Properties", {t("BASETABLENAME")})).is_null());
}

}  // namespace
}  // namespace rk::pagehost
