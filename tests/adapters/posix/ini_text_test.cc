#include "adapters/posix/ini_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "value/text.h"

namespace rk::posix {
namespace {

// As in code page 936.
LeadBytes double_byte() {
  LeadBytes lead{};
  std::fill(lead.begin() + 0x81, lead.begin() + 0xFF, true);
  return lead;
}

std::optional<std::string> ini_value(std::string_view text, std::string_view section,
                                     std::string_view key) {
  return posix::ini_value(text, section, key, double_byte());
}
std::string ini_text_with(std::string_view text, std::string_view section,
                          std::optional<std::string_view> key,
                          std::optional<std::string_view> value) {
  return posix::ini_text_with(text, section, key, value, double_byte());
}

constexpr std::string_view kFile =
    "; comment\r\n"
    "[Main]\r\n"
    "name = first \r\n"
    "name=second\r\n"
    "quoted=\"  kept  \"\r\n"
    "\r\n"
    "[other]\r\n"
    ";name=not\r\n"
    "empty=\r\n"
    "[main]\r\n"
    "late=1\r\n";

TEST(IniText, TheFirstSectionAndKeyWinInAnyLetterCase) {
  EXPECT_EQ(ini_value(kFile, "MAIN", "NAME"), "first");
  EXPECT_FALSE(ini_value(kFile, "main", "late").has_value());
}

TEST(IniText, OnePairOfQuotesIsTakenOff) {
  EXPECT_EQ(ini_value(kFile, "main", "quoted"), "  kept  ");
}

TEST(IniText, CommentsAreNoKeys) {
  EXPECT_FALSE(ini_value(kFile, "other", "name").has_value());
}

TEST(IniText, AnEmptyValueIsThere) {
  EXPECT_EQ(ini_value(kFile, "other", "empty"), "");
}

TEST(IniText, AChangedKeyKeepsEveryOtherLine) {
  const std::string after = ini_text_with(kFile, "main", "name", "new");
  EXPECT_EQ(
      after,
      "; comment\r\n[Main]\r\nname=new\r\nname=second\r\nquoted=\"  kept  \"\r\n\r\n[other]\r\n"
      ";name=not\r\nempty=\r\n[main]\r\nlate=1\r\n");
}

TEST(IniText, ANewKeyStandsBehindTheLastLineOfItsSection) {
  EXPECT_EQ(ini_text_with("[a]\nx=1\n\n[b]\n", "a", "y", "2"), "[a]\nx=1\ny=2\n\n[b]\n");
}

TEST(IniText, ANewSectionStandsAtTheEnd) {
  EXPECT_EQ(ini_text_with("[a]\r\nx=1", "b", "y", "2"), "[a]\r\nx=1\r\n[b]\r\ny=2\r\n");
  EXPECT_EQ(ini_text_with("", "b", "y", "2"), "[b]\r\ny=2\r\n");
}

TEST(IniText, DeletingASectionTakesItsHeaderAndKeys) {
  EXPECT_EQ(ini_text_with("[a]\nx=1\n[b]\ny=2\n", "A", std::nullopt, ""), "[b]\ny=2\n");
}

TEST(IniText, DeletingAMissingKeyChangesNothing) {
  EXPECT_EQ(ini_text_with(kFile, "main", "none", std::nullopt), kFile);
  EXPECT_EQ(ini_text_with(kFile, "none", std::nullopt, ""), kFile);
}

TEST(IniText, TheSecondByteOfACharacterIsNoLetterAndNoBracket) {
  // D1 41 and D1 61 are two characters; so is 84 5D, whose second byte is "]".
  EXPECT_FALSE(ini_value("[s]\n\xD1\x41=1\n", "s", "\xD1\x61").has_value());
  EXPECT_EQ(ini_value("[\x84\x5D]\nk=1\n", "\x84\x5D", "k"), "1");
  EXPECT_FALSE(ini_value("[\x84\x5D]\nk=1\n", "\x84", "k").has_value());
}

TEST(IniText, BlanksAroundNamesDoNotCount) {
  EXPECT_EQ(ini_value("  [ s ]  \n\t k \t= v\n", " s", "k "), "v");
}

TEST(IniText, ALongerNameIsAnotherName) {
  EXPECT_FALSE(ini_value("[s]\nkey=1\n", "s", "k").has_value());
  EXPECT_FALSE(ini_value("[se]\nk=1\n", "s", "k").has_value());
  EXPECT_FALSE(ini_value("[s]\nk\n", "s", "k").has_value());
}

TEST(IniText, ANameEndsAtTheFirstEqualsSign) {
  EXPECT_EQ(ini_value("[s]\na=b=c\n", "s", "a"), "b=c");
  EXPECT_FALSE(ini_value("[s]\na=b=c\n", "s", "a=b").has_value());
}

TEST(IniText, WhatIsWrittenIsReadAgainWhateverWasThere) {
  std::mt19937 random(1);
  const std::string_view pieces[] = {"[a]", "[b",   "]",  "x=1", "x", "=",
                                     ";",   "\r\n", "\n", " ",   "'"};
  for (int i = 0; i < 3000; ++i) {
    std::string text;
    for (std::size_t n = random() % 12; n > 0; --n) text += pieces[random() % std::size(pieces)];
    const std::string other_before = ini_value(text, "b", "x").value_or("(none)");
    const std::string after = ini_text_with(text, "a", "x", "value");
    ASSERT_EQ(ini_value(after, "a", "x"), "value") << text;
    if (ini_value(text, "b", "x")) {
      ASSERT_EQ(ini_value(after, "b", "x").value_or("(none)"), other_before) << text;
    }
    const std::string deleted = ini_text_with(after, "a", std::nullopt, "");
    ASSERT_LT(deleted.size(), after.size());
  }
}

}  // namespace
}  // namespace rk::posix
