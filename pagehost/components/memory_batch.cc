// The pending changes of rows in memory: how they are shown, stored and cancelled.
#include <utility>

#include "pagehost/components/batch_texts.h"
#include "pagehost/components/memory_rows.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

constexpr KnownError kRowChanged{-2147217864,
                                 "Row cannot be located for updating. Some values may have been "
                                 "changed since it was last read."};

// As scripts number what became of a row since it was read.
constexpr std::int32_t kAsRead = 8;
constexpr std::int32_t kNew = 1;
constexpr std::int32_t kModified = 2;

// Undone unless it is kept.
class Transaction {
 public:
  explicit Transaction(platform::Connection& connection) : connection_(connection) {
    connection_.begin_transaction();
  }
  ~Transaction() {
    if (!kept_) connection_.roll_back_transaction();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void keep() {
    kept_ = true;
    connection_.commit_transaction();
  }

 private:
  platform::Connection& connection_;
  bool kept_ = false;
};

// Whether the statement reached the one row that it is for.
bool reaches_one(platform::Connection& connection, const platform::SqlText& sql) {
  std::int64_t affected = 0;
  connection.execute(sql, &affected);
  return affected == 1;
}

}  // namespace

std::int32_t MemoryRows::status() const {
  if (!changes_) return 0;
  const RowChange& change = changes_->of(current());
  return change.added ? kNew : change.is_none() ? kAsRead : kModified;
}

std::vector<std::int64_t> MemoryRows::changed_positions() const {
  std::vector<std::int64_t> out;
  for (std::size_t i = 0; changes_ && i < rows_.size(); ++i) {
    if (!changes_->of(i).is_none()) out.push_back(static_cast<std::int64_t>(i) + 1);
  }
  return out;
}

std::vector<std::int64_t> MemoryRows::conflict_positions() const {
  std::vector<std::int64_t> out;
  for (std::size_t i = 0; changes_ && i < rows_.size(); ++i) {
    if (changes_->of(i).in_conflict) out.push_back(static_cast<std::int64_t>(i) + 1);
  }
  return out;
}

// Goes on past a row that is not found, so that all of them are known afterwards.
void MemoryRows::store_batch(platform::Connection& connection) {
  update();
  changes_->forget_conflicts();
  const Origins origins = this->origins();
  auto stored = rows_;  // with the numbers that the database gives to new rows
  Transaction transaction(connection);
  bool all_found = store_removed(connection, origins);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (!store_row(connection, origins, i, stored[i])) all_found = false;
  }
  if (!all_found) raise(kRowChanged);
  transaction.keep();
  rows_ = std::move(stored);
  changes_->forget();
}

void MemoryRows::store_current(platform::Connection& connection) {
  update();
  const std::size_t at = current();
  changes_->forget_conflicts();
  RowValues stored = rows_[at];
  Transaction transaction(connection);
  if (!store_row(connection, origins(), at, stored)) raise(kRowChanged);
  transaction.keep();
  rows_[at] = std::move(stored);
  changes_->forget(at);
}

MemoryRows::Origins MemoryRows::origins() const {
  Origins out;
  for (const MemoryColumn& column : columns_) out.push_back(column.origin);
  return out;
}

// Whether each of them was there as it was read.
bool MemoryRows::store_removed(platform::Connection& connection, const Origins& origins) const {
  bool all_found = true;
  for (const RowValues& row : changes_->removed()) {
    if (!reaches_one(connection, delete_text(origins, row))) all_found = false;
  }
  return all_found;
}

// The row counts as one in conflict until it is stored, and stays one where the database refuses.
bool MemoryRows::store_row(platform::Connection& connection, const Origins& origins, std::size_t at,
                           RowValues& stored) {
  const RowChange& change = changes_->of(at);
  if (change.is_none()) return true;
  changes_->mark_conflict(at, true);
  const bool found = change.added
                         ? store_new_row(connection, stored, change, origins)
                         : reaches_one(connection, update_text(origins, rows_[at], change));
  changes_->mark_conflict(at, !found);
  return found;
}

bool MemoryRows::store_new_row(platform::Connection& connection, RowValues& row,
                               const RowChange& change, const Origins& origins) {
  if (!reaches_one(connection, insert_text(origins, row, change))) return false;
  for (std::size_t i = 0; i < origins.size(); ++i) {
    if (!origins[i].counter || !origins[i].writable || !row[i].is_null()) continue;
    row[i] = connection.execute("Select @@Identity")->field(std::size_t{0});
  }
  return true;
}

void MemoryRows::cancel_batch() {
  edit_.reset();
  changes_->undo(rows_);
  removed_ = false;
  at_ = 0;
}

}  // namespace rk::pagehost
