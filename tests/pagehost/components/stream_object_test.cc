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

TEST_F(StreamTest, AClosedStreamSaysSo) {
  const Value s = stream(1);
  get(s, "Close");
  EXPECT_EQ(error_number([&] { get(s, "Size"); }), 3704);
  EXPECT_EQ(error_number([&] { let(s, "Charset", {t("klingon")}); }), 3001);
}

}  // namespace
}  // namespace rk::pagehost
