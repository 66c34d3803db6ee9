#include "pagehost/components/stream_object.h"

#include <gtest/gtest.h>

#include "tests/support/memory_files.h"
#include "tests/support/object_calls.h"
#include "tests/support/toy_code_pages.h"
#include "value/array.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

class StreamTest : public ::testing::Test {
 protected:
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int32_t number) { return Value::long_integer(number); }
  static Value bytes(std::string b) { return Value::array(Array::of_bytes(std::move(b))); }
  Value stream(std::int32_t type, std::string_view charset = "") {
    Value made =
        Value::object(make_ref<StreamObject>(FileSystem{&files_, &pages_, platform::kGb2312}));
    let(made, "Type", {n(type)});
    if (!charset.empty()) let(made, "Charset", {t(charset)});
    get(made, "Open");
    return made;
  }
  tests::MemoryFiles files_;
  tests::ToyCodePages pages_;
};

TEST_F(StreamTest, BytesBecomeTextWhereTheTypeIsSwitchedAtTheBeginning) {
  const Value s = stream(1);
  get(s, "Write", {bytes("\xC4\xE3\xBA\xC3")});
  EXPECT_EQ(error_number([&] { let(s, "Type", {n(2)}); }), 3219);
  let(s, "Position", {n(0)});
  let(s, "Type", {n(2)});
  let(s, "Charset", {t("gb2312")});
  EXPECT_EQ(text_of(get(s, "ReadText")), "\xE4\xBD\xA0\xE5\xA5\xBD");
}

TEST_F(StreamTest, TextIsSavedWithTheMarkOfItsCharset) {
  const Value s = stream(2, "utf-8");
  get(s, "WriteText", {t("a"), n(1)});
  get(s, "SaveToFile", {t("/site/a.txt"), n(2)});
  EXPECT_EQ(files_.read("/site/a.txt"),
            "\xEF\xBB\xBF"
            "a\r\n");
  EXPECT_EQ(text_of(get(s, "ReadText")), "a\r\n");
}

TEST_F(StreamTest, AFileIsReplacedOnlyWhereAsked) {
  files_.put("/site/a.txt", "old");
  const Value s = stream(1);
  EXPECT_EQ(error_number([&] { get(s, "SaveToFile", {t("/site/a.txt")}); }), 3004);
  EXPECT_EQ(error_number([&] { get(s, "LoadFromFile", {t("/site/none.txt")}); }), 3002);
}

TEST_F(StreamTest, PartsAreReadToTheEnd) {
  const Value s = stream(1);
  get(s, "Write", {bytes("abcde")});
  let(s, "Position", {n(1)});
  EXPECT_EQ(get(s, "Read", {n(2)}).as_array().bytes(), "bc");
  EXPECT_FALSE(get(s, "EOS").as_boolean());
  EXPECT_EQ(get(s, "Read").as_array().bytes(), "de");
  EXPECT_TRUE(get(s, "EOS").as_boolean());
  EXPECT_TRUE(get(s, "Read").is_null());
}

TEST_F(StreamTest, LinesAreReadByTheirSeparator) {
  const Value s = stream(2, "iso-8859-1");
  get(s, "WriteText", {t("one\r\ntwo\xC3\xA9")});
  let(s, "Position", {n(0)});
  EXPECT_EQ(text_of(get(s, "ReadText", {n(-2)})), "one");
  EXPECT_EQ(text_of(get(s, "ReadText", {n(2)})), "tw");
  EXPECT_EQ(text_of(get(s, "ReadText")), "o\xC3\xA9");
}

TEST_F(StreamTest, CopyingGoesFromPlaceToPlace) {
  const Value from = stream(1);
  const Value to = stream(1);
  get(from, "Write", {bytes("abcdef")});
  let(from, "Position", {n(2)});
  get(from, "CopyTo", {to, n(3)});
  let(to, "Position", {n(0)});
  EXPECT_EQ(get(to, "Read").as_array().bytes(), "cde");
}

TEST_F(StreamTest, CopyingATextCountsCharacters) {
  const Value from = stream(2, "gb2312");
  const Value same = stream(2, "gb2312");
  const Value other = stream(2, "utf-8");
  get(from, "WriteText", {t("\xE4\xBD\xA0\xE5\xA5\xBDx")});
  let(from, "Position", {n(0)});
  get(from, "CopyTo", {same, n(1)});
  get(from, "CopyTo", {other, n(1)});
  let(same, "Position", {n(0)});
  let(other, "Position", {n(0)});
  EXPECT_EQ(text_of(get(same, "ReadText")), "\xE4\xBD\xA0");
  EXPECT_EQ(text_of(get(other, "ReadText")), "\xE5\xA5\xBD");
  EXPECT_EQ(text_of(get(from, "ReadText")), "x");
}

