#include "adapters/odbc/held_recordset.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "adapters/odbc/failure.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::odbc {
namespace {

// Bytes of rows that one record set holds: far beyond any list that a page shows.
constexpr std::size_t kHeldBytes = std::size_t{256} << 20;

constexpr std::int64_t kUnknownPosition = -1;
constexpr std::int64_t kPositionBefore = -2;
constexpr std::int64_t kPositionPast = -3;

constexpr KnownError kRowGone{-2147217864,
                              "The row cannot be changed: it is no longer in the table.",
                              errors::kDatabaseSource};

std::size_t bytes_of(const RowValues& row) {
  std::size_t bytes = row.size() * sizeof(Value);
  for (const Value& value : row) {
    if (value.is_text()) bytes += value.as_view().size();
    if (value.is_array()) bytes += value.as_array().bytes().size();
  }
  return bytes;
}

}  // namespace

HeldRecordset::HeldRecordset(Session& session, const void* owner, Query query,
                             std::unique_ptr<Statement> statement, bool has_run,
                             platform::CursorType cursor, platform::LockType lock,
                             std::unique_ptr<Trace> trace)
    : Rowset(session, owner, std::move(query), std::move(trace)),
      statement_(std::move(statement)),
      has_run_(has_run),
      writable_(lock != platform::LockType::ReadOnly),
      forward_only_(cursor == platform::CursorType::ForwardOnly) {
  columns_ = shown_columns(query_, statement_->columns());
}

HeldRecordset::~HeldRecordset() {
  HeldRecordset::shut();
}

void HeldRecordset::shut() noexcept {
  statement_.reset();
  edit_.reset();
  table_.reset();
  Rowset::shut();
}

void HeldRecordset::close() {
  check_open();
  if (edit_) raise(errors::kNotAllowedInContext);
  shut();
}

void HeldRecordset::read_rows() {
  check_open();
  const std::unique_ptr<Statement> reading = std::move(statement_);  // once, also where it fails
  if (reading == nullptr) return;
  const Trace::Timing timing(trace_.get());
  if (!has_run_) reading->run_prepared(query_.values);
  std::size_t bytes = 0;
  while (reading->next()) {
    rows_.push_back(read_row(*reading));
    bytes += bytes_of(rows_.back());
    if (bytes > kHeldBytes) {
      rows_.clear();
      raise_unsupported(
          "The record set has more rows than one that moves to and fro may hold (256 MB): open it "
          "forward-only and read-only, or ask for less");
    }
  }
  if (shows_added()) return place_added_row();
  if (place_ == Place::Row) go_to(position_);
}

// It stands behind the others, whatever their order.
void HeldRecordset::place_added_row() {
  const RowValues added = *std::exchange(added_, std::nullopt);
  const auto same = [&](const RowValues& row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (joined_text(row[i]) != joined_text(added[i])) return false;
    }
    return true;
  };
  const auto read = std::find_if(rows_.rbegin(), rows_.rend(), same);
  if (read != rows_.rend()) rows_.erase(std::next(read).base());
  rows_.push_back(added);
  go_to(count());
}

// Rows that nobody has asked for are not read ahead, unless the statement has run already.
void HeldRecordset::settle() {
  if (statement_ != nullptr && has_run_) read_rows();
}

bool HeldRecordset::bof() const {
  if (shows_added()) return false;
  load();
  return place_ == Place::Before || (place_ == Place::Past && rows_.empty());
}

bool HeldRecordset::eof() const {
  if (shows_added()) return false;
  load();
  return place_ == Place::Past || (place_ == Place::Before && rows_.empty());
}

void HeldRecordset::go_to(std::int64_t position) {
  position_ = std::clamp<std::int64_t>(position, 0, count() + 1);
  place_ = position_ < 1 ? Place::Before : position_ > count() ? Place::Past : Place::Row;
}

void HeldRecordset::leave_row() {
  check_open();
  if (edit_) update();
}

RowValues& HeldRecordset::current_row() {
  check_open();
  if (shows_added()) return *added_;
  read_rows();
  if (place_ != Place::Row) raise(errors::kNoCurrentRecord);
  return rows_[static_cast<std::size_t>(position_ - 1)];
}

std::int64_t HeldRecordset::position_from(Origin origin) const {
  if (origin == Origin::First) return 1;
  if (origin == Origin::Last) return count();
  return position_;
}

void HeldRecordset::move(std::int64_t rows, Origin origin) {
  leave_row();
  read_rows();
  if (forward_only_ && (rows < 0 || origin == Origin::Last)) raise(errors::kFeatureNotAvailable);
  const bool from_current = origin == Origin::Current;
  const bool stuck = from_current &&
                     ((rows < 0 && place_ == Place::Before) || (rows > 0 && place_ == Place::Past));
  if (stuck || rows_.empty()) raise(errors::kNoCurrentRecord);
  // Behind a removed row stands already the next one.
  const std::int64_t skipped = from_current && place_ == Place::Removed && rows > 0 ? 1 : 0;
  const std::int64_t farthest = std::numeric_limits<std::int32_t>::max();
  go_to(position_from(origin) - skipped + std::clamp(rows, -farthest, farthest));
}

void HeldRecordset::move_next() {
  leave_row();
  read_rows();
  if (place_ == Place::Past) raise(errors::kNoCurrentRecord);
  go_to(place_ == Place::Removed ? position_ : position_ + 1);
}

