#include "pagehost/pages/name_values.h"

#include <gtest/gtest.h>

#include "tests/support/toy_code_pages.h"

namespace rk::pagehost {
namespace {

class NamesAndValues : public ::testing::Test {
 protected:
  NameValues form(std::string_view text) { return parsed_form(text, platform::kUtf8, pages_); }
  std::vector<CookieText> cookies(std::string_view header) {
    return parsed_cookies(header, platform::kUtf8, pages_);
  }
  tests::ToyCodePages pages_;
};

TEST_F(NamesAndValues, ANameOfSeveralValuesJoinsThemInOrder) {
  const NameValues values = form("Id=1&x=2&ID=3");
  ASSERT_EQ(values.entries().size(), 2u);
  EXPECT_EQ(values.find("id")->joined(), "1, 3");
  EXPECT_EQ(values.entries()[0].name, "Id");
}

TEST_F(NamesAndValues, APartWithoutEqualsHasNoName) {
  EXPECT_EQ(form("404;http://x/").find("")->joined(), "404;http://x/");
  EXPECT_EQ(form("a=").find("a")->joined(), "");
  EXPECT_EQ(form("&&a=1&").entries().size(), 1u);
}

TEST_F(NamesAndValues, AnUnknownNameIsNotThere) {
  EXPECT_EQ(form("a=1").find("b"), nullptr);
}

TEST_F(NamesAndValues, CookiesAreTrimmedAndTheFirstOfANameStands) {
  const auto found = cookies("a=1; B=x=y&z=2 ;a=3; ; =4; c");
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(found[0].value, "1");
  EXPECT_EQ(found[1].name, "B");
  EXPECT_EQ(found[1].value, "x=y&z=2");
  EXPECT_EQ(found[2].value, "");
}

}  // namespace
}  // namespace rk::pagehost
