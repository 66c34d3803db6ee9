#include "pagehost/components/base64.h"

#include <gtest/gtest.h>

namespace rk::pagehost {
namespace {

TEST(Base64, BytesGoAndComeBack) {
  EXPECT_EQ(base64_text("M"), "TQ==");
  EXPECT_EQ(base64_text("Ma"), "TWE=");
  EXPECT_EQ(base64_text("Man"), "TWFu");
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  for (std::size_t length = 0; length < all.size(); ++length) {
    EXPECT_EQ(base64_bytes(base64_text(all.substr(0, length))), all.substr(0, length));
  }
}

TEST(Base64, LinesAreOf72Characters) {
  const std::string text = base64_text(std::string(100, 'x'));
  EXPECT_EQ(text.find('\n'), 72u);
  EXPECT_EQ(base64_text(std::string(54, 'x')).find('\n'), std::string::npos);
}

TEST(Base64, WhatIsNotOfTheKindIsRefused) {
  for (const char* text : {"T", "T*==", "TQ==TQ=="}) EXPECT_FALSE(base64_bytes(text)) << text;
  EXPECT_EQ(base64_bytes(" T Q\r\n=="), "M");
}

TEST(Base64, HexadecimalTextsHaveTwoDigitsAByte) {
  EXPECT_EQ(hex_text("\x01\xAB"), "01ab");
  EXPECT_EQ(hex_bytes("01 aB"), "\x01\xAB");
  EXPECT_FALSE(hex_bytes("0"));
  EXPECT_FALSE(hex_bytes("0g"));
}

}  // namespace
}  // namespace rk::pagehost
