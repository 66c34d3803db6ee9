#include "pagehost/pages/page_files.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/support/memory_files.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

class PageFilesTest : public ::testing::Test {
 protected:
  PageFilesTest() {
    for (const char* name : {"shop.db", "shop.db-wal", "shop.db-shm", "shop.db-journal",
                             "global.asa", "global.asa-wal", "a-wal"}) {
      files_.put("/site/data/" + std::string(name), "x");
    }
  }
  static std::int32_t error_of(const std::function<void()>& step) {
    try {
      step();
    } catch (const ScriptError& error) {
      return error.number();
    }
    return 0;
  }
  tests::MemoryFiles files_;
  PageFiles shown_{files_};
};

TEST_F(PageFilesTest, WhatADatabaseKeepsBesideItIsNotThere) {
  for (const char* name : {"shop.db-wal", "SHOP.DB-SHM", "shop.db-journal", "global.asa-wal",
                           "shop.db-wal/", "shop.db-wal/."}) {
    const std::string path = "/site/data/" + std::string(name);
    EXPECT_FALSE(shown_.find(path)) << name;
    EXPECT_FALSE(shown_.stamp(path)) << name;
    EXPECT_EQ(error_of([&] { shown_.read(path); }), 53) << name;
    EXPECT_EQ(error_of([&] { shown_.read_text(path); }), 53) << name;
    EXPECT_EQ(error_of([&] { shown_.remove(path); }), 53) << name;
    EXPECT_EQ(error_of([&] { shown_.rename(path, "/site/b"); }), 53) << name;
    EXPECT_EQ(error_of([&] { shown_.write(path, "y"); }), 70) << name;
    EXPECT_EQ(error_of([&] { shown_.append(path, "y"); }), 70) << name;
    EXPECT_EQ(error_of([&] { shown_.make_folder(path); }), 70) << name;
    EXPECT_EQ(error_of([&] { shown_.rename("/site/data/a-wal", path); }), 70) << name;
  }
  EXPECT_EQ(files_.read("/site/data/shop.db-wal"), "x");
}

TEST_F(PageFilesTest, AFolderShowsTheRest) {
  EXPECT_EQ(shown_.names("/site/data"),
            (std::vector<std::string>{"a-wal", "global.asa", "shop.db"}));
  EXPECT_EQ(shown_.read("/site/data/a-wal"), "x");
}

TEST_F(PageFilesTest, ANewFileHasANameThatEverySystemTakes) {
  for (const char* name : {"a?b.txt", "c:x.txt", "a*", "a|b", "<a>", "a\"b"}) {
    const std::string path = "/site/data/" + std::string(name);
    EXPECT_EQ(error_of([&] { shown_.write(path, "y"); }), 52) << name;
    EXPECT_EQ(error_of([&] { shown_.append(path, "y"); }), 52) << name;
    EXPECT_EQ(error_of([&] { shown_.make_folder(path); }), 52) << name;
    EXPECT_EQ(error_of([&] { shown_.rename("/site/data/a-wal", path); }), 52) << name;
  }
  files_.put("/site/data/old:name.txt", "x");
  shown_.write("/site/data/old:name.txt", "y");
  EXPECT_EQ(shown_.read("/site/data/old:name.txt"), "y") << "it came from elsewhere";
  shown_.write("/site/data/\xE4\xB8\xAD (1)'&;.txt", "y");
}

TEST_F(PageFilesTest, OtherFilesAreReachedAsTheyAre) {
  shown_.write("/site/data/new.txt", "1");
  shown_.append("/site/data/new.txt", "2");
  EXPECT_EQ(shown_.read("/site/data/new.txt"), "12");
  shown_.remove("/site/data/new.txt");
  EXPECT_FALSE(shown_.find("/site/data/new.txt"));
  EXPECT_TRUE(shown_.is_folder("/site/data"));
}

}  // namespace
}  // namespace rk::pagehost
