#include "services/digest.h"

#include <gtest/gtest.h>

#include <random>
#include <string_view>
#include <vector>

#include "tests/plain/digest.h"
#include "tests/support/toy_code_pages.h"

namespace rk::services {
namespace {

std::string digest_of(std::string_view ascii) {
  return md5(std::vector<std::int16_t>(ascii.begin(), ascii.end()));
}

TEST(Digest, GivesThePublishedValuesInUpperCase) {
  EXPECT_EQ(digest_of(""), "D41D8CD98F00B204E9800998ECF8427E");
  EXPECT_EQ(digest_of("a"), "0CC175B9C0F1B6A831C399E269772661");
  EXPECT_EQ(digest_of("abc"), "900150983CD24FB0D6963F7D28E17F72");
  EXPECT_EQ(digest_of("message digest"), "F96B697D7CB7938D525A2F31AAF161D0");
  EXPECT_EQ(digest_of("abcdefghijklmnopqrstuvwxyz"), "C3FCD3D76192E4007DFB496CCA67E13B");
  EXPECT_EQ(digest_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
            "D174AB98D277D9F5A5611C2C9F419D9F");
  EXPECT_EQ(digest_of("123456789012345678901234567890123456789012345678901234567890123456789012345"
                      "67890"),
            "57EDF4A22BE3C955AC49DA2E2107B67A");
}

TEST(Digest, PadsAtEveryLengthAroundABlock) {
  // A digest depends on every character, so neighbours in length differ.
  std::string last;
  for (std::size_t length = 50; length < 70; ++length) {
    const std::string digest = digest_of(std::string(length, 'x'));
    EXPECT_EQ(digest.size(), 32u);
    EXPECT_NE(digest, last);
    last = digest;
  }
}

TEST(Digest, KeepsTheHighBitsOfADoubleByteCharacterInThePlacesBehindIt) {
  // 0xD6D0 as a signed number sets every bit above its place, so the two ASCII letters behind it
  // leave no trace in the first word.
  const std::vector<std::int16_t> one = {static_cast<std::int16_t>(0xD6D0), 'a', 'b'};
  const std::vector<std::int16_t> other = {static_cast<std::int16_t>(0xD6D0), 'c', 'd'};
  EXPECT_EQ(md5(one), md5(other));
  EXPECT_NE(md5(one), digest_of("\xD6\xD0"));
}

TEST(Digest, AgreesWithThePlainOneOnRandomChineseTexts) {
  std::mt19937 random(20261121);
  const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  for (int i = 0; i < 3000; ++i) {
    std::vector<std::int16_t> codes;
    for (std::size_t length = below(140); length > 0; --length) {
      const unsigned lead = 0xB0 + below(0x48);
      const unsigned trail = 0xA1 + below(0x5E);
      const unsigned kind = below(8);
      const unsigned code = kind == 0   ? 0x20 + below(0x5F)  // ASCII
                            : kind == 1 ? below(0x10000)      // anything
                                        : lead * 256 + trail;
      codes.push_back(static_cast<std::int16_t>(code));
    }
    ASSERT_EQ(md5(codes), tests::plain::md5(codes)) << "text " << i;
  }
}

TEST(Digest, PacksTheCodesOfTheAnsiCodePage) {
  const tests::ToyCodePages code_pages;
  const std::vector<std::int16_t> codes = {
      static_cast<std::int16_t>(0xD6D0), 'a', static_cast<std::int16_t>(0xCEC4), '?', '?', '?'};
  EXPECT_EQ(md5("中a文é😀", code_pages, platform::kGb2312), md5(codes))
      << "what the code page lacks counts as a question mark, a pair of halves as two";
}

TEST(MailPass, KeepsOnePasswordForEveryInput) {
  Value first = Value::text("one");
  Value second = Value::long_integer(2);
  EXPECT_EQ(mailpass(first).as_view(), "98ecf8427e");
  EXPECT_EQ(mailpass(second).as_view(), "98ecf8427e");
}

TEST(MailPass, WritesTheResultIntoTheCallersVariable) {
  Value input = Value::text("one");
  mailpass(input);
  EXPECT_EQ(input.as_view(), "98ecf8427e");
}

}  // namespace
}  // namespace rk::services
