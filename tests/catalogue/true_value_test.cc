#include "catalogue/true_value.h"

#include <gtest/gtest.h>

namespace rk::catalogue {
namespace {

TEST(TrueValue, IsWhatComparesEqualToTrue) {
  EXPECT_TRUE(is_true(Value::boolean(true)));
  EXPECT_TRUE(is_true(Value::long_integer(-1)));
  EXPECT_TRUE(is_true(Value::text("True")));
  EXPECT_FALSE(is_true(Value::boolean(false)));
  EXPECT_FALSE(is_true(Value::long_integer(1)));
  EXPECT_FALSE(is_true(Value::text("1")));
  EXPECT_FALSE(is_true(Value::null()));
  EXPECT_FALSE(is_true(Value()));
}

}  // namespace
}  // namespace rk::catalogue
