// GetRows of a page's record set beside a hand-written loop that fills the same array.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <utility>

#include "adapters/sqlite/engine.h"
#include "bench/bench_site.h"
#include "pagehost/components/connection_object.h"
#include "pagehost/components/recordset_object.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fixed_clock.h"
#include "value/array.h"

namespace rk::bench {
namespace {

constexpr std::int32_t kRows = 100'000;
constexpr std::int32_t kColumns = 4;

class Log {
 public:
  Log() : engine_({folder_.path(), {}, std::chrono::seconds(5)}, folder_, clock_) {
    sqlite3_open(folder_.path("log.db").c_str(), &floor_);
    sqlite3_exec(floor_,
                 "create table Log (Id integer primary key, Name text collate nocase, Num integer, "
                 "Price real);"
                 "insert into Log with recursive n(i) as (select 1 union all select i+1 from n "
                 "where i < 100000) select i, 'visitor ' || i, i % 97, i / 4.0 from n;",
                 nullptr, nullptr, nullptr);
  }
  ~Log() { sqlite3_close_v2(floor_); }
  Log(const Log&) = delete;
  Log& operator=(const Log&) = delete;

  sqlite3* floor() { return floor_; }
  Ref<pagehost::RecordsetObject> opened() {
    const std::shared_ptr<platform::Database> database = engine_.page();
    auto connection = make_ref<pagehost::ConnectionObject>(database);
    connection->open_with("Data Source=log.db");
    auto engine_side = connection->opened();
    const platform::SqlText sql("Select [Id],[Name],[Num],[Price] From [Log]");
    auto rows = make_ref<pagehost::RecordsetObject>(database);
    rows->take(engine_side->execute(sql), connection, engine_side, sql);
    return rows;
  }

 private:
  tests::DiskFolder folder_;
  tests::FixedClock clock_;
  sqlite::Engine engine_;
  sqlite3* floor_ = nullptr;
};

void rows_array_100000(benchmark::State& state) {
  Log log;
  for (auto _ : state) {
    const auto rows = log.opened();
    const Value all = rows->invoke(rows->member("GetRows"), CallKind::Get, {});
    if (all.as_array().upper_bound(1) != kRows - 1) state.SkipWithError("rows are missing");
    benchmark::DoNotOptimize(all.as_array().elements().data());
  }
}
BENCHMARK(rows_array_100000);

void rows_array_100000_floor(benchmark::State& state) {
  Log log;
  Statement walk(log.floor(), "select Id, Name, Num, Price from Log");
  for (auto _ : state) {
    const std::int32_t bounds[] = {kColumns - 1, kRows - 1};
    Ref<Array> all = Array::make(bounds);
    auto cell = all->elements().begin();
    while (walk.step()) {
      *cell++ = Value::long_integer(static_cast<std::int32_t>(walk.number(0)));
      *cell++ = Value::text(walk.text(1));
      *cell++ = Value::long_integer(static_cast<std::int32_t>(walk.number(2)));
      *cell++ = Value::real(walk.real(3));
    }
    walk.reset();
    benchmark::DoNotOptimize(all->elements().data());
  }
}
BENCHMARK(rows_array_100000_floor);

}  // namespace
}  // namespace rk::bench
