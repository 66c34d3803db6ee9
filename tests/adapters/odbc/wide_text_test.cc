#include "adapters/odbc/wide_text.h"

#include <gtest/gtest.h>

namespace rk::odbc {
namespace {

TEST(WideText, GoesThereAndBack) {
  const std::string text = "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80";
  const std::vector<WideUnit> wide = widen(text);
  ASSERT_EQ(wide.size(), 6u);
  EXPECT_EQ(wide.back(), 0);
  EXPECT_EQ(narrow(wide.data(), 5), text);
}

TEST(WideText, ACharacterThatTwoPiecesPartIsJoined) {
  const std::vector<WideUnit> wide = widen("\xF0\x9F\x98\x80");
  std::string out;
  append_narrow(out, wide.data(), 1);
  append_narrow(out, wide.data() + 1, 1);
  EXPECT_EQ(out, "\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace rk::odbc
