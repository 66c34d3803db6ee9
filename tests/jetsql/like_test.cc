#include "jetsql/like.h"

#include <gtest/gtest.h>

#include <string>

namespace rk::jetsql {
namespace {

struct Case {
  const char* text;
  const char* pattern;
  bool matches;
};

TEST(Like, FollowsItsTable) {
  const Case cases[] = {
      {"", "", true},
      {"a", "", false},
      {"", "a", false},
      {"", "%", true},
      {"", "%%", true},
      {"abc", "%", true},
      {"abc", "abc", true},
      {"ABC", "abc", true},
      {"abc", "ABC", true},
      {"abc", "a%", true},
      {"abc", "%c", true},
      {"abc", "%b%", true},
      {"abc", "%d%", false},
      {"abc", "a_c", true},
      {"abc", "__", false},
      {"abc", "___", true},
      {"abc", "____", false},
      {"abc", "%_", true},
      {"", "_", false},
      {"abc", "[a-c]bc", true},
      {"dbc", "[a-c]bc", false},
      {"Bbc", "[a-c]bc", true},
      {"abc", "[!a-c]bc", false},
      {"dbc", "[!a-c]bc", true},
      {"abc", "[xyza]bc", true},
      {"a-c", "a[-x]c", true},
      {"a-c", "a[x-]c", true},
      {"a%c", "a[%]c", true},
      {"abc", "a[%]c", false},
      {"a_c", "a[_]c", true},
      {"a[c", "a[[]c", true},
      {"ac", "a[]c", true},
      {"abc", "a[]c", false},
      {"a!c", "a[!]c", true},
      {"abc", "a[c-a]c", false},
      {"a[c", "a[c", true},
      {"a[", "a[", true},
      {"x[y", "%[%", true},
      {"a]c", "a]c", true},
      {"a*c", "a*c", true},
      {"abc", "a*c", false},
      {"a?c", "a?c", true},
      {"abc", "a?c", false},
      {"a1c", "a#c", false},
      {"a#c", "a#c", true},
      {"aXbXc", "a%b%c", true},
      {"aab", "%ab", true},
      {"aaab", "%aab", true},
      {"abab", "%ab", true},
      {"ababc", "%ab", false},
      {"mississippi", "m%iss%ip%i", true},
      {"a1", "a[0-9]", true},
      {"a12", "a[0-9][0-9]", true},
      {"ax", "a[0-9]", false},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(is_like(one.text, one.pattern), one.matches) << one.text << " Like " << one.pattern;
  }
}

TEST(Like, CountsCharactersNotBytes) {
  EXPECT_TRUE(is_like("苹果", "__"));
  EXPECT_FALSE(is_like("苹果", "___"));
  EXPECT_TRUE(is_like("苹果派", "%果%"));
  EXPECT_TRUE(is_like("果", "[一-龥]"));
  EXPECT_FALSE(is_like("a", "[一-龥]"));
  EXPECT_TRUE(is_like("😀", "_"));
}

TEST(Like, TakesOtherLettersByTheirCase) {
  EXPECT_TRUE(is_like("Ä", "Ä"));
  EXPECT_FALSE(is_like("Ä", "ä"));
}

TEST(Like, TakesBytesThatAreNoText) {
  EXPECT_TRUE(is_like("a\xFFz", "a_z"));
  EXPECT_TRUE(is_like("a\xFFz", "a\xFFz"));
  EXPECT_FALSE(is_like("a\xFEz", "a\xFFz"));
  EXPECT_TRUE(is_like(std::string_view("a\0b", 3), std::string_view("a\0b", 3)));
}

// A pattern of many "%" costs the product of the two lengths, not a power of it.
TEST(Like, EndsOnAPatternMadeToTakeForever) {
  const std::string text(3000, 'a');
  std::string pattern;
  for (int i = 0; i < 1000; ++i) pattern += "%a";
  EXPECT_FALSE(is_like(text, pattern + "%b"));
  EXPECT_TRUE(is_like(text, pattern + "%"));
}

}  // namespace
}  // namespace rk::jetsql
