#include "adapters/sqlite/engine.h"

#include <sqlite3.h>

#include <cstdio>
#include <filesystem>

#include "adapters/sqlite/database_file.h"
#include "tests/adapters/sqlite/sqlite_world.h"

namespace rk::tests {
namespace {

std::unique_ptr<DatabaseWorld> make_sqlite_world() {
  return std::make_unique<SqliteWorld>();
}

INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseRules, testing::Values(&make_sqlite_world));

// The engine used past the adapter, as another process does.
class OtherProcess {
 public:
  explicit OtherProcess(const std::string& path) { sqlite3_open(path.c_str(), &database_); }
  ~OtherProcess() { sqlite3_close(database_); }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  void run(const std::string& sql) {
    EXPECT_EQ(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database_);
  }
  int number(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW) << sqlite3_errmsg(database_);
    const int number = sqlite3_column_int(statement, 0);
    sqlite3_finalize(statement);
    return number;
  }
  // Whether nobody reads or writes: the log can be put back into the file whole.
  bool is_alone() { return number("pragma wal_checkpoint(truncate)") == 0; }

 private:
  sqlite3* database_ = nullptr;
};

class SqliteEngine : public testing::Test {
 protected:
  using Cursor = platform::CursorType;
  using Lock = platform::LockType;

  void SetUp() override { make("shop.db", 0); }

  // A table t of Id, Name and Num with so many rows.
  void make(const std::string& name, int rows) {
    OtherProcess other(world_.folder.path(name));
    other.run("create table t (Id integer primary key, Name text collate nocase, Num integer)");
    if (rows > 0) {
      other.run(
          "insert into t with recursive n(i) as (select 1 union all select i+1 from n where "
          "i < " +
          std::to_string(rows) + ") select i, 'name ' || i, i * 10 from n");
    }
  }
  std::unique_ptr<platform::Connection> open(const std::string& text = "Data Source=shop.db") {
    page_ = world_.engine.page(hooks_);
    auto connection = page_->connection();
    connection->open(text);
    return connection;
  }
  std::string refusal(const std::string& text) {
    try {
      open(text);
    } catch (const ScriptError& error) {
      EXPECT_EQ(error.number(), errors::kSqlFailure);
      return error.description();
    }
    return {};
  }
  static std::string value(platform::Connection& connection, const std::string& sql) {
    return joined_text(connection.execute(sql)->field(0)).string();
  }

  SqliteWorld world_;
  sqlite::PageHooks hooks_;
  std::unique_ptr<platform::Database> page_;
};

// ---- Files

TEST_F(SqliteEngine, AMissingFileIsSaidByName) {
  EXPECT_NE(refusal("Data Source=gone.db").find("gone.db does not exist"), std::string::npos);
}

TEST_F(SqliteEngine, AFileThatIsNoDatabaseIsSaidByName) {
  world_.folder.put("text.db", std::string(5000, 'x'));
  const std::string text = refusal("Data Source=text.db");
  EXPECT_NE(text.find("text.db is not an SQLite database"), std::string::npos) << text;
  EXPECT_NE(text.find("file is not a database"), std::string::npos) << text;
}

TEST_F(SqliteEngine, AnAccessFileIsSaidWithTheWayToConvertIt) {
  world_.folder.put("old.mdb", std::string("\0\1\0\0Standard Jet DB\0", 20));
  EXPECT_NE(refusal("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=old.mdb").find("Convert"),
            std::string::npos);
  make("old.db", 3);
  const auto connection = open("Driver={Microsoft Access Driver (*.mdb)};DBQ=old.mdb");
  EXPECT_EQ(value(*connection, "Select Count(*) From t"), "3");
}

TEST_F(SqliteEngine, AnOdbcStringIsRefused) {
  EXPECT_NE(refusal("DSN=shop"), "");
  EXPECT_NE(refusal("Driver={SQL Server};Server=x"), "");
}

TEST_F(SqliteEngine, ModeCreateMakesTheFile) {
  const auto connection = open("Data Source=new.db;Mode=Create");
  connection->execute("Create Table [a] ([b] Long)");
  EXPECT_EQ(value(*connection, "Select Count(*) From [a]"), "0");
  EXPECT_TRUE(std::filesystem::exists(world_.folder.path("new.db")));
}

TEST_F(SqliteEngine, ModeReadRefusesWrites) {
  const auto connection = open("Data Source=shop.db;Mode=Read");
  EXPECT_EQ(value(*connection, "Select Count(*) From t"), "0");
  try {
    connection->execute("Insert Into t ([Num]) Values (1)");
    ADD_FAILURE();
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), errors::kSqlFailure);
    EXPECT_NE(error.description().find("read-only"), std::string::npos) << error.description();
  }
}

