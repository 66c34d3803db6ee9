#include "adapters/sqlite/locate.h"

#include <gtest/gtest.h>

#include "tests/adapters/sqlite/disk_folder.h"
#include "value/script_error.h"

namespace rk::sqlite {
namespace {

using namespace std::string_literals;

class Locate : public testing::Test {
 protected:
  std::string find(const std::string& source, OpenMode mode = OpenMode::ReadWrite) {
    return locate_database({source, mode}, {site_.path(), {more_.path()}}, site_);
  }
  std::string refusal(const std::string& source, OpenMode mode = OpenMode::ReadWrite) {
    try {
      find(source, mode);
    } catch (const ScriptError& error) {
      EXPECT_EQ(error.number(), errors::kSqlFailure);
      return error.description();
    }
    return {};
  }

  tests::DiskFolder site_;
  tests::DiskFolder more_;
  tests::DiskFolder elsewhere_;
};

TEST_F(Locate, ARelativeNameIsTakenFromTheSiteFolder) {
  site_.put("shop.db", "");
  EXPECT_EQ(find("shop.db"), site_.path("shop.db"));
  EXPECT_EQ(find(".\\SHOP.DB"), site_.path("shop.db"));
  EXPECT_EQ(find("x/../shop.db"), site_.path("shop.db"));
  EXPECT_EQ(find(site_.path("shop.db")), site_.path("shop.db"));
}

TEST_F(Locate, AFolderOfTheSettingIsAllowedAndOthersAreNot) {
  more_.put("a.db", "");
  elsewhere_.put("a.db", "");
  EXPECT_EQ(find(more_.path("a.db")), more_.path("a.db"));
  EXPECT_NE(refusal(elsewhere_.path("a.db")).find("outside"), std::string::npos);
  EXPECT_NE(refusal("../a.db").find("outside"), std::string::npos);
  EXPECT_NE(refusal(site_.path() + "x/a.db").find("outside"), std::string::npos);
  EXPECT_NE(refusal("a\0.db"s), "");
}

TEST_F(Locate, AMissingFileIsNamed) {
  EXPECT_NE(refusal("gone.db").find(site_.path("gone.db") + " does not exist"), std::string::npos);
  EXPECT_NE(refusal(site_.path()), "");
}

TEST_F(Locate, ModeCreateNeedsTheFolderOnly) {
  EXPECT_EQ(find("new.db", OpenMode::Create), site_.path("new.db"));
  EXPECT_NE(refusal("nowhere/new.db", OpenMode::Create).find("folder"), std::string::npos);
}

TEST_F(Locate, AnAccessFileStandsForTheConvertedOneBesideIt) {
  site_.put("shop.mdb", "\0\1\0\0Standard Jet DB\0"s);
  EXPECT_NE(refusal("shop.mdb").find("Convert"), std::string::npos);
  EXPECT_NE(refusal("shop.mdb").find(site_.path("shop.db")), std::string::npos);
  site_.put("Shop.db", "");
  EXPECT_EQ(find("shop.mdb"), site_.path("Shop.db"));
}

TEST_F(Locate, AnAccessFileIsKnownByItsContentWhateverItsName) {
  site_.put("global.asa", "\0\1\0\0Standard ACE DB\0 and more"s);
  site_.put("global.db", "");
  EXPECT_EQ(find("global.asa"), site_.path("global.db"));
}

TEST_F(Locate, AnAccessFileThatIsGoneIsKnownByItsEnding) {
  site_.put("shop.db", "");
  EXPECT_EQ(find("shop.MDB"), site_.path("shop.db"));
  EXPECT_EQ(find("shop.accdb"), site_.path("shop.db"));
  EXPECT_NE(refusal("other.accdb").find("Convert"), std::string::npos);
}

TEST_F(Locate, AnSqliteFileThatIsNamedAsAnAccessFileIsOpenedItself) {
  site_.put("shop.mdb", "SQLite format 3\0"s);
  site_.put("shop.db", "");
  EXPECT_EQ(find("shop.mdb"), site_.path("shop.mdb"));
}

}  // namespace
}  // namespace rk::sqlite
