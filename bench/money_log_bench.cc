// WriteMoneyLog with 1, 1,000 and 1,000,000 rows stored: it reads none of them, so that it must
// cost the same. The databases lie in memory where the system has a folder there: the wait for a
// disk, which is the same for all and varies more than anything else, would hide the rest.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "bench/bench_site.h"
#include "site/money_log.h"
#include "tests/support/fixed_clock.h"

namespace rk::bench {
namespace {

constexpr int kWrites = 500;

std::string movements(int n) {
  return "With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < " +
         std::to_string(n) +
         ") Insert Into MoneyLog (user, type, money, buymoney, logmoney, info, now) Select "
         "'user' || i % 1000, 'buy', -9.5, 99.5, 1000, '主机续费 ' || i, '2026-11-21 10:00:00' "
         "From n;";
}

std::filesystem::path folder_in_memory() {
  const std::filesystem::path memory = "/dev/shm";
  return std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
}

BenchSite& site_of(int rows) {
  static std::map<int, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[rows];
  if (site == nullptr) site = std::make_unique<BenchSite>(movements(rows), folder_in_memory());
  return *site;
}

void money_log(benchmark::State& state, int rows) {
  BenchSite& site = site_of(rows);
  const tests::FixedClock clock(46347.5);
  const site::Movement movement{.User = Value::text("ann"),
                                .LogType = Value::text("buy"),
                                .Money = Value::real(-9.5),
                                .BuyMoney = Value::real(99.5),
                                .LogMoney = Value::real(990.5),
                                .Info = Value::text("主机续费")};
  Statement last(site.floor(), "Delete From MoneyLog Where Id=(Select Max(Id) From MoneyLog)");
  for (auto _ : state) {
    site::WriteMoneyLog(site.new_page(), clock, movement);
    state.PauseTiming();
    last.step();
    last.reset();
    state.ResumeTiming();
  }
}

const bool kAdded = [] {
  for (const int rows : {1, 1000, 1000000}) {
    benchmark::RegisterBenchmark(("money_log_" + std::to_string(rows)).c_str(), money_log, rows)
        ->Iterations(kWrites);
  }
  return true;
}();

}  // namespace
}  // namespace rk::bench
