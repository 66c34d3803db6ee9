#include "services/ini_settings.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/recording_profile_strings.h"
#include "tests/support/toy_code_pages.h"
#include "value/script_error.h"

namespace rk::services {
namespace {

using tests::RecordingProfileStrings;

class IniSettings : public ::testing::Test {
 protected:
  std::string read(std::string_view key) {
    return std::string(
        GetIniKey(store, "/site/a.ini", Value::text("main"), Value::text(key)).as_view());
  }
  void keep(std::string key, std::string value) {
    profile_strings.values[{"/site/a.ini", "main", std::move(key)}] = std::move(value);
  }

  RecordingProfileStrings profile_strings;
  tests::ToyCodePages code_pages;
  IniStore store{profile_strings, code_pages, platform::kGb2312};
};

TEST_F(IniSettings, AValueOf1500CharactersComesBackAsItsFirst1023) {
  keep("long", std::string(1500, 'x'));
  EXPECT_EQ(read("long"), std::string(1023, 'x'));
  EXPECT_EQ(profile_strings.last_size, 1024u);
}

TEST_F(IniSettings, ACharacterCutInHalfIsDropped) {
  std::string value;
  for (int i = 0; i < 600; ++i) value += "\xD6\xD0";
  keep("long", value);
  EXPECT_EQ(Text(read("long")).length(), 511u);
}

TEST_F(IniSettings, AUtf8CharacterCutInHalfIsDropped) {
  store.ansi_code_page = platform::kUtf8;
  std::string value;
  for (int i = 0; i < 600; ++i) value += "é";
  keep("long", value);
  EXPECT_EQ(Text(read("long")).length(), 511u);
}

TEST_F(IniSettings, ATextEndsAtItsFirstNul) {
  const std::string_view cut("k\0x", 3);
  WriteIniKey(store, "/f", Value::text("s"), Value::text(cut), Value::text(cut));
  EXPECT_EQ(profile_strings.writes.back(), "/f s 'k' 'k'");
}

TEST_F(IniSettings, AMissingKeyReadsAsTheEmptyText) {
  EXPECT_EQ(read("none"), "");
}

TEST_F(IniSettings, AFileThatWasNeverNamedReadsAsTheEmptyText) {
  const Value read = GetIniKey(store, "", Value::text("main"), Value::text("a"));
  EXPECT_TRUE(read.is_text());
  EXPECT_EQ(read.as_view(), "");
}

TEST_F(IniSettings, BlanksAroundAValueAndNulsInItAreLeftOut) {
  keep("odd", std::string("  a\0b c ", 8));
  EXPECT_EQ(read("odd"), "ab c");
}

TEST_F(IniSettings, TextsCrossInTheAnsiCodePage) {
  keep("\xD6\xD0", "\xCE\xC4");
  EXPECT_EQ(read("中"), "文");
  WriteIniKey(store, "/f", Value::text("中"), Value::text("文"), Value::text("好"));
  EXPECT_EQ(profile_strings.writes.back(), "/f \xD6\xD0 '\xCE\xC4' '\xBA\xC3'");
}

TEST_F(IniSettings, DeletingAKeyWritesNoValueAndDeletingASectionNoKey) {
  DelIniKey(store, "/f", Value::text("s"), Value::text("k"));
  DelIniSec(store, "/f", Value::text("s"));
  EXPECT_EQ(profile_strings.writes, (std::vector<std::string>{"/f s 'k' null", "/f s null ''"}));
}

TEST_F(IniSettings, AnEmptyValueIsWrittenNotDeleted) {
  WriteIniKey(store, "/f", Value::text("s"), Value::text("k"), Value());
  EXPECT_EQ(profile_strings.writes.back(), "/f s 'k' ''");
}

TEST_F(IniSettings, AWriteThatFailsIsNotReported) {
  EXPECT_NO_THROW(WriteIniKey(store, "/f", Value::text("s"), Value::text("k"), Value::text("v")));
}

TEST_F(IniSettings, ANullArgumentRaisesInvalidUseOfNull) {
  EXPECT_THROW(GetIniKey(store, "/f", Value::null(), Value::text("k")), ScriptError);
}

TEST(IniPath, OneBackslashStandsBetweenFolderAndName) {
  EXPECT_EQ(ini_path("C:\\a\\\\", "\\\\b.ini"), "C:\\a\\b.ini");
  EXPECT_EQ(ini_path("C:\\a", "b.ini"), "C:\\a\\b.ini");
  EXPECT_EQ(ini_path("", "b.ini"), "\\b.ini");
}

}  // namespace
}  // namespace rk::services
