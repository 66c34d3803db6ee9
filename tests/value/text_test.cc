#include "value/text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "value/script_error.h"

namespace rk {
namespace {

const std::u16string kMixed = u"a\u4E2D\U0001F600\u00E9z";

// A text of ASCII, Chinese, pairs and lone halves.
std::u16string random_units(std::mt19937& random, std::size_t count) {
  const std::u16string alphabet = u"ab \u4E2D\u00E9\xD83D\xDE00\xFFFD";
  std::u16string units;
  for (std::size_t i = 0; i < count; ++i) units += alphabet[random() % alphabet.size()];
  return units;
}

TEST(Text, CountsSixteenBitUnits) {
  EXPECT_EQ(Text("abc").length(), 3u);
  EXPECT_EQ(Text("中文").length(), 2u);
  EXPECT_EQ(Text("😀").length(), 2u);
  EXPECT_EQ(Text().length(), 0u);
  EXPECT_EQ(Text("中文").byte_length(), 4u);
}

TEST(Text, ACutInsideAPairLeavesHalvesThatJoinAgain) {
  const Text whole("😀");
  Text first = whole.mid(0, 1);
  const Text second = whole.mid(1, 1);
  EXPECT_EQ(first.unit(0), 0xD83D);
  EXPECT_EQ(second.unit(0), 0xDE00);
  first.append(second);
  EXPECT_EQ(first, whole);
  EXPECT_EQ(first.length(), 2u);
}

TEST(Text, UnitsSurviveTheRoundTrip) {
  std::mt19937 random(1);
  for (int i = 0; i < 500; ++i) {
    const std::u16string units = random_units(random, random() % 20);
    EXPECT_EQ(Text::from_units(units).units(), units);
  }
}

TEST(Text, MidEqualsTheSameCutOfTheUnits) {
  std::mt19937 random(2);
  for (int i = 0; i < 2000; ++i) {
    const std::u16string units = random_units(random, random() % 40);
    const Text text = Text::from_units(units);
    const std::size_t start = random() % 45;
    const std::size_t count = random() % 45;
    const std::u16string cut = start < units.size() ? units.substr(start, count) : u"";
    EXPECT_EQ(text.mid(start, count).units(), cut);
  }
}

TEST(Text, EveryUnitIsFoundForwardsBackwardsAndAtRandom) {
  std::mt19937 random(3);
  const std::u16string units = random_units(random, 300);
  const Text text = Text::from_units(units);
  ASSERT_EQ(text.length(), units.size());
  for (std::size_t i = 0; i < units.size(); ++i) EXPECT_EQ(text.unit(i), units[i]);
  for (std::size_t i = units.size(); i-- > 0;) EXPECT_EQ(text.unit(i), units[i]);
  for (int i = 0; i < 1000; ++i) {
    const std::size_t at = random() % units.size();
    EXPECT_EQ(text.unit(at), units[at]);
  }
}

TEST(Text, AppendEqualsJoiningTheUnits) {
  std::mt19937 random(4);
  for (int i = 0; i < 2000; ++i) {
    const std::u16string a = random_units(random, random() % 6);
    const std::u16string b = random_units(random, random() % 6);
    Text text = Text::from_units(a);
    text.length();
    text.append(Text::from_units(b));
    EXPECT_EQ(text.units(), a + b);
    EXPECT_EQ(text.length(), (a + b).size());
  }
}

TEST(Text, AppendLeavesOtherHandlesAlone) {
  Text a("one");
  const Text b = a;
  a.append(" two");
  EXPECT_EQ(a.view(), "one two");
  EXPECT_EQ(b.view(), "one");
}

TEST(Text, AppendChangesAnUnsharedTextInPlace) {
  Text text("x");
  text.append(std::string(1000, 'y'));
  text.append("z");
  const void* before = text.identity();
  text.append("z");
  EXPECT_EQ(text.identity(), before);
}

TEST(Text, ASharedTextIsNeverChangedInPlace) {
  Text text("x");
  text.append(std::string(1000, 'y'));
  text.append("z");
  text.share();
  const void* before = text.identity();
  text.append("z");
  EXPECT_NE(text.identity(), before);
}

TEST(Text, MayBeAppendedToItself) {
  Text text("ab");
  text.append(text);
  EXPECT_EQ(text.view(), "abab");
}

TEST(Text, AnOddNumberOfBytesHasAHome) {
  const Text odd = Text::from_bytes("abc");
  EXPECT_EQ(odd.byte_length(), 3u);
  EXPECT_EQ(odd.length(), 1u);
  EXPECT_EQ(odd.bytes(), "abc");
  EXPECT_EQ(odd.byte(2), 'c');
  EXPECT_EQ(odd.byte_mid(1, 2).bytes(), "bc");
}

TEST(Text, BytesJoinAsBytesDo) {
  std::mt19937 random(5);
  for (int i = 0; i < 2000; ++i) {
    std::string a;
    std::string b;
    for (std::size_t left = random() % 7; left > 0; --left) a += static_cast<char>(random());
    for (std::size_t left = random() % 7; left > 0; --left) b += static_cast<char>(random());
    Text text = Text::from_bytes(a);
    text.append(Text::from_bytes(b));
    EXPECT_EQ(text.bytes(), a + b);
    const std::size_t start = random() % 8;
    const std::size_t count = random() % 8;
    const std::string all = a + b;
    EXPECT_EQ(text.byte_mid(start, count).bytes(),
              start < all.size() ? all.substr(start, count) : "");
  }
}

TEST(Text, OffsetsAndUnitsMatch) {
  const Text text = Text::from_units(kMixed);
  EXPECT_EQ(text.offset_of_unit(0), 0u);
  EXPECT_EQ(text.offset_of_unit(1), 1u);
  EXPECT_EQ(text.offset_of_unit(2), 4u);
  EXPECT_EQ(text.offset_of_unit(4), 8u);
  EXPECT_EQ(text.unit_of_offset(8), 4u);
  EXPECT_EQ(text.offset_of_unit(99), text.view().size());
}

TEST(Text, PastTheLongestTextRaisesOutOfStringSpace) {
  Text text("x");
  try {
    text.append(std::string_view("y", kMaxTextBytes));
    FAIL();
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), 14);
  }
  EXPECT_EQ(text.view(), "x");
}

