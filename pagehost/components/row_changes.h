// RowChanges: what a page changed in rows that it holds in memory, since they were read or stored
// last: the pending batch of a record set. It names rows by their places among those rows, which it
// is told of in the order of their changes. The page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_ROW_CHANGES_H_
#define RK_PAGEHOST_COMPONENTS_ROW_CHANGES_H_

#include <cstddef>
#include <map>
#include <vector>

#include "value/value.h"

namespace rk::pagehost {

using RowValues = std::vector<Value>;

struct RowChange {
  bool added = false;
  std::map<std::size_t, Value> before;  // by the ordinals of the columns that were set

  bool in_conflict = false;  // the last store could not write it

  bool is_none() const { return !added && before.empty(); }
};

class RowChanges {
 public:
  explicit RowChanges(std::size_t rows) : rows_(rows) {}

  void note_added();  // behind all others
  void note_set(std::size_t row, std::size_t column, const Value& before);
  void note_removed(std::size_t row, const RowValues& values);

  const RowChange& of(std::size_t row) const { return rows_[row]; }
  // The rows of the database that were removed, as they were read.
  std::vector<RowValues> removed() const;

  void mark_conflict(std::size_t row, bool in_conflict) { rows_[row].in_conflict = in_conflict; }
  void forget_conflicts();

  // Everything was stored.
  void forget();
  // This row alone was.
  void forget(std::size_t row);
  // Gives `rows` back as they were.
  void undo(std::vector<RowValues>& rows);

 private:
  struct Step {
    bool added;
    std::size_t row;
    RowValues values;  // of a removed one
    RowChange change;
  };

  std::vector<RowChange> rows_;
  std::vector<Step> steps_;  // rows added and removed, in order
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_ROW_CHANGES_H_
