#include "pagehost/http/ip_address.h"

#include <gtest/gtest.h>

namespace rk::http {
namespace {

TEST(IpAddress, TellsTheTwoKindsFromNames) {
  EXPECT_TRUE(is_ipv4_address("127.0.0.1"));
  EXPECT_FALSE(is_ipv4_address("127.0.1"));
  EXPECT_FALSE(is_ipv4_address("::1"));
  EXPECT_TRUE(is_ipv6_address("::1"));
  EXPECT_FALSE(is_ipv6_address("127.0.0.1"));
  EXPECT_FALSE(is_ipv6_address("localhost"));
}

}  // namespace
}  // namespace rk::http
