#include "site/tags.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/fake_page.h"
#include "value/array.h"

namespace rk::site {
namespace {

using tests::error_of;

std::string set_tags(const Value& file, const Value& tag, const Value& content) {
  Value name = tag;
  return Set_Tags(file, name, content).string();
}
Value text(std::string_view utf8) {
  return Value::text(utf8);
}

TEST(SetTags, ReplacesEveryOccurrence) {
  EXPECT_EQ(set_tags(text("{a} and {a}"), text("a"), text("x")), "x and x");
  EXPECT_EQ(set_tags(text("{a}{a}{a}"), text("a"), text("{a}")), "{a}{a}{a}");
}

TEST(SetTags, OtherLetterCaseReplacesNothing) {
  EXPECT_EQ(set_tags(text("{a} and {A}"), text("A"), text("x")), "{a} and x");
  EXPECT_EQ(set_tags(text("{a}"), text("b"), text("x")), "{a}");
}

TEST(SetTags, KeepsLosingTheWholeTextOnNull) {
  EXPECT_EQ(set_tags(text("all {a}"), text("a"), Value::null()), "");
  EXPECT_EQ(set_tags(text("no tag"), text("a"), Value::null()), "");
  EXPECT_EQ(set_tags(text("all {a}"), Value::null(), text("x")), "");
  EXPECT_EQ(set_tags(Value::null(), text("a"), text("x")), "");
}

TEST(SetTags, EmptyAndNumbersAreTexts) {
  EXPECT_EQ(set_tags(text("[{a}]"), text("a"), Value()), "[]");
  EXPECT_EQ(set_tags(text("[{a}]"), text("a"), Value::real(99.5)), "[99.5]");
  EXPECT_EQ(set_tags(text("[{a}]"), text("a"), Value::boolean(true)), "[True]");
  EXPECT_EQ(set_tags(text("[{5}]"), Value::integer(5), text("x")), "[x]");
  EXPECT_EQ(set_tags(Value(), text("a"), text("x")), "");
}

TEST(SetTags, NeverRaises) {
  const Value array = Value::array(Array::of({Value()}));
  EXPECT_EQ(set_tags(text("{a}"), text("a"), array), "");
  EXPECT_EQ(set_tags(array, text("a"), text("x")), "");
  EXPECT_EQ(set_tags(text("{a}"), array, text("x")), "");
  EXPECT_EQ(set_tags(text("{a}"), text("a"), Value::nothing()), "");
}

TEST(SetTags, KeepsTheBracesInTheCallersVariable) {
  Value name = text("a");
  Set_Tags(text("{a}"), name, text("x"));
  EXPECT_EQ(name.as_view(), "{a}");
  Set_Tags(text("{{a}}"), name, text("x"));
  EXPECT_EQ(name.as_view(), "{{a}}");
}

TEST(SetTags, OneVariableForAllThreeIsReadAfterItIsRewritten) {
  Value all = text("a");
  EXPECT_EQ(Set_Tags(all, all, all).view(), "{a}");
}

TEST(SetTags, TextWithoutTheTagIsTheSameTextUncopied) {
  const Value file = text("a longer text without it");
  Value name = text("a");
  EXPECT_EQ(Set_Tags(file, name, text("x")).identity(), file.as_text().identity());
}

TEST(GetKey, AnswersTheFirstOfSeveralBlocks) {
  EXPECT_EQ(GetKey(text("<a>1</a><a>2</a>"), text("<a>"), text("</a>")).as_view(), "1");
}

TEST(GetKey, WithoutAStartIsEmpty) {
  EXPECT_TRUE(GetKey(text("1</a>"), text("<a>"), text("</a>")).is_empty());
  EXPECT_TRUE(GetKey(text("1</a>"), text(""), text("</a>")).is_empty());
  EXPECT_TRUE(GetKey(text("<A>1</a>"), text("<a>"), text("</a>")).is_empty());
}

TEST(GetKey, WithoutAnEndRunsToTheNextStartOrTheEnd) {
  EXPECT_EQ(GetKey(text("<a>1<a>2"), text("<a>"), text("</a>")).as_view(), "1");
  EXPECT_EQ(GetKey(text("<a>12"), text("<a>"), text("</a>")).as_view(), "12");
  EXPECT_EQ(GetKey(text("<a>12"), text("<a>"), text("")).as_view(), "12");
}

TEST(GetKey, AnEmptyBlockIsATextAndNoBlockIsNone) {
  EXPECT_TRUE(GetKey(text("<a></a>"), text("<a>"), text("</a>")).is_text());
  EXPECT_TRUE(GetKey(text("x<a>"), text("<a>"), text("</a>")).is_empty());
}

TEST(GetKey, NeverRunsPastASecondStart) {
  EXPECT_EQ(GetKey(text("<a>1<a>2</a>"), text("<a>"), text("</a>")).as_view(), "1");
  EXPECT_EQ(GetKey(text("xx1axx2"), text("xx"), text("axx")).as_view(), "1a")
      << "a start inside the end marker";
  EXPECT_TRUE(GetKey(text("aaaa1"), text("aa"), text("1")).is_empty());
}

TEST(GetKey, NeverRaises) {
  EXPECT_TRUE(GetKey(Value::null(), text("<a>"), text("</a>")).is_empty());
  EXPECT_TRUE(GetKey(text("<a>1"), Value::null(), text("</a>")).is_empty());
  EXPECT_TRUE(GetKey(text("<a>1"), text("<a>"), Value::null()).is_empty());
  EXPECT_TRUE(GetKey(Value::nothing(), text("<a>"), text("</a>")).is_empty());
}

TEST(ReStr, RemovesBlanksQuotesStarsAndPercents) {
  EXPECT_EQ(ReStr(text(" two words ")), "twowords");
  EXPECT_EQ(ReStr(text("'a*b%c' d")), "abcd");
  EXPECT_EQ(ReStr(text("'' %%**")), "");
}

TEST(ReStr, LetsEverythingElsePass) {
  EXPECT_EQ(ReStr(text("a\t\"b\";--c")), "a\t\"b\";--c");
  EXPECT_EQ(ReStr(Value::real(1.5)), "1.5");
  EXPECT_EQ(ReStr(Value()), "");
}

TEST(ReStr, RaisesOnNull) {
  EXPECT_EQ(error_of([] { ReStr(Value::null()); }), 94);
}

TEST(PlaceOf, IsThatOfAPlainSearch) {
  std::mt19937 random(7);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (std::size_t n = random() % 40; n > 0; --n) text += "<!-ab{"[random() % 6];
    for (const std::string_view wanted : {"<!--", "<!--a", "<!---", "{a", "ab", "<!", ""}) {
      const std::size_t from = random() % 45;
      ASSERT_EQ(place_of(wanted, text, from), text.find(wanted, from)) << text << " " << wanted;
    }
  }
}

TEST(CheckTempType, IsTableWhereBothTagsStandInAnyCase) {
  EXPECT_EQ(CheckTempType(text("<TABLE width=1></TABLE>"), text("")), "table");
  EXPECT_EQ(CheckTempType(text("<table><tr>"), text("")), "div");
  EXPECT_EQ(CheckTempType(text("</table>"), text("")), "div");
  EXPECT_EQ(CheckTempType(text("<div></div>"), text("x")), "div");
}

TEST(CheckTempType, LeavesTheSecondTextOutFirst) {
  EXPECT_EQ(CheckTempType(text("<ta-ble></table>"), text("-")), "table");
  EXPECT_EQ(CheckTempType(text("<table></table>"), text("</table>")), "div");
  EXPECT_EQ(CheckTempType(text("<table></table>"), text("</TABLE>")), "table");
}

TEST(CheckTempType, RaisesOnNull) {
  EXPECT_EQ(error_of([] { CheckTempType(Value::null(), Value::text("")); }), 94);
  EXPECT_EQ(error_of([] { CheckTempType(Value::text(""), Value::null()); }), 94);
}

}  // namespace
}  // namespace rk::site
