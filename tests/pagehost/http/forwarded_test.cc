#include "pagehost/http/forwarded.h"

#include <gtest/gtest.h>

#include <string>

namespace rk::http {
namespace {

// A request that came from `from` with these fields, seen behind the proxies 10.0.0.0/8 and ::1 as
// "ADDRESS SCHEME HOST PORT".
std::string seen(std::string from, pagehost::Headers fields) {
  pagehost::PageRequest request;
  request.remote_address = std::move(from);
  request.local_port = 8080;
  request.headers = {{"Host", "inside:8080"}};
  request.headers.insert(request.headers.end(), fields.begin(), fields.end());
  believe_proxy(request, {*parse_network("10.0.0.0/8"), *parse_network("::1")});
  return request.remote_address + (request.secure ? " https " : " http ") +
         std::string(request.header("host")) + " " + std::to_string(request.local_port);
}

TEST(Forwarded, AStrangerIsNotBelieved) {
  EXPECT_EQ(seen("192.0.2.7", {{"X-Forwarded-For", "198.51.100.1"},
                               {"X-Forwarded-Proto", "https"},
                               {"X-Forwarded-Host", "shop.example"}}),
            "192.0.2.7 http inside:8080 8080");
}

TEST(Forwarded, ANamedProxyTellsAddressSchemeAndHost) {
  EXPECT_EQ(seen("10.1.2.3", {{"x-forwarded-for", "198.51.100.1"},
                              {"X-Forwarded-Proto", "https"},
                              {"X-Forwarded-Host", "shop.example"}}),
            "198.51.100.1 https shop.example 443");
  EXPECT_EQ(seen("::1", {{"X-Forwarded-For", "2001:db8::5"}}), "2001:db8::5 http inside:8080 8080");
  EXPECT_EQ(seen("::ffff:10.0.0.1", {{"X-Forwarded-Host", "shop.example:8443"}}),
            "::ffff:10.0.0.1 http shop.example:8443 8443");
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-Proto", "HTTP"}, {"X-Forwarded-Host", "a.example"}}),
            "10.1.2.3 http a.example 80");
}

TEST(Forwarded, TheLastAddressThatIsNoProxysCounts) {
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-For", "127.0.0.1, 198.51.100.1"}}),
            "198.51.100.1 http inside:8080 8080");
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-For", "1.1.1.1, 198.51.100.1 , 10.9.9.9"}}),
            "198.51.100.1 http inside:8080 8080");
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-For", "1.1.1.1"}, {"X-Forwarded-For", "2.2.2.2"}}),
            "2.2.2.2 http inside:8080 8080");
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-For", "10.5.5.5, 10.6.6.6"}}),
            "10.5.5.5 http inside:8080 8080")
      << "a visitor of one's own network";
}

TEST(Forwarded, APortBehindAnAddressIsLeftOut) {
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-For", "198.51.100.1:4711"}}),
            "198.51.100.1 http inside:8080 8080");
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-For", "[2001:db8::5]:4711"}}),
            "2001:db8::5 http inside:8080 8080");
}

TEST(Forwarded, WhatIsNoValueChangesNothing) {
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-For", "unknown"},
                              {"X-Forwarded-Proto", "gopher"},
                              {"X-Forwarded-Host", "a/b"}}),
            "10.1.2.3 http inside:8080 8080");
  EXPECT_EQ(seen("10.1.2.3",
                 {{"X-Forwarded-For", ""}, {"X-Forwarded-Proto", ""}, {"X-Forwarded-Host", ""}}),
            "10.1.2.3 http inside:8080 8080");
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-For", "9.9.9.9, <script>, 10.7.7.7"}}),
            "10.7.7.7 http inside:8080 8080");
}

TEST(Forwarded, OfSchemeAndHostTheNearestProxysWordCounts) {
  EXPECT_EQ(seen("10.1.2.3", {{"X-Forwarded-Proto", "http, https"},
                              {"X-Forwarded-Host", "evil.example, shop.example"}}),
            "10.1.2.3 https shop.example 443");
}

}  // namespace
}  // namespace rk::http
