#include "adapters/pcre2/regexps.h"

#include <gtest/gtest.h>

#include <string>

#include "value/script_error.h"

namespace rk::pcre2 {
namespace {

// The text of the first match, or "none".
std::u16string first(std::u16string_view pattern, std::u16string_view subject,
                     platform::RegexpOptions options = {}) {
  const auto match = Regexps().compile(pattern, options)->match(subject, 0);
  if (!match) return u"none";
  return std::u16string(subject.substr(match->stretches[0]->start, match->stretches[0]->length));
}

int error_of(std::u16string_view pattern) {
  try {
    Regexps().compile(pattern, {});
  } catch (const ScriptError& error) {
    return error.number();
  }
  return 0;
}

TEST(Regexps, FindTheFirstMatch) {
  EXPECT_EQ(first(u"b+", u"abbbc"), u"bbb");
}

TEST(Regexps, TellGroupsThatTookNoPart) {
  const auto match = Regexps().compile(u"(a)|(b)", {})->match(u"b", 0);
  ASSERT_TRUE(match.has_value());
  ASSERT_EQ(match->stretches.size(), 3U);
  EXPECT_FALSE(match->stretches[1].has_value());
  EXPECT_EQ(match->stretches[2]->start, 0U);
}

TEST(Regexps, IgnoreCaseWhereAsked) {
  EXPECT_EQ(first(u"ABC", u"xabc"), u"none");
  EXPECT_EQ(first(u"ABC", u"xabc", {.ignore_case = true}), u"abc");
}

TEST(Regexps, DollarIsTheVeryEnd) {
  EXPECT_EQ(first(u"a$", u"a\n"), u"none");
  EXPECT_EQ(first(u"a$", u"a\nb", {.multiline = true}), u"a");
}

TEST(Regexps, OfALineOfWindowsTheReturnBelongsToTheLine) {
  EXPECT_EQ(first(u"^b", u"a\r\nb", {.multiline = true}), u"b");
  EXPECT_EQ(first(u"^b", u"a\rb", {.multiline = true}), u"none");
  EXPECT_EQ(first(u"a$", u"a\r\nb", {.multiline = true}), u"none");
  EXPECT_EQ(first(u"a\\r?$", u"a\r\nb", {.multiline = true}), u"a\r");
  EXPECT_EQ(first(u".+", u"a\r\nb", {.multiline = true}), u"a\r");
}

TEST(Regexps, DotLeavesOutLineFeedOnly) {
  EXPECT_EQ(first(u"a.b", u"a\rb"), u"a\rb");
  EXPECT_EQ(first(u"a.b", u"a\nb"), u"none");
}

TEST(Regexps, KnowUnitsByTheirNumbers) {
  EXPECT_EQ(first(u"\\u4E2D\\x41", u"\u4E2DA"), u"\u4E2DA");
  EXPECT_EQ(first(u"[\\u4e00-\\u9fa5]+", u"abc\u4E2D\u6587"), u"\u4E2D\u6587");
}

TEST(Regexps, ReadFurtherEscapesAsLetters) {
  EXPECT_EQ(first(u"\\A\\z", u"Az"), u"Az");
  EXPECT_EQ(first(u"\\v", u"\v"), u"\v");
  EXPECT_EQ(first(u"[[:a]+", u"x[:a"), u"[:a");
}

TEST(Regexps, LookAheadIsThere) {
  EXPECT_EQ(first(u"a(?=b)", u"acab"), u"a");
  EXPECT_EQ(first(u"a(?!c)", u"acab"), u"a");
}

TEST(Regexps, RefuseWhatTheDialectDoesNotHave) {
  EXPECT_EQ(error_of(u"(?<=a)b"), 5018);
  EXPECT_EQ(error_of(u"(?i)a"), 5018);
  EXPECT_EQ(error_of(u"a++"), 5018);
  EXPECT_EQ(error_of(u"(*ACCEPT)"), 5018);
}

TEST(Regexps, TellWhatIsWrong) {
  EXPECT_EQ(error_of(u"*a"), 5018);
  EXPECT_EQ(error_of(u"[a"), 5019);
  EXPECT_EQ(error_of(u"(a"), 5020);
  EXPECT_EQ(error_of(u"[z-a]"), 5021);
  EXPECT_EQ(error_of(u"a\\"), 5017);
}

TEST(Regexps, BackReferenceToAnUnsetGroupMatchesNothing) {
  EXPECT_EQ(first(u"(a)?\\1b", u"b"), u"b");
}

TEST(Regexps, EndWhatWouldNeverEnd) {
  const std::u16string subject(40, u'a');
  const auto regexp = Regexps().compile(u"(a+)+(a+)+(a+)+$", {});
  try {
    regexp->match(subject + u"b", 0);
    FAIL() << "the limit was not reached";
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), 28);
  }
}

TEST(Regexps, WorkOnLoneHalves) {
  const std::u16string half{char16_t{0xD800}};
  EXPECT_EQ(first(u"[^a]", half), half);
}

TEST(Regexps, ReadADashBesideAClassEscapeAsItself) {
  EXPECT_EQ(first(uR"(^[\w-\.]{1,}\@([\da-zA-Z-]{1,}\.){1,}[\da-zA-Z-]{2,3}$)", u"a-b.c@d-e.com"),
            u"a-b.c@d-e.com");
  EXPECT_EQ(first(uR"([\w- ./?%&=]+)", u"!a-b /c?"), u"a-b /c?");
  EXPECT_EQ(first(uR"([a-\d]+)", u"b-a1"), u"-a1");
  EXPECT_EQ(first(u"[a-c]+", u"-b-"), u"b");
}

TEST(Regexps, FoldTheCaseOfAllLetters) {
  const platform::RegexpOptions any_case{.ignore_case = true};
  EXPECT_EQ(first(u"\u00E9t", u"\u00C9T", any_case), u"\u00C9T");
  EXPECT_EQ(first(u"[\u0430-\u044F]+", u"x\u042F\u0410", any_case), u"\u042F\u0410");
  EXPECT_EQ(first(u"[^\u044F]", u"\u042Fa", any_case), u"a");
  EXPECT_EQ(first(u"\uFF41", u"\uFF21", any_case), u"\uFF21");
  EXPECT_EQ(first(u"\u00E9", u"\u00C9"), u"none");
  EXPECT_EQ(first(u"[\u4E00-\u9FA5]+", u"a\u4E2D\u6587", any_case), u"\u4E2D\u6587");
}

TEST(Regexps, ReadABracketThatClosesNothingAsItself) {
  EXPECT_EQ(first(u"[]a]+", u"b]a"), u"]a");
  EXPECT_EQ(first(u"[^]a]+", u"]ab"), u"b");
  EXPECT_EQ(error_of(u"[]"), 5019);
}

TEST(Regexps, ReadABackReferenceWithoutItsGroupAsACharacter) {
  EXPECT_EQ(first(uR"((a)\2)", u"a\x02"), u"a\x02");
  EXPECT_EQ(first(uR"((a)\1)", u"aa"), u"aa");
  EXPECT_EQ(first(uR"(\8)", u"8"), u"8");
}

}  // namespace
}  // namespace rk::pcre2
