#include "adapters/posix/clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>

namespace rk::posix {
namespace {

TEST(PosixClock, NowIsTheLocalTimeOfTheChosenZone) {
  const PosixClock clock;
  ASSERT_TRUE(choose_time_zone("UTC"));
  const double utc = 25569.0 + static_cast<double>(std::time(nullptr)) / 86400.0;
  EXPECT_NEAR(clock.now(), utc, 2.0 / 86400.0);
  ASSERT_TRUE(choose_time_zone("Asia/Shanghai"));
  EXPECT_NEAR(PosixClock().now(), utc + 8.0 / 24.0, 2.0 / 86400.0);
}

TEST(PosixClock, AZoneThatNobodyKnowsIsRefused) {
  EXPECT_FALSE(choose_time_zone("Mars/Olympus"));
  EXPECT_FALSE(choose_time_zone(""));
  EXPECT_FALSE(choose_time_zone("../zoneinfo/UTC"));
  EXPECT_FALSE(choose_time_zone("/usr/share/zoneinfo/UTC"));
  EXPECT_FALSE(choose_time_zone("Asia"));
}

TEST(PosixClock, SteadyTimeNeverGoesBack) {
  const PosixClock clock;
  const auto first = clock.steady();
  EXPECT_LE(first, clock.steady());
}

}  // namespace
}  // namespace rk::posix
