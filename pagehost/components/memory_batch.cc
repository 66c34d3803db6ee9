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

// A statement that must reach one row.
void run(platform::Connection& connection, const platform::SqlText& sql) {
  std::int64_t affected = 0;
  connection.execute(sql, &affected);
  if (affected != 1) raise(kRowChanged);
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

void MemoryRows::store_batch(platform::Connection& connection) {
  update();
  std::vector<platform::ColumnTraits> origins;
  for (const MemoryColumn& column : columns_) origins.push_back(column.origin);
  auto stored = rows_;  // with the numbers that the database gives to new rows
  Transaction transaction(connection);
  for (const RowValues& row : changes_->removed()) run(connection, delete_text(origins, row));
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const RowChange& change = changes_->of(i);
    if (change.added) {
      store_new_row(connection, stored[i], change, origins);
    } else if (!change.is_none()) {
      run(connection, update_text(origins, rows_[i], change));
    }
  }
  transaction.keep();
  rows_ = std::move(stored);
  changes_->forget();
}

void MemoryRows::store_new_row(platform::Connection& connection, RowValues& row,
                               const RowChange& change,
                               const std::vector<platform::ColumnTraits>& origins) {
  run(connection, insert_text(origins, row, change));
  for (std::size_t i = 0; i < origins.size(); ++i) {
    if (!origins[i].counter || !origins[i].writable || !row[i].is_null()) continue;
    row[i] = connection.execute("Select @@Identity")->field(std::size_t{0});
  }
}

void MemoryRows::cancel_batch() {
  edit_.reset();
  changes_->undo(rows_);
  removed_ = false;
  at_ = 0;
}

}  // namespace rk::pagehost