TEST_F(SqliteEngine, AFileThatAnotherProcessHoldsIsWaitedForAndThenSaidToBeInUse) {
  const auto connection = open();
  OtherProcess other(world_.folder.path("shop.db"));
  other.run("begin immediate");
  try {
    connection->execute("Insert Into t ([Num]) Values (1)");
    ADD_FAILURE();
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), errors::kSqlFailure);
    EXPECT_NE(error.description().find("in use by another process"), std::string::npos);
    EXPECT_NE(error.description().find("database is locked"), std::string::npos);
  }
  EXPECT_EQ(value(*connection, "Select Count(*) From t"), "0");  // readers do not wait
  other.run("commit");
  connection->execute("Insert Into t ([Num]) Values (1)");
  EXPECT_EQ(value(*connection, "Select Count(*) From t"), "1");
}

TEST_F(SqliteEngine, AFileThatWasReplacedIsNoticedAtTheNextOpen) {
  EXPECT_EQ(value(*open(), "Select Count(*) From t"), "0");
  make("other.db", 7);
  std::filesystem::rename(world_.folder.path("other.db"), world_.folder.path("shop.db"));
  EXPECT_EQ(value(*open(), "Select Count(*) From t"), "7");
  std::filesystem::remove(world_.folder.path("shop.db"));
  EXPECT_NE(refusal("Data Source=shop.db").find("does not exist"), std::string::npos);
}

TEST_F(SqliteEngine, ConnectionsAreBorrowedAndGivenBackBounded) {
  const auto file = world_.engine.file("Data Source=shop.db");
  open();
  EXPECT_EQ(file->idle(), 1u);
  {
    std::vector<std::unique_ptr<platform::Database>> pages;
    std::vector<std::unique_ptr<platform::Connection>> connections;
    for (std::size_t i = 0; i < sqlite::kIdleHandles + 3; ++i) {
      pages.push_back(world_.engine.page());
      connections.push_back(pages.back()->connection());
      connections.back()->open("Data Source=shop.db");
    }
    EXPECT_EQ(file->idle(), 0u);
  }
  EXPECT_EQ(file->idle(), sqlite::kIdleHandles);
}

TEST_F(SqliteEngine, TwoSpellingsOfAFileShareTheTransactionOfThePage) {
  const auto connection = open();
  const auto second = page_->connection();
  second->open("Provider=x;Data Source=./SHOP.DB");
  connection->begin_transaction();
  connection->execute("Insert Into t ([Num]) Values (1)");
  second->execute("Insert Into t ([Num]) Values (2)");
  connection->roll_back_transaction();
  EXPECT_EQ(value(*connection, "Select Count(*) From t"), "0");
}

// ---- What reaches the engine

TEST_F(SqliteEngine, StatementsKeptAreBounded) {
  const auto file = world_.engine.file("Data Source=shop.db");
  {
    const auto connection = open();
    for (std::size_t i = 0; i < sqlite::kKeptPlans + 100; ++i) {
      connection->execute("Select [Num] As n" + std::to_string(i) + " From t");
    }
  }
  const auto handle = file->borrow();
  EXPECT_EQ(handle->kept_plans(), sqlite::kKeptPlans);
}

TEST_F(SqliteEngine, TextsThatDifferInValuesOnlyAreOneStatement) {
  const auto file = world_.engine.file("Data Source=shop.db");
  {
    const auto connection = open();
    for (int i = 0; i < 50; ++i) {
      connection->execute("Select [Num] From t Where [Id]=" + std::to_string(i) + " And [Name]='n" +
                          std::to_string(i) + "'");
    }
  }
  const auto handle = file->borrow();
  EXPECT_EQ(handle->kept_plans(), 1u);
}

TEST_F(SqliteEngine, ARecordSetThatWaitsHoldsNothing) {
  make("big.db", 5000);
  const auto connection = open("Data Source=big.db");
  OtherProcess other(world_.folder.path("big.db"));
  const auto rows = connection->open_recordset("Select * From t Order By [Id] Desc", Cursor::Keyset,
                                               Lock::Optimistic);
  rows->set_page_size(20);
  rows->set_absolute_page(3);
  EXPECT_EQ(rows->field("Id").as_long(), 4960);
  EXPECT_TRUE(other.is_alone());
  const auto few = connection->execute("Select * From t Where [Id]<5");
  EXPECT_TRUE(other.is_alone());
  for (int i = 0; i < 300; ++i) rows->move_next();
  EXPECT_EQ(rows->field("Id").as_long(), 4660);
  EXPECT_TRUE(other.is_alone());
}

