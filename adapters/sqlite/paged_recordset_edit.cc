// AddNew, Update, CancelUpdate and Delete of a paged record set.
#include <sqlite3.h>

#include <optional>
#include <unordered_set>
#include <utility>

#include "adapters/sqlite/field_values.h"
#include "adapters/sqlite/paged_recordset.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::sqlite {
namespace {

constexpr KnownError kRowGone{-2147217864,
                              "The row cannot be changed: it is no longer in the table."};

}  // namespace

void PagedRecordset::check_writable(bool needs_row) const {
  check_open();
  if (!writable_ || (needs_row && !keyed_)) raise(errors::kFeatureNotAvailable);
}

std::int64_t PagedRecordset::current_key() {
  if (place_ == Place::Added) return added_key_;
  const Cell& key = buffer_.cell(current_row(), field_count());
  // The row of an outer join's other side: the table has none there.
  if (key.kind == Cell::Kind::Null) raise(errors::kFeatureNotAvailable);
  return key.integer;
}

// Reads a row of the table into added_: as the Select shows it, else the table's own columns of it.
// False where there is no such row.
bool PagedRecordset::read_row(std::int64_t key) {
  added_whole_ = false;
  if (plan_->translation.row_tail.empty()) return table_.read(key, added_);
  {
    const Reading reading(*session_);
    Handle& handle = session_->handle();
    const Lease lease = handle.lease(plan_, kRow);
    bind_values(lease.statement(), plan_->translation.parameters, values_);
    sqlite3_bind_int64(lease.statement(), plan_->translation.window_count(), key);
    added_.begin(width());
    added_whole_ = handle.step(lease.statement());
    if (added_whole_) added_.add(lease.statement());
  }
  return added_whole_ || table_.read(key, added_);
}

platform::ColumnTraits PagedRecordset::traits(std::size_t ordinal) const {
  platform::ColumnTraits traits = Rowset::traits(ordinal);
  traits.writable = writable_ && !column(ordinal).base_column.empty();
  return traits;
}

Value PagedRecordset::field(std::size_t ordinal) {
  if (edit_ != nullptr) {
    column(ordinal);
    if (edit_->values[ordinal]) return *edit_->values[ordinal];
    if (edit_->adding) return Value::null();
  }
  return original(ordinal);
}

Value PagedRecordset::original(std::size_t ordinal) {
  if (edit_ != nullptr && edit_->adding) return Value::null();
  if (place_ != Place::Added) return Rowset::field(ordinal);
  const jetsql::Type type = column(ordinal).type;
  show_added_row();
  return field_value(added_, added_.cell(0, ordinal), type);
}

bool PagedRecordset::append_field_text(std::size_t ordinal, std::string& out) {
  if (edit_ == nullptr && place_ != Place::Added) return Rowset::append_field_text(ordinal, out);
  const Value value = field(ordinal);
  append_text(out, value);
  return !value.is_null();
}

// The row as the table took it, with its defaults and its number, read when it is asked for.
void PagedRecordset::show_added_row() {
  check_open();
  if (added_read_) return;
  if (!read_row(added_key_)) raise(errors::kNoCurrentRecord);
  added_read_ = true;
}

void PagedRecordset::add_new() {
  check_writable(false);
  leave_row();
  edit_ = std::make_unique<RowEdit>();
  edit_->adding = true;
  edit_->values.resize(field_count());
}

void PagedRecordset::set_field(std::size_t ordinal, const Value& value) {
  check_writable(false);
  if (column(ordinal).base_column.empty()) raise(errors::kFeatureNotAvailable);
  if (edit_ == nullptr) {
    check_writable(true);
    current_key();
    edit_ = std::make_unique<RowEdit>();
    edit_->values.resize(field_count());
  }
  edit_->values[ordinal] = value;
}

void PagedRecordset::update() {
  check_writable(false);
  if (edit_ == nullptr) return;
  if (edit_->adding) {
    store_new_row();
  } else {
    store_changed_row();
  }
}

void PagedRecordset::cancel_update() {
  check_writable(false);
  edit_.reset();
}

void PagedRecordset::store_new_row() {
  {
    Change change(*session_, false);
    added_key_ = table_.insert(*edit_);
    change.keep();
  }
  edit_.reset();
  added_read_ = false;
  place_ = Place::Added;
  if (total_ >= 0) ++total_;
  const bool unread = !complete_ && total_ < 0 && rows_in_buffer() == 0;
  if (unread && keyed_ && !forward_only_) own_rows_.push_back(added_key_);
  if (!complete_ || !keyed_) return;
  // It stands behind the others from now on, whatever their order.
  show_added_row();
  buffer_.add(added_, 0);
  go_to(total_);
}

// Rows that were added stand behind all others, as if those had been read before, whether the
// Select finds them or not.
void PagedRecordset::take_in_own_rows() {
  if (own_rows_.empty()) return;
  const std::vector<std::int64_t> own = std::exchange(own_rows_, {});
  const std::optional<RowBuffer> found = all_rows();
  if (!found) return;
  const std::unordered_set<std::int64_t> stored_last(own.begin(), own.end());
  buffer_.begin(width());
  for (std::size_t row = 0; row < found->rows(); ++row) {
    const Cell& key = found->cell(row, field_count());
    const bool is_own = key.kind != Cell::Kind::Null && stored_last.contains(key.integer);
    if (!is_own) buffer_.add(*found, row);
  }
  for (const std::int64_t key : own) {
    if (read_row(key)) buffer_.add(added_, 0);
  }
  first_ = 1;
  complete_ = true;
  total_ = rows_in_buffer();
  added_read_ = false;
  if (place_ == Place::Added) go_to(total_);
}

void PagedRecordset::store_changed_row() {
  std::int64_t key = 0;
  {
    Change change(*session_, false);
    key = current_key();
    if (!table_.update(*edit_, key)) raise(kRowGone);
    change.keep();
  }
  edit_.reset();
  added_read_ = false;
  if (place_ == Place::Added || !read_row(key)) return;
  const std::size_t row = current_row();
  for (std::size_t i = 0; i < field_count(); ++i) {
    if (added_whole_ || !column(i).base_column.empty()) buffer_.replace(row, i, added_, 0);
  }
}

void PagedRecordset::remove() {
  check_writable(true);
  edit_.reset();
  if (place_ != Place::Added) current_row();
  {
    Change change(*session_, false);
    if (!table_.remove(current_key())) raise(kRowGone);
    change.keep();
  }
  if (total_ > 0) --total_;
  if (place_ == Place::Added) {
    if (!own_rows_.empty()) own_rows_.pop_back();
    place_ = Place::Past;
    return;
  }
  buffer_.remove(current_row());
  place_ = Place::Removed;
}

}  // namespace rk::sqlite