TEST_F(StreamTest, EachTypeHasItsOwnWaysInAndOut) {
  const Value binary = stream(1);
  EXPECT_EQ(error_number([&] { get(binary, "Write", {t("text")}); }), 3001);
  EXPECT_EQ(error_number([&] { get(binary, "Write", {n(1)}); }), 3001);
  EXPECT_EQ(text_of(get(binary, "Size")), "0");
  EXPECT_EQ(error_number([&] { get(binary, "WriteText", {t("text")}); }), 3219);
  EXPECT_EQ(error_number([&] { get(binary, "ReadText"); }), 3219);
  EXPECT_EQ(error_number([&] { get(binary, "SkipLine"); }), 3219);
  const Value text = stream(2);
  EXPECT_EQ(error_number([&] { get(text, "Write", {bytes("b")}); }), 3219);
  EXPECT_EQ(error_number([&] { get(text, "Read"); }), 3219);
}

TEST_F(StreamTest, AmountsAndOptionsThatAreNoneAreRefused) {
  const Value binary = stream(1);
  const Value text = stream(2);
  EXPECT_EQ(error_number([&] { get(binary, "Read", {n(-2)}); }), 3001);
  EXPECT_EQ(error_number([&] { get(binary, "CopyTo", {text, n(-2)}); }), 3001);
  EXPECT_EQ(error_number([&] { get(text, "ReadText", {n(-3)}); }), 3001);
  EXPECT_EQ(error_number([&] { get(text, "WriteText", {t("a"), n(2)}); }), 3001);
  EXPECT_EQ(error_number([&] { let(text, "LineSeparator", {n(11)}); }), 3001);
  EXPECT_EQ(error_number([&] { let(text, "Type", {n(3)}); }), 3001);
  EXPECT_EQ(error_number([&] { let(text, "Position", {n(-1)}); }), 3001);
}

TEST_F(StreamTest, APlacePastTheEndFillsUpWithZerosAndTheEndIsSetAnywhere) {
  const Value s = stream(1);
  get(s, "Write", {bytes("ab")});
  let(s, "Position", {n(4)});
  EXPECT_EQ(text_of(get(s, "Size")), "4");
  let(s, "Position", {n(1)});
  EXPECT_EQ(get(s, "Read").as_array().bytes(), std::string("b\0\0", 3));
  let(s, "Position", {n(1)});
  get(s, "SetEOS");
  EXPECT_EQ(text_of(get(s, "Size")), "1");
  EXPECT_TRUE(get(s, "EOS").as_boolean());
}

TEST_F(StreamTest, LinesAreSkippedAndWrittenByTheSeparator) {
  const Value s = stream(2, "iso-8859-1");
  let(s, "LineSeparator", {n(10)});
  get(s, "WriteText", {t("one"), n(1)});
  get(s, "WriteText", {t("two")});
  let(s, "Position", {n(0)});
  get(s, "SkipLine");
  EXPECT_EQ(text_of(get(s, "Position")), "4");
  EXPECT_EQ(text_of(get(s, "ReadText", {n(-2)})), "two");
}

TEST_F(StreamTest, ModeAndStateAreThoseOfAnOpenStream) {
  const Value s = stream(1);
  EXPECT_EQ(text_of(get(s, "State")), "1");
  EXPECT_EQ(error_number([&] { let(s, "Mode", {n(3)}); }), 3705);
  EXPECT_EQ(error_number([&] { get(s, "Open"); }), 3705);
  get(s, "Flush");
  get(s, "Cancel");
  get(s, "Close");
  EXPECT_EQ(text_of(get(s, "State")), "0");
  let(s, "Mode", {n(3)});
  EXPECT_EQ(text_of(get(s, "Mode")), "3");
}

TEST_F(StreamTest, AClosedStreamSaysSo) {
  const Value s = stream(1);
  get(s, "Close");
  EXPECT_EQ(error_number([&] { get(s, "Size"); }), 3704);
  EXPECT_EQ(error_number([&] { let(s, "Charset", {t("klingon")}); }), 3001);
}

}  // namespace
}  // namespace rk::pagehost
