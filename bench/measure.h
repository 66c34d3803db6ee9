// One measure and its floor: an operation of the library beside a hand-written one that makes the
// same bytes, which is checked before either is timed.
#ifndef RK_BENCH_MEASURE_H_
#define RK_BENCH_MEASURE_H_

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

#include "value/value.h"

namespace rk::bench {

// So short that the measures of all sizes of all lists take minutes, not an hour.
inline constexpr double kMeasureSeconds = 0.1;

inline std::string_view bytes_of(const Text& text) {
  return text.view();
}
inline std::string_view bytes_of(const std::string& text) {
  return text;
}
inline std::string_view bytes_of(const Value& text) {
  return text.as_view();
}

// Registers NAME for `show()` and NAME_floor for `make_floor().show()`. Neither is called before
// the measures run, so that a filter leaves the sites of others unmade.
template <class Show, class MakeFloor>
void add_measure(const std::string& name, Show show, MakeFloor make_floor) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    if (bytes_of(show()) != make_floor().show()) {
      state.SkipWithError("the floor makes other bytes");
      return;
    }
    for (auto _ : state) benchmark::DoNotOptimize(show());
  })->MinTime(kMeasureSeconds);
  benchmark::RegisterBenchmark((name + "_floor").c_str(), [=](benchmark::State& state) {
    auto floor = make_floor();
    for (auto _ : state) benchmark::DoNotOptimize(floor.show());
  })->MinTime(kMeasureSeconds);
}

}  // namespace rk::bench

#endif  // RK_BENCH_MEASURE_H_
