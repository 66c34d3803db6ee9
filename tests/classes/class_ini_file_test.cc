#include "classes/class_ini_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/support/fake_page.h"
#include "tests/support/made_object.h"
#include "value/conversions.h"

namespace rk::classes {
namespace {

using tests::error_of;

Value text(std::string_view utf8) {
  return Value::text(utf8);
}

class IniFileObject : public tests::MadeObject {
 protected:
  IniFileObject() : MadeObject("rkclient.classinifile") {}
};

TEST_F(IniFileObject, IsMadeByItsProgramIdentifier) {
  ASSERT_TRUE(object);
  EXPECT_EQ(object->type_name(), "classIniFile");
}

TEST_F(IniFileObject, EveryMemberIsDocumented) {
  std::ifstream file(RK_SOURCE_DIR "/docs/services.md");
  const std::string manual{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(manual.find("\n### `INIFileName`"), std::string::npos);
  for (const auto& row : ClassIniFile::operations()) {
    const std::string heading = std::string("\n### `").append(row.name).append("(");
    EXPECT_NE(manual.find(heading), std::string::npos) << row.name;
  }
}

TEST_F(IniFileObject, KeepsItsFileNameAsItIsGiven) {
  EXPECT_EQ(call("INIFileName", {}).as_view(), "");
  call("inifilename", {text("C:\\a\\..\\b.ini")}, CallKind::Let);
  EXPECT_EQ(call("INIFileName", {}).as_view(), "C:\\a\\..\\b.ini");
}

TEST_F(IniFileObject, TakesAFolderAndANameFromOtherCodeButNotFromScripts) {
  ClassIniFile file(fakes.equipment());
  file.set_file("C:\\a\\\\", "\\\\b.ini");
  EXPECT_EQ(file.INIFileName(), "C:\\a\\b.ini");
  EXPECT_EQ(file.member("set_file"), kNoMember);
}

TEST_F(IniFileObject, AFileNameThatIsNoTextRaises) {
  EXPECT_EQ(error_of([&] { call("INIFileName", {Value::null()}, CallKind::Let); }), 94);
  EXPECT_EQ(error_of([&] { call("INIFileName", {text("x")}, CallKind::Set); }), 438);
  EXPECT_EQ(error_of([&] { call("INIFileName", {text("x")}); }), 450);
}

TEST_F(IniFileObject, ReadsAndWritesTheFileItNames) {
  fakes.profile_strings.values[{"/site/a.ini", "s", "k"}] = "v";
  call("INIFileName", {text("/site/a.ini")}, CallKind::Let);
  EXPECT_EQ(call("GetIniKey", {text("s"), text("k")}).as_view(), "v");
  EXPECT_TRUE(call("WriteIniKey", {text("s"), text("k"), text("w")}).is_empty());
  EXPECT_TRUE(call("DelIniKey", {text("s"), text("k")}).is_empty());
  EXPECT_TRUE(call("DelIniSec", {text("s")}).is_empty());
  EXPECT_EQ(fakes.profile_strings.writes,
            (std::vector<std::string>{"/site/a.ini s 'k' 'w'", "/site/a.ini s 'k' null",
                                      "/site/a.ini s null ''"}));
}

TEST_F(IniFileObject, WithoutAFileNameAReadIsTheEmptyText) {
  const Value read = call("GetIniKey", {text("s"), text("k")});
  EXPECT_TRUE(read.is_text());
  EXPECT_EQ(read.as_view(), "");
}

TEST_F(IniFileObject, UnknownMembersAndWrongCountsRaise) {
  EXPECT_EQ(object->member("SetIniFile"), kNoMember);
  EXPECT_EQ(error_of([&] { call("GetIniKey", {text("s")}); }), 450);
  EXPECT_EQ(error_of([&] { call("GetIniKey", {text("s"), text("k")}, CallKind::Let); }), 438);
}

}  // namespace
}  // namespace rk::classes
