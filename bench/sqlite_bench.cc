// What the adapter adds to SQLite: a look-up by Execute, a page of a record set, a walk and added
// rows, each beside the same statements prepared once and stepped by hand.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <charconv>
#include <memory>
#include <string>

#include "adapters/sqlite/engine.h"
#include "bench/bench_site.h"
#include "platform/database.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fixed_clock.h"

namespace rk::bench {
namespace {

constexpr int kAdded = 10'000;
constexpr int kShown = 20;
constexpr int kColumns = 6;
constexpr const char* kTables =
    "create table Plan (Id integer primary key, Name text collate nocase, Space text collate "
    "nocase, Price currency, Num integer, Class integer);"
    "create table Offer (Id integer primary key, AgentUser text collate nocase, MastId integer, "
    "Type text collate nocase, Name text collate nocase, Price currency);"
    "create index OfferKey on Offer (MastId, Type, AgentUser);"
    "create table Log (Id integer primary key, user text collate nocase, money currency);";
constexpr const char* kFill =
    "insert into Plan with recursive n(i) as (select 1 union all select i+1 from n where i < 1000) "
    "select i, '虚拟主机 ' || i, '100M', i * 10.5, i, i % 5 from n;"
    "insert into Offer select Id, 'blue', Id, 'Host', 'own ' || Id, Price + 1 from Plan;";

class Shop {
 public:
  Shop() : engine_({folder_.path(), {}, std::chrono::seconds(5)}, folder_, clock_) {
    sqlite3_open(folder_.path("shop.db").c_str(), &floor_);
    sqlite3_exec(floor_, kTables, nullptr, nullptr, nullptr);
    sqlite3_exec(floor_, kFill, nullptr, nullptr, nullptr);
    sqlite3_exec(floor_, "pragma journal_mode = wal", nullptr, nullptr, nullptr);
    page_ = engine_.page();
    connection_ = page_->connection();
    connection_->open("Data Source=shop.db");
  }
  ~Shop() { sqlite3_close_v2(floor_); }
  Shop(const Shop&) = delete;
  Shop& operator=(const Shop&) = delete;

  sqlite3* floor() { return floor_; }
  platform::Connection& connection() { return *connection_; }
  platform::Database& page() { return *page_; }

