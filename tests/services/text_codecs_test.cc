#include "services/text_codecs.h"

#include <gtest/gtest.h>

#include "tests/support/field_object.h"
#include "tests/support/toy_code_pages.h"
#include "value/array.h"

namespace rk::services {
namespace {

constexpr int kAnsi = platform::kGb2312;

std::string decoded_text(std::string_view bytes) {
  return decoded(bytes, tests::ToyCodePages(), kAnsi).string();
}

std::string encoded(std::string_view utf8) {
  return std::string(URLEncodetoUTF8(Value::text(utf8)).as_view());
}

std::string encoded_unit(char16_t unit) {
  const Value text = Value::text(Text::from_units(std::u16string(1, unit)));
  return std::string(URLEncodetoUTF8(text).as_view());
}

TEST(Bytes2Bstr, DecodesAsciiAndPairs) {
  EXPECT_EQ(decoded_text("A\xC4\xE3"
                         "B"),
            "A你B");
}

TEST(Bytes2Bstr, TakesAnyTrailByteIntoItsPair) {
  EXPECT_EQ(decoded_text("\xC4"
                         "A"
                         "B"),
            "\xEF\xBF\xBD"
            "B");
}

TEST(Bytes2Bstr, KeepsTheLastTrailByteForALeadByteAtTheEnd) {
  EXPECT_EQ(decoded_text("\xC4\xE3\xC4"), "你你");
  EXPECT_EQ(decoded_text("\xC4"), "\xEF\xBF\xBD");
}

TEST(Bytes2Bstr, TakesByteArraysAndBytesOfTexts) {
  const tests::ToyCodePages code_pages;
  const Value array = Value::array(Array::of_bytes("\xD6\xD0"));
  EXPECT_EQ(bytes2bstr(array, code_pages, kAnsi).as_view(), "中");
  const Value text = Value::text(Text::from_bytes("\xD6\xD0!"));
  EXPECT_EQ(bytes2bstr(text, code_pages, kAnsi).as_view(), "中!");
}

TEST(Bytes2Bstr, TakesTheValueOfAnObject) {
  const tests::ToyCodePages code_pages;
  const Value array = Value::array(Array::of_bytes("\xD6\xD0"));
  const Value field = Value::object(make_ref<tests::FieldObject>(array));
  EXPECT_EQ(bytes2bstr(field, code_pages, kAnsi).as_view(), "中");
}

TEST(Bytes2Bstr, GivesTheEmptyTextForWhatHasNoBytes) {
  const tests::ToyCodePages code_pages;
  for (const Value& value : {Value(), Value::null(), Value::array(Array::of({})),
                             Value::array(Array::of_bytes("")), Value::nothing()}) {
    const Value text = bytes2bstr(value, code_pages, kAnsi);
    EXPECT_TRUE(text.is_text());
    EXPECT_EQ(text.as_view(), "");
  }
}

TEST(UrlEncode, KeepsLettersDigitsAndThreeMarks) {
  EXPECT_EQ(encoded("a b-c.d_e"), "a%20b-c.d_e");
  EXPECT_EQ(encoded("/"), "%2F");
  EXPECT_EQ(encoded("~"), "%7E");
  EXPECT_EQ(encoded("中"), "%E4%B8%AD");
}

TEST(UrlEncode, KeepsOneDigitForControlCharacters) {
  EXPECT_EQ(encoded("\t"), "%9");
  EXPECT_EQ(encoded("\n"), "%A");
  EXPECT_EQ(encoded_unit(0), "%0");
}

TEST(UrlEncode, KeepsOnePercentSignForTwoByteCharacters) {
  EXPECT_EQ(encoded("é"), "%C3A9");
  EXPECT_EQ(encoded_unit(0x7FF), "%DFBF");
}

TEST(UrlEncode, KeepsTheTwoByteBranchUpToFourThousand) {
  EXPECT_EQ(encoded_unit(0x900), "%E480");
  EXPECT_EQ(encoded_unit(0xFFF), "%FFBF");
  EXPECT_EQ(encoded_unit(0x1000), "%E1%80%80");
}

TEST(UrlEncode, EncodesEachHalfOfAPairByItself) {
  EXPECT_EQ(encoded("😀"), "%ED%A0%BD%ED%B8%80");
}

TEST(UrlEncode, FollowsTheRuleForEveryUnit) {
  const auto hex = [](unsigned n) {
    char text[9];
    std::snprintf(text, sizeof text, "%X", n);
    return std::string(text);
  };
  for (unsigned c = 0; c < 0x10000; ++c) {
    std::string wanted;
    const bool plain = (c >= 65 && c <= 90) || (c >= 97 && c <= 122) || (c >= 48 && c <= 57) ||
                       c == 45 || c == 46 || c == 95;
    if (c < 0x80) {
      wanted = plain ? std::string(1, static_cast<char>(c)) : "%" + hex(c);
    } else if (c < 0x1000) {
      wanted = "%" + hex((c / 64) | 0xC0) + hex((c & 63) | 0x80);
    } else {
      wanted = "%" + hex((c / 4096) | 0xE0) + "%" + hex(((c / 64) & 63) | 0x80) + "%" +
               hex((c & 63) | 0x80);
    }
    ASSERT_EQ(encoded_unit(static_cast<char16_t>(c)), wanted) << c;
  }
}

TEST(UrlEncode, LeavesTheEmptyTextUnchanged) {
  EXPECT_EQ(encoded(""), "");
}

TEST(UrlEncode, RaisesNothing) {
  EXPECT_TRUE(URLEncodetoUTF8(Value::null()).is_empty());
  EXPECT_TRUE(URLEncodetoUTF8(Value::nothing()).is_empty());
}

}  // namespace
}  // namespace rk::services