void HeldRecordset::move_previous() {
  move(-1, Origin::Current);
}

void HeldRecordset::move_first() {
  leave_row();
  read_rows();
  go_to(1);
  current_row();
}

void HeldRecordset::move_last() {
  move(0, Origin::Last);
}

std::int64_t HeldRecordset::record_count() {
  read_rows();
  return forward_only_ ? -1 : count();
}

std::int32_t HeldRecordset::page_count() {
  const std::int64_t rows = record_count();
  if (rows < 0) return -1;
  return static_cast<std::int32_t>((rows + page_size() - 1) / page_size());
}

std::int32_t HeldRecordset::absolute_page() {
  const std::int64_t position = absolute_position();
  if (position < 1) return static_cast<std::int32_t>(position);
  return static_cast<std::int32_t>((position - 1) / page_size() + 1);
}

void HeldRecordset::set_absolute_page(std::int32_t page) {
  leave_row();
  read_rows();
  if (forward_only_) raise(errors::kFeatureNotAvailable);
  if (rows_.empty()) raise(errors::kNoCurrentRecord);
  if (page < 1) raise(errors::kInvalidArgument);
  go_to((static_cast<std::int64_t>(page) - 1) * page_size() + 1);
}

std::int64_t HeldRecordset::absolute_position() {
  read_rows();
  if (forward_only_ || rows_.empty()) return kUnknownPosition;
  switch (place_) {
    case Place::Before:
      return kPositionBefore;
    case Place::Past:
      return kPositionPast;
    case Place::Removed:
      return kUnknownPosition;
    case Place::Row:
      break;
  }
  return position_;
}

void HeldRecordset::set_absolute_position(std::int64_t row) {
  leave_row();
  read_rows();
  if (forward_only_) raise(errors::kFeatureNotAvailable);
  if (rows_.empty()) raise(errors::kNoCurrentRecord);
  if (row < 1) raise(errors::kInvalidArgument);
  go_to(row);
}

// ---- Fields and what is written to them

Value HeldRecordset::field(std::size_t ordinal) {
  column(ordinal);
  if (edit_ && (*edit_)[ordinal]) return *(*edit_)[ordinal];
  return original(ordinal);
}

Value HeldRecordset::original(std::size_t ordinal) {
  column(ordinal);
  if (edit_ && adding_) return Value::null();
  return current_row()[ordinal];
}

platform::ColumnTraits HeldRecordset::traits(std::size_t ordinal) const {
  platform::ColumnTraits traits = Rowset::traits(ordinal);
  traits.writable = writable_ && (query_.translated ? !query_.shown[ordinal].base_column.empty()
                                                    : !table_of_text(query_.sql).empty());
  return traits;
}

void HeldRecordset::check_writable() const {
  check_open();
  if (!writable_) raise(errors::kFeatureNotAvailable);
}

EditedTable& HeldRecordset::table() {
  if (table_ == nullptr) table_ = std::make_unique<EditedTable>(*session_, query_, columns_);
  return *table_;
}

void HeldRecordset::add_new() {
  check_writable();
  leave_row();
  table();
  edit_.emplace(columns_.size());
  adding_ = true;
}

void HeldRecordset::set_field(std::size_t ordinal, const Value& value) {
  check_writable();
  column(ordinal);
  if (!table().has(ordinal)) raise(errors::kFeatureNotAvailable);
  if (!edit_) {
    table().key_of(current_row());
    edit_.emplace(columns_.size());
    adding_ = false;
  }
  (*edit_)[ordinal] = value;
}

void HeldRecordset::update() {
  check_writable();
  if (!edit_) return;
  const Trace::Timing timing(trace_.get());
  if (adding_) {
    store_new_row();
  } else {
    store_changed_row();
  }
  edit_.reset();
}

void HeldRecordset::cancel_update() {
  check_writable();
  edit_.reset();
}

void HeldRecordset::store_new_row() {
  const auto key = table().insert(*edit_);
  std::optional<RowValues> stored = key ? table().read(*key) : std::nullopt;
  if (!stored) {
    stored.emplace(columns_.size(), Value::null());
    for (std::size_t i = 0; i < edit_->size(); ++i) {
      if ((*edit_)[i]) (*stored)[i] = *(*edit_)[i];
    }
  }
  if (statement_ != nullptr) {
    added_ = std::move(*stored);
    return;
  }
  rows_.push_back(std::move(*stored));
  go_to(count());
}

void HeldRecordset::store_changed_row() {
  const std::vector<Value> key = table().key_of(current_row());
  if (!table().update(*edit_, key)) raise(kRowGone);
  // A key that was changed names the row from now on.
  RowValues changed = current_row();
  for (std::size_t i = 0; i < edit_->size(); ++i) {
    if ((*edit_)[i]) changed[i] = *(*edit_)[i];
  }
  const auto stored = table().read(table().key_of(changed));
  RowValues& row = current_row();
  for (std::size_t i = 0; stored && i < row.size(); ++i) {
    if (table().has(i)) row[i] = (*stored)[i];
  }
}

void HeldRecordset::remove() {
  check_writable();
  edit_.reset();
  if (!table().remove(table().key_of(current_row()))) raise(kRowGone);
  if (shows_added()) {
    added_.reset();
    place_ = Place::Past;
    return;
  }
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(position_ - 1));
  place_ = Place::Removed;
}

}  // namespace rk::odbc
