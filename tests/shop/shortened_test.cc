#include "shop/shortened.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::shop {
namespace {

using tests::error_of;
using tests::number;
using tests::text;

TEST(Shortened, CountsSixteenBitUnits) {
  EXPECT_FALSE(longer_than(text("虚拟主机"), number(4)));
  EXPECT_TRUE(longer_than(text("虚拟主机😀"), text("5")));
  EXPECT_TRUE(at_least(text("虚拟主机"), number(4)));
  EXPECT_EQ(first_units(text("虚拟主机"), text("2")).view(), "虚拟");
}

TEST(Shortened, ANullTitleIsNeverTooLong) {
  EXPECT_FALSE(longer_than(Value::null(), number(0)));
  EXPECT_FALSE(at_least(Value::null(), number(0)));
  EXPECT_EQ(first_units(Value::null(), number(3)).view(), "");
}

TEST(Shortened, ALengthThatIsNoneRaises) {
  EXPECT_EQ(error_of([] { longer_than(text("a"), text("x")); }), 13);
  EXPECT_EQ(error_of([] { first_units(text("a"), number(-1)); }), 5);
}

}  // namespace
}  // namespace rk::shop
