#include "pagehost/pages/url_text.h"

#include <gtest/gtest.h>

#include "tests/support/toy_code_pages.h"

namespace rk::pagehost {
namespace {

using platform::kGb2312;
using platform::kUtf8;

class UrlText : public ::testing::Test {
 protected:
  tests::ToyCodePages pages_;
};

TEST_F(UrlText, DecodingReadsPlusAndPercents) {
  EXPECT_EQ(url_decoded("a+b%20c%2B", kUtf8, pages_), "a b c+");
  EXPECT_EQ(url_decoded("%E4%BD%A0", kUtf8, pages_), "\xE4\xBD\xA0");
}

TEST_F(UrlText, PercentBytesAreOfTheCodePage) {
  EXPECT_EQ(url_decoded("%C4%E3%BA%C3", kGb2312, pages_), "\xE4\xBD\xA0\xE5\xA5\xBD");
}

TEST_F(UrlText, KeepsTheUnitsOfOldScripts) {
  EXPECT_EQ(url_decoded("%u4F60!", kGb2312, pages_), "\xE4\xBD\xA0!");
  EXPECT_EQ(url_decoded("%ud83d%ude00", kUtf8, pages_), "\xF0\x9F\x98\x80");
}

TEST_F(UrlText, APercentThatBeginsNothingStays) {
  EXPECT_EQ(url_decoded("100%", kUtf8, pages_), "100%");
  EXPECT_EQ(url_decoded("%zz%1", kUtf8, pages_), "%zz%1");
  EXPECT_EQ(url_decoded("%u12", kUtf8, pages_), "%u12");
}

TEST_F(UrlText, EncodingGoesByTheCodePage) {
  EXPECT_EQ(url_encoded("a b&\xE4\xBD\xA0", kUtf8, pages_), "a+b%26%E4%BD%A0");
  EXPECT_EQ(url_encoded("\xE4\xBD\xA0", kGb2312, pages_), "%C4%E3");
  EXPECT_EQ(url_encoded("a-_.", kUtf8, pages_), "a%2D%5F%2E");
}

TEST_F(UrlText, HtmlMarksBecomeReferences) {
  EXPECT_EQ(html_encoded("<a b=\"1\">&'"), "&lt;a b=&quot;1&quot;&gt;&amp;'");
}

TEST_F(UrlText, AnAddressHoldsNoLineEnds) {
  EXPECT_EQ(header_safe_address("/a b\r\nX: 1"), "/a%20b%0D%0AX:%201");
}

}  // namespace
}  // namespace rk::pagehost
