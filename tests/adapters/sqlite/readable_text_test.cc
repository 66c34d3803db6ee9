#include "adapters/sqlite/readable_text.h"

#include <gtest/gtest.h>

#include <random>

#include "value/text.h"

namespace rk::sqlite {
namespace {

std::string repaired(std::string_view bytes) {
  std::string out;
  append_repaired(out, bytes);
  return out;
}

TEST(ReadableText, BytesOfNoCharacterBecomeReplacements) {
  EXPECT_EQ(repaired("a\xFF"
                     "b"),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(repaired("\xE4\xB8"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(repaired("\xC0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(repaired("\xE4\xB8\xAD\xF0\x9F\x98\x80"), "\xE4\xB8\xAD\xF0\x9F\x98\x80");
}

TEST(ReadableText, TheFastLookSaysWhatThePlainOneSays) {
  std::mt19937 random(7);
  const std::string_view pieces[] = {"a",
                                     "plain ascii",
                                     "\xC3\xA9",
                                     "\xE4\xB8\xAD",
                                     "\xED\xA0\x80",
                                     "\xF0\x9F\x98\x80",
                                     "\xE0\x80\x80",
                                     "\xFF",
                                     "\x80",
                                     "\xE4\xB8",
                                     "\xC1",
                                     "\xF5\x80\x80\x80",
                                     "\xE0\xA0\x80",
                                     "\xEF\xBF\xBF"};
  int readable = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    const auto count = random() % 9;
    for (std::size_t j = 0; j < count; ++j) {
      text += pieces[random() % (random() % 3 == 0 ? std::size(pieces) : 4)];
    }
    ASSERT_EQ(is_readable(text), is_valid_utf8(text)) << i;
    ASSERT_TRUE(is_valid_utf8(repaired(text)));
    if (is_readable(text)) {
      ++readable;
      ASSERT_EQ(repaired(text), text);
    }
  }
  EXPECT_GT(readable, 1000);
}

}  // namespace
}  // namespace rk::sqlite