 private:
  tests::DiskFolder folder_;
  tests::FixedClock clock_;
  sqlite::Engine engine_;
  sqlite3* floor_ = nullptr;
  std::unique_ptr<platform::Database> page_;
  std::unique_ptr<platform::Connection> connection_;
};

void run(Statement& statement) {
  statement.step();
  statement.reset();
}

// Twenty look-ups in one view, as an agent's list makes them.
void sqlite_look_ups(benchmark::State& state) {
  Shop shop;
  std::string out;
  for (auto _ : state) {
    out.clear();
    const platform::ReadScope view(shop.connection());
    for (int id = 1; id <= kShown; ++id) {
      const auto rows = shop.connection().execute(
          "Select [Name],[Price] From [Offer] Where [AgentUser]='blue' And [MastId]=" +
          std::to_string(id) + " And [Type]='Host'");
      if (!rows->eof()) {
        rows->append_field_text(0, out);
        rows->append_field_text(1, out);
      }
      rows->close();
    }
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(sqlite_look_ups);

void sqlite_look_ups_floor(benchmark::State& state) {
  Shop shop;
  Statement begin(shop.floor(), "begin"), commit(shop.floor(), "commit");
  Statement look_up(shop.floor(),
                    "select Name, Price from Offer where AgentUser = 'blue' and MastId = ? and "
                    "Type = 'Host'");
  std::string out;
  for (auto _ : state) {
    out.clear();
    run(begin);
    for (int id = 1; id <= kShown; ++id) {
      look_up.bind(1, id);
      if (look_up.step()) {
        out.append(look_up.text(0));
        char digits[32];
        out.append(digits, std::to_chars(digits, digits + sizeof digits, look_up.real(1)).ptr);
      }
      look_up.reset();
    }
    run(commit);
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(sqlite_look_ups_floor);

// The third page of a list with its count.
void sqlite_page(benchmark::State& state) {
  Shop shop;
  std::string out;
  for (auto _ : state) {
    out.clear();
    const platform::ReadScope view(shop.connection());
    const auto rows = shop.connection().open_recordset(
        "Select [Id],[Name],[Space],[Price],[Num],[Class] From [Plan] Order By [Id] Desc",
        platform::CursorType::Keyset, platform::LockType::Optimistic);
    benchmark::DoNotOptimize(rows->record_count());
    rows->set_page_size(kShown);
    rows->set_absolute_page(3);
    for (int i = 0; i < kShown && !rows->eof(); ++i) {
      for (std::size_t column = 0; column < kColumns; ++column) {
        rows->append_field_text(column, out);
      }
      rows->move_next();
    }
    rows->close();
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(sqlite_page);

void append_row(const Statement& rows, std::string& out) {
  for (int column = 0; column < kColumns; ++column) {
    if (column == 3) {
      char digits[32];
      out.append(digits, std::to_chars(digits, digits + sizeof digits, rows.real(column)).ptr);
    } else {
      out.append(rows.text(column));
    }
  }
}

void sqlite_page_floor(benchmark::State& state) {
  Shop shop;
  Statement begin(shop.floor(), "begin"), commit(shop.floor(), "commit");
  Statement page(shop.floor(),
                 "select Id, Name, Space, Price, Num, Class from Plan order by Id desc limit 20 "
                 "offset 40");
  std::string out;
  for (auto _ : state) {
    out.clear();
    run(begin);
    while (page.step()) append_row(page, out);
    page.reset();
    run(commit);
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(sqlite_page_floor);

// All rows, forward only.
void sqlite_walk(benchmark::State& state) {
  Shop shop;
  std::string out;
  for (auto _ : state) {
    out.clear();
    const auto rows = shop.connection().execute("Select * From [Plan] Order By [Id]");
    for (; !rows->eof(); rows->move_next()) {
      for (std::size_t column = 0; column < kColumns; ++column) {
        rows->append_field_text(column, out);
      }
    }
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(sqlite_walk);

void sqlite_walk_floor(benchmark::State& state) {
  Shop shop;
  Statement walk(shop.floor(), "select * from Plan order by Id");
  std::string out;
  for (auto _ : state) {
    out.clear();
    while (walk.step()) append_row(walk, out);
    walk.reset();
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(sqlite_walk_floor);

// A connection of an operation's own: borrowed and given back.
void sqlite_open(benchmark::State& state) {
  Shop shop;
  shop.connection().close();
  for (auto _ : state) {
    const auto connection = shop.page().connection();
    connection->open("Data Source=shop.db");
    connection->close();
  }
}
BENCHMARK(sqlite_open);

// Ten thousand rows in one transaction.
void sqlite_add_rows(benchmark::State& state) {
  Shop shop;
  for (auto _ : state) {
    shop.connection().begin_transaction();
    const auto rows = shop.connection().open_recordset(
        "Select * From Log", platform::CursorType::Keyset, platform::LockType::Optimistic);
    for (int i = 0; i < kAdded; ++i) {
      rows->add_new();
      rows->set_field(1, Value::text("user"));
      rows->set_field(2, Value::long_integer(i));
      rows->update();
    }
    shop.connection().roll_back_transaction();
  }
}
BENCHMARK(sqlite_add_rows);

void sqlite_add_rows_floor(benchmark::State& state) {
  Shop shop;
  Statement begin(shop.floor(), "begin immediate"), roll_back(shop.floor(), "rollback");
  Statement add(shop.floor(), "insert into Log (user, money) values ('user', ?)");
  for (auto _ : state) {
    run(begin);
    for (int i = 0; i < kAdded; ++i) {
      add.bind(1, i);
      run(add);
    }
    run(roll_back);
  }
}
BENCHMARK(sqlite_add_rows_floor);

}  // namespace
}  // namespace rk::bench
