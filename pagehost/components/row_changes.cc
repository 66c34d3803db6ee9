#include "pagehost/components/row_changes.h"

#include <iterator>
#include <utility>

namespace rk::pagehost {
namespace {

void restore(RowValues& values, const RowChange& change) {
  for (const auto& [column, before] : change.before) values[column] = before;
}

}  // namespace

void RowChanges::note_added() {
  steps_.push_back({true, rows_.size(), {}, {}});
  rows_.emplace_back().added = true;
}

void RowChanges::note_set(std::size_t row, std::size_t column, const Value& before) {
  rows_[row].before.emplace(column, before);  // the first one counts
}

void RowChanges::note_removed(std::size_t row, const RowValues& values) {
  steps_.push_back({false, row, values, std::move(rows_[row])});
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
}

std::vector<RowValues> RowChanges::removed() const {
  std::vector<RowValues> out;
  for (const Step& step : steps_) {
    if (step.added || step.change.added) continue;
    restore(out.emplace_back(step.values), step.change);
  }
  return out;
}

void RowChanges::forget() {
  steps_.clear();
  rows_.assign(rows_.size(), RowChange());
}

// A row that was added goes on as one of the database. It was put behind all rows of its time, so
// that the steps before it keep their places, and those after it were taken with the row there.
void RowChanges::forget(std::size_t row) {
  const bool added = rows_[row].added;
  rows_[row] = RowChange();
  std::size_t place = row;
  for (auto step = steps_.rbegin(); added && step != steps_.rend(); ++step) {
    if (step->added && step->row == place) {
      steps_.erase(std::next(step).base());
      return;
    }
    if (!step->added && step->row <= place) ++place;
  }
}

void RowChanges::forget_conflicts() {
  for (RowChange& each : rows_) each.in_conflict = false;
}

void RowChanges::undo(std::vector<RowValues>& rows) {
  for (; !steps_.empty(); steps_.pop_back()) {
    Step& step = steps_.back();
    const auto place = static_cast<std::ptrdiff_t>(step.row);
    if (step.added) {
      rows.erase(rows.begin() + place);
      rows_.erase(rows_.begin() + place);
    } else {
      rows.insert(rows.begin() + place, std::move(step.values));
      rows_.insert(rows_.begin() + place, std::move(step.change));
    }
  }
  for (std::size_t i = 0; i < rows.size(); ++i) restore(rows[i], rows_[i]);
  forget();
}

}  // namespace rk::pagehost
