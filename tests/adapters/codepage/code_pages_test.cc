#include "adapters/codepage/code_pages.h"

#include <gtest/gtest.h>

namespace rk::codepage {
namespace {

class CodePagesTest : public ::testing::Test {
 protected:
  std::string to(std::string_view bytes, int page) { return pages_.to_utf8(bytes, page, &bad_); }
  std::string from(std::string_view utf8, int page) { return pages_.from_utf8(utf8, page); }

  IcuCodePages pages_;
  std::optional<std::size_t> bad_;
};

TEST_F(CodePagesTest, SupportsTheWindowsPagesAndUtf8Only) {
  for (const int page :
       {65001, 874, 932, 936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258}) {
    EXPECT_TRUE(pages_.supports(page)) << page;
  }
  EXPECT_FALSE(pages_.supports(0));
  EXPECT_FALSE(pages_.supports(437));
  EXPECT_FALSE(pages_.supports(54936));
}

struct Sample {
  int page;
  const char* bytes;
  const char* utf8;
};

TEST_F(CodePagesTest, KnownCharactersGoBothWaysInEveryPage) {
  const Sample samples[] = {
      {936, "\xD6\xD0\xB9\xFA", "中国"},
      {936, "\x80", "€"},
      {936, "\xA1\xA4", "·"},
      {936, "\xA1\xAA", "—"},
      {936, "\x81\x40", "丂"},
      {936, "\xE5\x7C", "鍇"},
      {932, "\x93\xFA\x96\x7B", "日本"},
      {932, "\xB1", "ｱ"},
      {932, "\x81\x60", "～"},
      {949, "\xC7\xD1\xB1\xDB", "한글"},
      {950, "\xA4\xA4\xA4\xE5", "中文"},
      {874, "\xA1\x80", "ก€"},
      {1250, "\x8A\xF8", "Šř"},
      {1251, "\xCF\xF0\xB8", "Прё"},
      {1252, "\x80\xE9\x93", "€é“"},
      {1253, "\xC1\xF9", "Αω"},
      {1254, "\xDD\xF0", "İğ"},
      {1255, "\xF9\xEC\xA4", "של₪"},
      {1256, "\xC8\xE3\x81", "بمپ"},
      {1257, "\xD0\xFE", "Šž"},
      {1258, "\xD0\xFE", "Đ₫"},
  };
  for (const Sample& sample : samples) {
    EXPECT_EQ(to(sample.bytes, sample.page), sample.utf8) << sample.page;
    EXPECT_FALSE(bad_) << sample.page;
    EXPECT_EQ(from(sample.utf8, sample.page), sample.bytes) << sample.page;
  }
}

TEST_F(CodePagesTest, AsciiIsItselfInEveryPage) {
  std::string ascii;
  for (char c = 1; c < 127; ++c) ascii.push_back(c);
  for (const int page : {65001, 874, 932, 936, 949, 950, 1250, 1258}) {
    EXPECT_EQ(to(ascii + "\xC0", page).substr(0, ascii.size()), ascii) << page;
    EXPECT_EQ(from(ascii + "é", page).substr(0, ascii.size()), ascii) << page;
  }
}

TEST_F(CodePagesTest, BytesWithoutACharacterReadAsTheReplacementAndTheFirstIsTold) {
  EXPECT_EQ(to("ab\xFF"
               "c\xFF",
               936),
            "ab\xEF\xBF\xBD"
            "c\xEF\xBF\xBD");
  EXPECT_EQ(bad_, 2u);
  EXPECT_EQ(to("ok", 936), "ok");
  EXPECT_FALSE(bad_);
}

TEST_F(CodePagesTest, AFirstByteNeverSwallowsTheAsciiCharacterBehindIt) {
  EXPECT_EQ(to("\xD6<b>", 936), "\xEF\xBF\xBD<b>");
  EXPECT_EQ(to("\xD6\"", 936), "\xEF\xBF\xBD\"");
  EXPECT_EQ(to("\xD6", 936), "\xEF\xBF\xBD");
}

TEST_F(CodePagesTest, CharactersThatThePageLacksBecomeQuestionMarks) {
  EXPECT_EQ(from("a한b", 1252), "a?b");
  EXPECT_EQ(from("a😀b", 936), "a?b");
  EXPECT_EQ(from("a\xED\xA0\x80"
                 "b",
                 936),
            "a?b");
}

TEST_F(CodePagesTest, Utf8PassesAsItIsAndItsBadBytesAreReplaced) {
  EXPECT_EQ(to("中😀", 65001), "中😀");
  EXPECT_FALSE(bad_);
  EXPECT_EQ(to("a\xC0\xAF"
               "b",
               65001),
            "a\xEF\xBF\xBD\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(bad_, 1u);
  EXPECT_EQ(to("a\xE4\xB8"
               "b",
               65001),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(to("\xF0\x9F\x98", 65001), "\xEF\xBF\xBD");
  EXPECT_EQ(from("x\xED\xA0\x80y", 65001), "x\xEF\xBF\xBDy");
}

}  // namespace
}  // namespace rk::codepage