TEST(Text, KnowsValidUtf8FromOther) {
  EXPECT_TRUE(is_valid_utf8("a中😀"));
  for (const std::string_view bad : {"\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE4\xB8",
                                     "\x80", "\xF0\x80\x80\x80", "\xFF"}) {
    EXPECT_FALSE(is_valid_utf8(bad)) << bad.size();
  }
}

TEST(Text, UnitLengthEqualsCountingOneByOne) {
  std::mt19937 random(6);
  for (int i = 0; i < 1000; ++i) {
    const std::u16string units = random_units(random, random() % 60);
    EXPECT_EQ(unit_length(Text::from_units(units).view()), units.size());
  }
}

TEST(Text, BytesThatAreNoUtf8DoNoHarm) {
  std::mt19937 random(7);
  for (int i = 0; i < 2000; ++i) {
    std::string bytes;
    for (std::size_t left = random() % 12; left > 0; --left) bytes += static_cast<char>(random());
    const Text text(bytes);
    for (std::size_t at = 0; at < text.length(); ++at) text.mid(at, 1);
    for (std::size_t at = text.length(); at-- > 0;) text.unit(at);
    EXPECT_EQ(text.view(), bytes);
  }
}

TEST(Text, AnEmptyTextIsKnownWithoutCounting) {
  EXPECT_TRUE(Text().empty());
  EXPECT_FALSE(Text("a").empty());
  EXPECT_FALSE(Text::from_bytes("a").empty());
  Text cut("a");
  EXPECT_TRUE(cut.mid(1, 1).empty());
}

// Any bytes, also such that are no UTF-8, and so many that the counters of words fill up.
RC_GTEST_PROP(TextPlain, UnitsAreThoseOfACountByteByByte, ()) {
  const auto byte = rc::gen::element<char>('a', '\x80', '\xBF', '\xC3', '\xE4', '\xF0', '\xFF');
  std::string text;
  const auto pattern = *rc::gen::container<std::string>(byte);
  const auto times = *rc::gen::element<int>(1, 2, 50);
  for (int i = 0; i < times; ++i) text += pattern;
  std::size_t units = 0;
  for (const char c : text) {
    const auto value = static_cast<unsigned char>(c);
    if (value < 0x80 || value >= 0xC0) units += value >= 0xF0 ? 2 : 1;
  }
  RC_ASSERT(unit_length(text) == units);
}

}  // namespace
}  // namespace rk
