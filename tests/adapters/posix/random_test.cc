#include "adapters/posix/random.h"

#include <gtest/gtest.h>

#include <array>

namespace rk::posix {
namespace {

TEST(SystemRandom, FractionsLieFromZeroToBelowOneAndSpread) {
  SystemRandom random;
  std::array<int, 10> tenths{};
  for (int i = 0; i < 10000; ++i) {
    const double x = random.fraction();
    ASSERT_GE(x, 0.0);
    ASSERT_LT(x, 1.0);
    ++tenths[static_cast<std::size_t>(x * 10)];
  }
  for (const int count : tenths) EXPECT_NEAR(count, 1000, 250);
}

TEST(SystemRandom, TwoSourcesDoNotRepeatEachOther) {
  SystemRandom first;
  SystemRandom second;
  EXPECT_NE(first.fraction(), second.fraction());
  std::array<std::uint8_t, 16> a{};
  std::array<std::uint8_t, 16> b{};
  first.secret_bytes(a);
  first.secret_bytes(b);
  EXPECT_NE(a, b);
}

}  // namespace
}  // namespace rk::posix
