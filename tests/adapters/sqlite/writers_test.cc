// Many writers and readers of one file, and writers that are killed. The environment makes the runs
// longer: RK_WRITER_SECONDS (1) and RK_KILL_ROUNDS (5).
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "adapters/sqlite/engine.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fixed_clock.h"
#include "value/conversions.h"

namespace rk::tests {
namespace {

int number_from(const char* variable, int otherwise) {
  const char* text = std::getenv(variable);
  return text == nullptr ? otherwise : std::atoi(text);
}

class Shop {
 public:
  explicit Shop(const DiskFolder& folder)
      : engine_({folder.path(), {}, std::chrono::seconds(60)}, folder, clock_) {}

  std::unique_ptr<platform::Connection> open() {
    const auto page = engine_.page();
    auto connection = page->connection();
    connection->open("Data Source=shop.db;Mode=Create");
    return connection;
  }
  void create() { open()->execute("Create Table [log] ([Id] Counter, [Writer] Long, [Num] Long)"); }
  void add(int writer, int number) {
    platform::SqlText sql("Insert Into [log] ([Writer],[Num]) Values (?,?)");
    sql.bind(Value::long_integer(writer)).bind(Value::long_integer(number));
    open()->execute(sql);
  }
  std::int64_t count(const std::string& what) {
    return to_long(open()->execute("Select " + what + " From [log]")->field(0));
  }

 private:
  FixedClock clock_;
  sqlite::Engine engine_;
};

TEST(SqliteWriters, SixtyFourWritersStoreEveryRowOnceWhileSixtyFourReadersRead) {
  constexpr int kThreads = 64;
  const DiskFolder folder;
  Shop shop(folder);
  shop.create();
  const auto end =
      std::chrono::steady_clock::now() + std::chrono::seconds(number_from("RK_WRITER_SECONDS", 1));
  const auto goes_on = [end] { return std::chrono::steady_clock::now() < end; };
  std::atomic<std::int64_t> written = 0;
  std::atomic<int> failures = 0;
  const auto guarded = [&failures](const auto& work) {
    try {
      work();
    } catch (const ScriptError& error) {
      ++failures;
      ADD_FAILURE() << error.description();
    }
  };
  std::vector<std::thread> threads;
  threads.reserve(std::size_t{2} * kThreads);
  for (int writer = 0; writer < kThreads; ++writer) {
    threads.emplace_back([&, writer] {
      guarded([&] {
        for (int number = 0; number == 0 || goes_on(); ++number, ++written) {
          shop.add(writer, number);
        }
      });
    });
    threads.emplace_back([&] {
      guarded([&] {
        for (std::int64_t seen = 0; goes_on();) {
          const std::int64_t now = shop.count("Count(*)");
          EXPECT_GE(now, seen);
          seen = now;
        }
      });
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_GE(written, kThreads);
  EXPECT_EQ(shop.count("Count(*)"), written);
  const auto connection = shop.open();
  const auto apart =
      connection->execute("Select Count(*) From (Select Distinct [Writer],[Num] From [log])");
  EXPECT_EQ(to_long(apart->field(0)), written);
}

// The writer's transaction stays open until the reader has its answer, so a reader that waited for
// it would never end.
TEST(SqliteWriters, AReaderNeverWaitsForAWriter) {
  const DiskFolder folder;
  Shop shop(folder);
  shop.create();
  const auto writer = shop.open();
  writer->begin_transaction();
  writer->execute("Insert Into [log] ([Num]) Values (1)");
  std::int64_t seen = -1;
  std::thread([&] { seen = shop.count("Count(*)"); }).join();
  EXPECT_EQ(seen, 0);
  writer->commit_transaction();
  EXPECT_EQ(shop.count("Count(*)"), 1);
}

std::string integrity_of(const std::string& path) {
  sqlite3* database = nullptr;
  sqlite3_stmt* statement = nullptr;
  std::string answer;
  sqlite3_open(path.c_str(), &database);
  sqlite3_prepare_v2(database, "pragma integrity_check", -1, &statement, nullptr);
  if (sqlite3_step(statement) == SQLITE_ROW) {
    answer = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  }
  sqlite3_finalize(statement);
  sqlite3_close(database);
  return answer;
}

// Writes rows from `first` on and tells each one that is stored, until it is killed.
[[noreturn]] void write_until_killed(const DiskFolder& folder, int round, int told) {
  try {
    Shop shop(folder);
    for (int number = 0;; ++number) {
      shop.add(round, number);
      if (::write(told, &number, sizeof number) != sizeof number) break;
    }
  } catch (const ScriptError&) {  // the parent misses the rows
  }
  ::_exit(1);
}

TEST(SqliteWriters, AKilledWriterLosesNoRowThatItWasToldIsStored) {
  const DiskFolder folder;
  Shop(folder).create();
  const int rounds = number_from("RK_KILL_ROUNDS", 5);
  for (int round = 0; round < rounds; ++round) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t writer = ::fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) write_until_killed(folder, round, ends[1]);
    ::close(ends[1]);
    int last = -1;
    const int wanted = 3 + round * 7 % 40;
    while (last < wanted && ::read(ends[0], &last, sizeof last) == sizeof last) {
    }
    ::kill(writer, SIGKILL);
    int told = last;
    while (::read(ends[0], &told, sizeof told) == sizeof told) last = told;
    ::waitpid(writer, nullptr, 0);
    ::close(ends[0]);
    ASSERT_GE(last, wanted);
    EXPECT_EQ(integrity_of(folder.path("shop.db")), "ok");
    const std::string mine = " From [log] Where [Writer]=" + std::to_string(round);
    Shop shop(folder);
    const auto connection = shop.open();
    const auto rows = connection->execute("Select Count(*),Max([Num])" + mine);
    const std::int32_t stored = to_long(rows->field(0));
    // The row whose answer the kill cut off may be there too, whole.
    EXPECT_GE(stored, last + 1);
    EXPECT_LE(stored, last + 2);
    EXPECT_EQ(to_long(rows->field(1)), stored - 1);
  }
}

}  // namespace
}  // namespace rk::tests
