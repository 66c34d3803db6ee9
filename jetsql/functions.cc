#include "jetsql/functions.h"

#include <cmath>
#include <vector>

#include "jetsql/arguments.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {

std::span<const Function> functions() {
  static const std::vector<Function> all = [] {
    std::vector<Function> gathered;
    for (const std::span<const Function> part :
         {text_functions(), date_functions(), number_functions()}) {
      gathered.insert(gathered.end(), part.begin(), part.end());
    }
    return gathered;
  }();
  return all;
}

namespace {

// The second argument is the row's number, which an outer join may leave out.
std::int64_t place_of(Arguments a) {
  return a[1].kind == Argument::Kind::Null ? 0 : whole_argument(a[1]);
}

void keep(Aggregation& state, Arguments a) {
  state.place = place_of(a);
  state.kept = Answer();
  answer_same(state.kept, a[0]);
}

void first_step(Aggregation& state, Arguments a) {
  if (state.rows++ == 0 || place_of(a) < state.place) keep(state, a);
}

void last_step(Aggregation& state, Arguments a) {
  if (state.rows++ == 0 || place_of(a) >= state.place) keep(state, a);
}

void only_step(Aggregation& state, Arguments a) {
  if (state.rows++ > 0) {
    throw SqlError(kUnspecified, "At most one record can be returned by this subquery.",
                   SqlError::kNowhere);
  }
  answer_same(state.kept, a[0]);
}

void kept(const Aggregation& state, Answer& answer) {
  answer = state.kept;
}

// A running mean, so that large values of small difference keep it.
void spread_step(Aggregation& state, Arguments a) {
  if (any_null(a)) return;
  const double value = number_argument(a[0]);
  ++state.rows;
  const double before = value - state.mean;
  state.mean += before / static_cast<double>(state.rows);
  state.squares += before * (value - state.mean);
}

template <bool Population, bool Root>
void spread(const Aggregation& state, Answer& answer) {
  const std::int64_t by = Population ? state.rows : state.rows - 1;
  if (by < 1) return;
  const double variance = state.squares / static_cast<double>(by);
  answer_number(answer, Root ? std::sqrt(variance) : variance);
}

constexpr Aggregate kAggregates[] = {
    {"jet_first", 2, first_step, kept},
    {"jet_only", 1, only_step, kept},
    {"jet_last", 2, last_step, kept},
    {"jet_stdev", 1, spread_step, spread<false, true>},
    {"jet_stdevp", 1, spread_step, spread<true, true>},
    {"jet_var", 1, spread_step, spread<false, false>},
    {"jet_varp", 1, spread_step, spread<true, false>},
};

}  // namespace

std::span<const Aggregate> aggregates() {
  return kAggregates;
}

}  // namespace rk::jetsql