TEST_F(SqliteEngine, AScopeEndsWithItsView) {
  make("big.db", 5000);
  const auto connection = open("Data Source=big.db");
  OtherProcess other(world_.folder.path("big.db"));
  other.run("update t set Num = 1 where Id = 1");
  connection->begin_read();
  const auto rows =
      connection->open_recordset("Select * From t Order By [Id]", Cursor::Keyset, Lock::Optimistic);
  rows->set_page_size(2000);
  EXPECT_EQ(rows->field("Id").as_long(), 1);
  EXPECT_FALSE(other.is_alone());
  connection->end_read();
  EXPECT_TRUE(other.is_alone());
  int seen = 0;
  for (; !rows->eof(); rows->move_next()) ++seen;
  EXPECT_EQ(seen, 5000);
}

TEST_F(SqliteEngine, TheCountFollowsWritesOfAnotherProcess) {
  make("big.db", 40);
  const auto connection = open("Data Source=big.db");
  const auto count = [&] {
    return connection
        ->open_recordset("Select * From t Where [Num]>100", Cursor::Keyset, Lock::ReadOnly)
        ->record_count();
  };
  EXPECT_EQ(count(), 30);
  OtherProcess other(world_.folder.path("big.db"));
  other.run("delete from t where Id > 38");
  EXPECT_EQ(count(), 28);
  EXPECT_EQ(count(), 28);
  other.run("insert into t (Num) values (1000)");
  EXPECT_EQ(count(), 29);
}

TEST_F(SqliteEngine, ATableThatAnotherProcessChangedIsReadAnew) {
  const auto connection = open();
  connection->execute("Insert Into t ([Name],[Num]) Values ('x',5)");
  EXPECT_EQ(connection->execute("Select * From t")->field("Num").kind(), Value::Kind::Long);
  OtherProcess other(world_.folder.path("shop.db"));
  other.run("drop table t; create table t (Num boolean); insert into t values (1)");
  const auto rows = connection->execute("Select * From t");
  EXPECT_EQ(rows->field_count(), 1u);
  EXPECT_EQ(rows->field("Num").kind(), Value::Kind::Boolean);
}

// ---- Time

TEST_F(SqliteEngine, AStatementStopsWhenThePagesTimeIsOver) {
  make("big.db", 3000);
  int looks = 0;
  hooks_.limits.expired = [&] { return ++looks > 3; };
  const auto connection = open("Data Source=big.db");
  EXPECT_EQ(error_of([&] {
              connection->execute("Select Count(*) From t As a, t As b Where a.Num*b.Num>7");
            }),
            errors::kSqlTimeout);
}

TEST_F(SqliteEngine, WhatEndsThePageComesInPlaceOfTheTimeoutsError) {
  make("big.db", 3000);
  hooks_.limits.expired = [] { return true; };
  hooks_.limits.end = [] { throw ScriptError(4711, "ended"); };
  const auto connection = open("Data Source=big.db");
  EXPECT_EQ(error_of([&] {
              connection->execute("Select Count(*) From t As a, t As b Where a.Num*b.Num>7");
            }),
            4711);
}

TEST_F(SqliteEngine, AnInterruptedWriteIsUndone) {
  make("big.db", 3000);
  bool over = false;
  hooks_.limits.expired = [&] { return over; };
  const auto connection = open("Data Source=big.db");
  over = true;
  EXPECT_EQ(error_of([&] {
              connection->execute(
                  "Update t Set [Num]=(Select Count(*) From t As a Where "
                  "a.[Num]<>t.[Num])");
            }),
            errors::kSqlTimeout);
  over = false;
  EXPECT_EQ(value(*connection, "Select Count(*) From t Where [Num]=[Id]*10"), "3000");
  connection->execute("Insert Into t ([Num]) Values (1)");
}

TEST_F(SqliteEngine, AWriterThatWaitsInTheQueueStopsWhenItsTimeIsOver) {
  const auto holder_page = world_.engine.page();
  const auto holder = holder_page->connection();
  holder->open("Data Source=shop.db");
  holder->begin_transaction();
  hooks_.limits.expired = [] { return true; };
  const auto connection = open();
  EXPECT_EQ(error_of([&] { connection->execute("Insert Into t ([Num]) Values (1)"); }),
            errors::kSqlTimeout);
  holder->commit_transaction();
  connection->execute("Insert Into t ([Num]) Values (1)");
  EXPECT_EQ(value(*connection, "Select Count(*) From t"), "1");
}

