#include "site/trapped.h"

#include <gtest/gtest.h>

#include "platform/page.h"

namespace rk::site {
namespace {

TEST(Trapped, AnswersTheErrorOfAStepThatFails) {
  const auto failure = trapped([] { raise(errors::kFileNotFound); });
  ASSERT_TRUE(failure.has_value());
  EXPECT_EQ(failure->number(), 53);
}

TEST(Trapped, AnswersNothingForAStepThatSucceeds) {
  bool ran = false;
  EXPECT_FALSE(trapped([&] { ran = true; }).has_value());
  EXPECT_TRUE(ran);
}

TEST(Trapped, LetsTheEndOfAPageThrough) {
  EXPECT_THROW(trapped([] { throw platform::PageEnd{}; }), platform::PageEnd);
}

}  // namespace
}  // namespace rk::site
