#include "adapters/sqlite/database_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fake_page.h"
#include "tests/support/fixed_clock.h"
#include "value/conversions.h"

namespace rk::sqlite {
namespace {

using tests::error_of;

class DatabaseFilesTest : public testing::Test {
 protected:
  DatabaseFilesTest() { run("Create Table t (word Text(50))", ";Mode=Create"); }

  std::string path(std::string_view name) const { return folder.path(name); }
  // Pages of their own, each with a connection that it closes.
  void run(std::string_view sql, std::string_view more = "") {
    const auto page = engine.page();
    const auto connection = page->connection();
    connection->open("Data Source=" + database + std::string(more));
    connection->execute(std::string(sql));
    connection->close();
  }
  void put(std::string_view word) { run("Insert Into t Values ('" + std::string(word) + "')"); }
  // The words of a database, joined.
  std::string words(std::string_view name = "shop.db") {
    const auto page = engine.page();
    const auto connection = page->connection();
    connection->open("Data Source=" + std::string(name));
    const auto rows = connection->open_recordset(
        "Select word From t", platform::CursorType::ForwardOnly, platform::LockType::ReadOnly);
    std::string all;
    for (; !rows->eof(); rows->move_next()) all += joined_text(rows->field(0)).string();
    return all;
  }
  std::vector<std::string> names() const {
    std::vector<std::string> names = folder.names(folder.path());
    std::sort(names.begin(), names.end());
    return names;
  }

  tests::DiskFolder folder;
  tests::FixedClock clock;
  Engine engine{{folder.path(), {}, std::chrono::milliseconds(20)}, folder, clock};
  DatabaseFiles files{folder, engine, std::chrono::milliseconds(20)};
  std::string database = "shop.db";
};

TEST_F(DatabaseFilesTest, ACopyHoldsWhatWasWrittenLast) {
  put("one");
  put("two");
  ASSERT_TRUE(std::filesystem::exists(path("shop.db-wal"))) << "the file alone is behind";
  files.write(path("copy.db"), files.read(path("shop.db")));
  EXPECT_EQ(words("copy.db"), "onetwo");
}

TEST_F(DatabaseFilesTest, ACopyPutBackIsSeenByEverybodyAtOnce) {
  put("one");
  const std::string saved = files.read(path("shop.db"));
  put("two");
  const auto page = engine.page();
  const auto connection = page->connection();
  connection->open("Data Source=shop.db");
  files.write(path("shop.db"), saved);
  EXPECT_EQ(words(), "one");
  connection->execute(std::string("Insert Into t Values ('three')"));
  EXPECT_EQ(words(), "onethree") << "who had it open works on the same database";
}

TEST_F(DatabaseFilesTest, ACopyWithOtherTablesReplacesThem) {
  put("one");
  const std::string saved = files.read(path("shop.db"));
  run("Drop Table t");
  run("Create Table other (n Long)");
  files.write(path("shop.db"), saved);
  EXPECT_EQ(words(), "one");
}

TEST_F(DatabaseFilesTest, NothingElseIsWrittenOverADatabase) {
  put("one");
  EXPECT_EQ(error_of([&] { files.write(path("shop.db"), "a visitor's file"); }), 70);
  EXPECT_EQ(error_of([&] { files.write(path("shop.db"), ""); }), 70);
  EXPECT_EQ(error_of([&] { files.append(path("shop.db"), "x"); }), 70);
  EXPECT_EQ(words(), "one");
}

TEST_F(DatabaseFilesTest, BytesThatOnlyBeginAsADatabaseChangeNothing) {
  put("one");
  std::string broken("SQLite format 3\0", 16);
  EXPECT_EQ(error_of([&] { files.write(path("shop.db"), broken); }), 70);
  broken += std::string(5000, 'x');
  EXPECT_EQ(error_of([&] { files.write(path("shop.db"), broken); }), 70);
  EXPECT_EQ(words(), "one");
}

TEST_F(DatabaseFilesTest, ARemovedDatabaseLeavesNothingBesideIt) {
  put("one");
  files.remove(path("shop.db"));
  EXPECT_EQ(names(), std::vector<std::string>{});
  database = "shop.db";
  run("Create Table t (word Text(50))", ";Mode=Create");
  EXPECT_EQ(words(), "");
}

TEST_F(DatabaseFilesTest, AMovedDatabaseTakesEverythingAlong) {
  put("one");
  put("two");
  files.rename(path("shop.db"), path("moved.db"));
  EXPECT_EQ(names(), std::vector<std::string>{"moved.db"});
  EXPECT_EQ(words("moved.db"), "onetwo");
}

TEST_F(DatabaseFilesTest, ADatabaseIsNotMovedOverAnotherFile) {
  folder.put("there.db", "");
  EXPECT_EQ(error_of([&] { files.rename(path("shop.db"), path("there.db")); }), 58);
}

TEST_F(DatabaseFilesTest, ADatabaseThatSomebodyWritesToIsNotMoved) {
  const auto page = engine.page();
  const auto connection = page->connection();
  connection->open("Data Source=shop.db");
  connection->begin_transaction();
  connection->execute(std::string("Insert Into t Values ('one')"));
  EXPECT_EQ(error_of([&] { files.rename(path("shop.db"), path("moved.db")); }), 70);
  connection->commit_transaction();
  EXPECT_EQ(words(), "one");
}

TEST_F(DatabaseFilesTest, AnAccessFileThatIsGoneIsItsConvertedDatabase) {
  put("one");
  EXPECT_EQ(files.find(path("shop.mdb")), path("shop.db"));
  EXPECT_FALSE(files.find(path("none.mdb")));
  files.write(path("save.mdb"), files.read(path("shop.mdb")));
  put("two");
  files.write(path("shop.mdb"), files.read(path("save.mdb")));
  EXPECT_EQ(words(), "one");
}

TEST_F(DatabaseFilesTest, OtherFilesAreFiles) {
  files.write(path("a.txt"), "text");
  files.append(path("a.txt"), "+");
  EXPECT_EQ(files.read(path("a.txt")), "text+");
  files.rename(path("a.txt"), path("b.txt"));
  EXPECT_EQ(files.read(path("b.txt")), "text+");
  files.remove(path("b.txt"));
  EXPECT_FALSE(files.find(path("b.txt")));
}

}  // namespace
}  // namespace rk::sqlite
