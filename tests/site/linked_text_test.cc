#include "site/linked_text.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/plain/repeat.h"

namespace rk::site {
namespace {

std::string linked(std::string_view text, std::string_view id, std::string_view target) {
  LinkedText all;
  all.append(text);
  EXPECT_TRUE(all.link(id, target));
  return all.take();
}

TEST(LinkedText, LinksEveryPlaceOfANumber) {
  EXPECT_EQ(linked("a /shop?Id=4. /shop?Id=5. /shop?Id=4.", "4", "/x"), "a /x. /shop?Id=5. /x.");
}

TEST(LinkedText, LinksWithinLongerNumbers) {
  EXPECT_EQ(linked("/shop?Id=12. /shop?Id=21.", "1", "/x"), "/x2. /shop?Id=21.");
}

TEST(LinkedText, KnowsThePlacesOfATarget) {
  LinkedText all;
  all.append("/shop?Id=1;");
  EXPECT_TRUE(all.link("1", "/shop?Id=1./shop?Id=2."));
  EXPECT_TRUE(all.link("2", "b"));
  EXPECT_EQ(all.take(), "/shop?Id=1.b.;");
}

TEST(LinkedText, RefusesATargetThatWouldCompleteAPlaceBeforeIt) {
  for (const char* begin : {"/sh", "/shop?Id=", "/shop?Id=1", "{Item", "{NowMunVal_Shop_7"}) {
    LinkedText all;
    const std::string text = std::string(begin).append("/shop?Id=4.");
    all.append(text);
    EXPECT_FALSE(all.link("4", "op?Id=5.")) << begin;
    EXPECT_EQ(all.take(), text);
  }
}

TEST(LinkedText, IsEmptyOnceTaken) {
  LinkedText all;
  all.append("/shop?Id=4.");
  all.take();
  EXPECT_TRUE(all.link("4", "x"));
  EXPECT_EQ(all.take(), "");
}

TEST(LinkedText, ShopNumbersAreThoseOfIntegers) {
  EXPECT_TRUE(is_shop_number("7"));
  EXPECT_TRUE(is_shop_number("-9223372036854775808"));
  EXPECT_FALSE(is_shop_number(""));
  EXPECT_FALSE(is_shop_number("1.5"));
  EXPECT_FALSE(is_shop_number("123456789012345678901"));
}

TEST(LinkedText, ATextIsSteadyBeforeWhatLaterTextCouldComplete) {
  for (const char* end : {"/", "/shop", "/shop?Id=", "/shop?Id=12", "{", "{Item", "{ItemName",
                          "{NowMunVal_", "{NowMunVal_Shop_12", "/sh/sh", "{Item/shop?Id=1"}) {
    EXPECT_EQ(steady_length(std::string("ab").append(end)), 2u) << end;
  }
  for (const char* whole : {"", "a", "/x", "/shop?Id=1.", "/shop?Id=123456789012345678901", "{x",
                            "{ItemId}", "{NowMunVal_Shop_x", "{NowMunVal_Shop_12}"}) {
    EXPECT_EQ(steady_length(whole), std::string_view(whole).size()) << whole;
  }
}

TEST(LinkedText, ATextIsSettledBeforeItsFirstTag) {
  EXPECT_EQ(settled_length("a{x}b{ItemId}c"), 5u);
  EXPECT_EQ(settled_length("a{NowMunVal_Shop_7}c"), 1u);
  EXPECT_EQ(settled_length("a{NowMunVal_Shop_}c"), 19u);
  EXPECT_EQ(settled_length("/sh{ItemName}"), 0u) << "a name could complete it";
}

// A link is refused or does what a search through the whole text does.
TEST(LinkedText, EqualsASearchOnGeneratedTexts) {
  std::mt19937 random(3);
  const auto pieces = [&](std::size_t most) {
    static const char* const kPieces[] = {"/shop?Id=", "1", "2", "/sh", "op?Id=1", ".", "x", "-"};
    std::string made;
    for (std::size_t n = random() % (most + 1); n > 0; --n) {
      made += kPieces[random() % std::size(kPieces)];
    }
    return made;
  };
  int done = 0;
  for (int round = 0; round < 20000; ++round) {
    LinkedText all;
    std::string expected;
    for (int step = 0; step < 5; ++step) {
      const std::string text = pieces(9).append(".");
      all.append(text);
      expected += text;
      const std::string id = std::to_string(random() % 25);
      const std::string target = pieces(3).append(".");
      if (!all.link(id, target)) break;
      expected = plain::replaced(expected, std::string(kShopPlace).append(id), target);
      ++done;
    }
    ASSERT_EQ(all.take(), expected) << "round " << round;
  }
  EXPECT_GT(done, 20000) << "most links are no odd ones";
}

}  // namespace
}  // namespace rk::site
