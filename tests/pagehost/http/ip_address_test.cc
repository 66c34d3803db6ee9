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

bool holds(std::string_view network, std::string_view address) {
  const auto parsed = parse_network(network);
  return parsed && contains(*parsed, address);
}

TEST(IpAddress, ANetworkHoldsTheAddressesThatBeginAsItDoes) {
  EXPECT_TRUE(holds("10.0.0.1", "10.0.0.1"));
  EXPECT_FALSE(holds("10.0.0.1", "10.0.0.2"));
  EXPECT_TRUE(holds("10.0.0.0/8", "10.200.3.4"));
  EXPECT_FALSE(holds("10.0.0.0/8", "11.0.0.1"));
  EXPECT_TRUE(holds("192.168.16.0/20", "192.168.31.255"));
  EXPECT_FALSE(holds("192.168.16.0/20", "192.168.32.0"));
  EXPECT_TRUE(holds("0.0.0.0/0", "203.0.113.9"));
  EXPECT_FALSE(holds("0.0.0.0/0", "2001:db8::1"));
  EXPECT_TRUE(holds("::/0", "203.0.113.9"));
  EXPECT_TRUE(holds("fd00::/8", "fd12:3456::1"));
  EXPECT_FALSE(holds("fd00::/8", "fe80::1"));
  EXPECT_TRUE(holds("10.0.0.1", "::ffff:10.0.0.1")) << "as a socket of version 6 names it";
}

TEST(IpAddress, WhatIsNoNetworkIsNone) {
  for (const char* text : {"", "/", "10.0.0", "10.0.0.0/33", "10.0.0.0/-1", "10.0.0.0/", "::/129",
                           "10.0.0.0/8x", "localhost", "10.0.0.0/8/8", "[::1]"}) {
    EXPECT_FALSE(parse_network(text)) << text;
  }
  EXPECT_FALSE(contains(*parse_network("::/0"), "nobody"));
}

}  // namespace
}  // namespace rk::http