// What was stored outlives a loss of power: the log is on the disk before a write returns.
TEST_F(SqliteEngine, AWriteWaitsForTheDisk) {
  sqlite::Handle handle(world_.folder.path("shop.db"), sqlite::OpenMode::ReadWrite,
                        std::chrono::milliseconds(0));
  const auto answer = [&](const std::string& pragma) {
    const sqlite::Lease lease = handle.lease(handle.own_plan(pragma), 0);
    EXPECT_TRUE(handle.step(lease.statement()));
    return std::string(reinterpret_cast<const char*>(sqlite3_column_text(lease.statement(), 0)));
  };
  EXPECT_EQ(answer("pragma journal_mode"), "wal");
  EXPECT_EQ(answer("pragma synchronous"), "2");
}

TEST_F(SqliteEngine, WhatAWriterWaitedInTheQueueOfALockedFileCounts) {
  using std::chrono::hours;
  sqlite::Handle handle(world_.folder.path("shop.db"), sqlite::OpenMode::ReadWrite, hours(1));
  OtherProcess other(world_.folder.path("shop.db"));
  other.run("begin immediate");
  const auto since = std::chrono::steady_clock::now() - hours(2);
  EXPECT_EQ(error_of([&] { handle.begin_write(since); }), errors::kSqlFailure);
  EXPECT_EQ(handle.waited_in_vain_since(), since);
  other.run("rollback");
  handle.begin_write(since);
  EXPECT_EQ(handle.waited_in_vain_since(), std::nullopt);
  handle.roll_back();
}

// ---- Trace

struct Told {
  std::string sql;
  std::int64_t rows;
  std::string place;
};

class SqliteTrace : public SqliteEngine {
 protected:
  void SetUp() override {
    SqliteEngine::SetUp();
    make("big.db", 1000);
    hooks_.trace = [this](const platform::TracedStatement& told) {
      EXPECT_GE(told.microseconds, 0);
      told_.push_back({std::string(told.sql), told.rows, std::string(told.place)});
    };
    hooks_.place = [this] { return "page.asp:" + std::to_string(++line_); };
    connection_ = open("Data Source=big.db");
  }
  std::vector<Told> told_;
  int line_ = 0;
  std::unique_ptr<platform::Connection> connection_;
};

TEST_F(SqliteTrace, TellsTheTextAsThePageSentItAndItsRows) {
  connection_->execute("Select [Num] From t Where [Id]<=3");
  connection_->execute("Update t Set [Num]=0 Where [Id]=2");
  ASSERT_EQ(told_.size(), 2u);
  EXPECT_EQ(told_[0].sql, "Select [Num] From t Where [Id]<=3");
  EXPECT_EQ(told_[0].rows, 3);
  EXPECT_EQ(told_[0].place, "page.asp:1");
  EXPECT_EQ(told_[1].rows, 1);
}

TEST_F(SqliteTrace, TellsATextThatFailed) {
  EXPECT_NE(error_of([&] { connection_->execute("Select nix From t"); }), 0);
  ASSERT_EQ(told_.size(), 1u);
  EXPECT_EQ(told_[0].sql, "Select nix From t");
}

TEST_F(SqliteTrace, APagedRecordSetStepsTheRowsOfItsPageOnly) {
  for (const bool scope : {false, true}) {
    told_.clear();
    if (scope) connection_->begin_read();
    const auto rows = connection_->open_recordset("Select * From t Order By [Id] Desc",
                                                  Cursor::Keyset, Lock::Optimistic);
    EXPECT_EQ(rows->record_count(), 1000);
    rows->set_page_size(20);
    rows->set_absolute_page(2);
    for (int i = 0; i < 20; ++i) rows->move_next();
    rows->set_absolute_page(51);
    rows->close();
    if (scope) connection_->end_read();
    ASSERT_EQ(told_.size(), 1u);
    EXPECT_EQ(told_[0].rows, 20) << scope;
  }
}

TEST_F(SqliteTrace, AddNewStepsNoRowAndCountsNone) {
  const auto rows =
      connection_->open_recordset("Select * From t", Cursor::Keyset, Lock::Optimistic);
  for (int i = 0; i < 3; ++i) {
    rows->add_new();
    rows->set_field("Num", Value::integer(1));
    rows->update();
  }
  rows->close();
  ASSERT_EQ(told_.size(), 1u);
  EXPECT_EQ(told_[0].rows, 0);
}

}  // namespace
}  // namespace rk::tests
