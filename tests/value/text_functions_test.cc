#include "value/text_functions.h"

#include <gtest/gtest.h>

namespace rk {
namespace {

constexpr std::size_t kAll = static_cast<std::size_t>(-1);

std::string joined(const std::vector<Value>& parts) {
  std::string text;
  for (const Value& part : parts) text.append("[").append(part.as_view()).append("]");
  return text;
}

TEST(TextFunctions, LetterCaseBeyondAscii) {
  EXPECT_EQ(lower_case("ÄÉ Ω Ж Ａ 中"), "äé ω ж ａ 中");
  EXPECT_EQ(upper_case("äéÿ ω ж ａ 中"), "ÄÉŸ Ω Ж Ａ 中");
}

TEST(TextFunctions, LetterCaseKeepsTheLengthInBytes) {
  for (char32_t point = 0x80; point < 0xFFFF; ++point) {
    if (point >= 0xD800 && point < 0xE000) continue;
    std::string text;
    if (point < 0x800) {
      text += static_cast<char>(0xC0 | point >> 6);
    } else {
      text += static_cast<char>(0xE0 | point >> 12);
      text += static_cast<char>(0x80 | (point >> 6 & 0x3F));
    }
    text += static_cast<char>(0x80 | (point & 0x3F));
    ASSERT_EQ(lower_case(text).size(), text.size()) << std::hex << static_cast<int>(point);
    ASSERT_EQ(upper_case(text).size(), text.size()) << std::hex << static_cast<int>(point);
    ASSERT_EQ(lower_case(upper_case(lower_case(text))), lower_case(text));
  }
}

TEST(TextFunctions, ReplacesFromTheLeftWithoutOverlap) {
  EXPECT_EQ(replaced_text("aaa", "aa", "b", kAll, Letters::Exact).view(), "ba");
  EXPECT_EQ(replaced_text("aAa", "a", "b", 2, Letters::AnyCase).view(), "bba");
  EXPECT_EQ(replaced_text("abc", "", "x", kAll, Letters::Exact).view(), "abc");
}

TEST(TextFunctions, SplitsKeepingTheRestInTheLastPart) {
  EXPECT_EQ(joined(split_text("a,b,c", ",", 2, Letters::Exact)), "[a][b,c]");
  EXPECT_EQ(joined(split_text(",", ",", kAll, Letters::Exact)), "[][]");
  EXPECT_EQ(joined(split_text("abc", "", kAll, Letters::Exact)), "[abc]");
  EXPECT_EQ(joined(split_text("1x2X3", "x", kAll, Letters::AnyCase)), "[1][2][3]");
  EXPECT_EQ(joined(split_text("a,b", ",", 0, Letters::Exact)), "");
}

TEST(TextFunctions, FindsTheLastPlaceBeforeAnEnd) {
  EXPECT_EQ(find_last_text("abab", "ab", 4, Letters::Exact), 2U);
  EXPECT_EQ(find_last_text("abab", "ab", 3, Letters::Exact), 0U);
  EXPECT_EQ(find_last_text("ab", "abc", 2, Letters::Exact), std::string_view::npos);
}

TEST(TextFunctions, TrimsBlanksOnly) {
  EXPECT_EQ(without_leading_blanks("  \ta"), "\ta");
  EXPECT_EQ(without_trailing_blanks("a\t  "), "a\t");
  EXPECT_EQ(without_leading_blanks("   "), "");
}

TEST(TextFunctions, JoinsHalvesSideBySide) {
  std::string text = "a\xED\xA0\xBD\xED\xB8\x80\xED\xA0\xBD";
  join_halves(text);
  EXPECT_EQ(text, "a\xF0\x9F\x98\x80\xED\xA0\xBD");
}

TEST(TextFunctions, ReversesCharacters) {
  EXPECT_EQ(reversed_text("a中b"), "b中a");
}

}  // namespace
}  // namespace rk
