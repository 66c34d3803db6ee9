#include "adapters/sqlite/lru.h"

#include <gtest/gtest.h>

namespace rk::sqlite {
namespace {

TEST(Lru, ForgetsWhatWasNotUsedForTheLongestTime) {
  Lru<int> kept(3);
  kept.put("a", 1);
  kept.put("b", 2);
  kept.put("c", 3);
  ASSERT_NE(kept.find("a"), nullptr);
  kept.put("d", 4);
  EXPECT_EQ(kept.find("b"), nullptr);
  EXPECT_EQ(*kept.find("a"), 1);
  EXPECT_EQ(*kept.find("c"), 3);
  EXPECT_EQ(*kept.find("d"), 4);
  EXPECT_EQ(kept.size(), 3u);
}

TEST(Lru, ClearForgetsAll) {
  Lru<int> kept(2);
  kept.put("a", 1);
  kept.clear();
  EXPECT_EQ(kept.find("a"), nullptr);
  kept.put("a", 2);
  EXPECT_EQ(*kept.find("a"), 2);
}

}  // namespace
}  // namespace rk::sqlite
