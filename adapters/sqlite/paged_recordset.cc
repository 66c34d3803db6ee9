#include "adapters/sqlite/paged_recordset.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "value/script_error.h"

namespace rk::sqlite {
namespace {

// Rows of the first window where the page named no page size.
constexpr std::int64_t kFirstWindow = 64;
// A walk's windows grow by this, so that skipping the rows before a window costs no more than
// reading them.
constexpr std::int64_t kWindowGrowth = 4;
// Rows of one window that is read at once, for its memory.
constexpr std::int64_t kLongestWindow = 16384;
// A piece of a window that is read in pieces ends at either.
constexpr std::int64_t kPieceRows = 256;
constexpr std::size_t kPieceBytes = std::size_t{256} << 10;
// A larger result is not read ahead of the page's own writes: its memory would be the page's end.
constexpr std::size_t kSettledRows = 200'000;

constexpr std::int64_t kAllRows = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kUnknownPosition = -1;
constexpr std::int64_t kPositionBefore = -2;
constexpr std::int64_t kPositionPast = -3;

using platform::LockType;

}  // namespace

PagedRecordset::PagedRecordset(Session& session, const void* owner, Ref<Plan> plan,
                               RunValues values, platform::CursorType cursor,
                               platform::LockType lock, std::unique_ptr<TraceEntry> trace)
    : Rowset(session, owner, std::move(plan), std::move(trace)),
      values_(std::move(values)),
      writable_(lock != LockType::ReadOnly && !plan_->translation.table.empty()),
      keyed_(writable_ && !plan_->translation.row_key.empty()),
      forward_only_(cursor == platform::CursorType::ForwardOnly),
      next_rows_(kFirstWindow),
      table_(session, plan_->translation) {
  const Timing timing(*this);
  session_->handle().lease(plan_, keyed_ ? kKeyedWindow : kWindow).release();
  buffer_.begin(width());
}

PagedRecordset::~PagedRecordset() {
  PagedRecordset::shut();
}

void PagedRecordset::shut() noexcept {
  running_.release();
  edit_.reset();
  table_.release();
  Rowset::shut();
}

void PagedRecordset::close() {
  check_open();
  if (edit_ != nullptr) raise(errors::kNotAllowedInContext);
  shut();
}

// ---- Windows

void PagedRecordset::load(std::int64_t position) {
  take_in_own_rows();
  if (complete_ || (total_ >= 0 && position > total_)) return;
  if (running_ && position == first_ + rows_in_buffer()) {
    first_ = position;
    read_piece();
    return;
  }
  running_.release();
  const Window window = window_for(position);
  // Pieces are for the way forward: the first one must hold the row asked for.
  open_window(window, session_->in_scope() && window.offset == position - 1);
}

PagedRecordset::Window PagedRecordset::window_for(std::int64_t position) {
  const bool walks_on = rows_in_buffer() > 0 && position == first_ + rows_in_buffer();
  const bool walks_back = rows_in_buffer() > 0 && position == first_ - 1;
  if (walks_on || walks_back) {
    next_rows_ = std::min(next_rows_ * kWindowGrowth, kLongestWindow);
  } else {
    next_rows_ = page_size_set_ ? page_size_ : kFirstWindow;
  }
  if (walks_back) return {std::max<std::int64_t>(position - next_rows_, 0), next_rows_};
  const bool from_start = rows_in_buffer() == 0 && position == 1 && !page_size_set_;
  if ((walks_on || from_start) && session_->in_scope()) return {position - 1, kAllRows};
  if (!std::exchange(backward_, false)) return {position - 1, next_rows_};
  const std::int64_t begin = std::max<std::int64_t>(position - next_rows_, 0);
  return {begin, position + next_rows_ - 1 - begin};
}

void PagedRecordset::open_window(Window window, bool in_pieces) {
  in_pieces_ = in_pieces;
  if (!in_pieces_) window.rows = std::min(window.rows, kLongestWindow);
  const Reading reading(*session_);
  if (is_nearer_the_end(window)) return read_from_the_end(window);
  // OPTIMIZATION: all rows from the first on are asked for without a window, which the engine sorts
  // faster and only once; a walk within a scope stops where it likes, as the pieces do.
  const bool whole = window.offset == 0 && window.rows == kAllRows;
  const Form all = keyed_ ? kKeyed : kWhole;
  bind_window(whole ? all : keyed_ ? kKeyedWindow : kWindow, window);
  first_ = window.offset + 1;
  read_piece();
}

// OPTIMIZATION: rows before a window are skipped one by one, so where fewer lie behind it, it is
// read in the reversed order. Safe while the rows are those that were counted: the window's place
// from the end follows from the count.
bool PagedRecordset::is_nearer_the_end(Window window) const {
  return plan_->translation.can_reverse() && window.rows <= kLongestWindow &&
         window.offset > total_ - window.offset && total_ > window.offset &&
         !session_->in_transaction() && counted_in_ == session_->handle().change_sign();
}

void PagedRecordset::read_from_the_end(Window window) {
  in_pieces_ = false;
  const std::int64_t rows = std::min(window.rows, total_ - window.offset);
  bind_window(keyed_ ? kKeyedReversed : kReversed, {total_ - window.offset - rows, rows});
  first_ = window.offset + 1;
  read_piece();
  buffer_.reverse();
}

void PagedRecordset::bind_window(Form form, Window window) {
  const auto& translation = plan_->translation;
  running_ = session_->handle().lease(plan_, form);
  sqlite3_stmt* statement = running_.statement();
  bind_values(statement, translation.parameters, values_);
  if (form != kWhole && form != kKeyed) {
    sqlite3_bind_int64(statement, translation.window_count(), window.rows);
    sqlite3_bind_int64(statement, translation.window_offset(), window.offset);
  }
  pending_ = window.rows;
}

void PagedRecordset::read_piece() {
  buffer_.begin(width());
  const Timing timing(*this);
  Handle& handle = session_->handle();
  Lease running = std::move(running_);  // given back where a step fails
  while (pending_ > 0) {
    if (!handle.step(running.statement())) {
      note_end();
      return;
    }
    add_row(running.statement());
    --pending_;
    const bool full = rows_in_buffer() == kPieceRows || buffer_.bytes() >= kPieceBytes;
    if (full && pending_ > 0 && in_pieces_) {
      running_ = std::move(running);
      return;
    }
  }
}

// The last row of all was read.
void PagedRecordset::note_end() {
  complete_ = first_ == 1;
  if (total_ < 0 && (complete_ || rows_in_buffer() > 0)) total_ = first_ - 1 + rows_in_buffer();
  if (complete_) total_ = rows_in_buffer();
}

void PagedRecordset::settle() {
  const bool untouched = rows_in_buffer() == 0 && total_ < 0;
  const bool only_adds = place_ == Place::Added || (edit_ != nullptr && edit_->adding);
  if (complete_ || (untouched && only_adds)) return;
  running_.release();
  std::optional<RowBuffer> all = all_rows();
  if (!all) return;
  buffer_ = std::move(*all);
  first_ = 1;
  complete_ = true;
  total_ = rows_in_buffer();
}

// Nothing where there are too many.
std::optional<RowBuffer> PagedRecordset::all_rows() {
  const Reading reading(*session_);
  RowBuffer all;
  all.begin(width());
  Handle& handle = session_->handle();
  const Lease lease = handle.lease(plan_, keyed_ ? kKeyed : kWhole);
  bind_values(lease.statement(), plan_->translation.parameters, values_);
  while (handle.step(lease.statement())) {
    if (all.rows() == kSettledRows) return std::nullopt;
    all.add(lease.statement());
  }
  return all;
}

// ---- Where it stands

// Afterwards the current row lies in the buffer, or place_ says that there is none.
void PagedRecordset::resolve() {
  check_open();
  if (place_ != Place::Row || holds(position_)) return;
  load(position_);
  if (!holds(position_)) place_ = Place::Past;
}

std::size_t PagedRecordset::current_row() {
  resolve();
  if (place_ != Place::Row) raise(errors::kNoCurrentRecord);
  return static_cast<std::size_t>(position_ - first_);
}

// Asking where it stands may have to read rows, which is no change that a caller can see.
bool PagedRecordset::bof() const {
  const_cast<PagedRecordset*>(this)->resolve();
  return place_ == Place::Before || (place_ == Place::Past && total_ == 0);
}

bool PagedRecordset::eof() const {
  const_cast<PagedRecordset*>(this)->resolve();
  return place_ == Place::Past || (place_ == Place::Before && total_ == 0);
}

void PagedRecordset::leave_row() {
  check_open();
  if (edit_ != nullptr) update();
}

void PagedRecordset::move_next() {
  leave_row();
  switch (place_) {
    case Place::Row:
      current_row();
      ++position_;
      break;
    case Place::Removed:
      place_ = Place::Row;  // the next row took the place of the one removed
      break;
    case Place::Before:
      go_to(1);
      break;
    case Place::Added:
      place_ = Place::Past;
      break;
    case Place::Past:
      raise(errors::kNoCurrentRecord);
  }
  // Whether a row follows is looked at when it is asked for: a page that showed its rows does not.
}

void PagedRecordset::move_previous() {
  move(-1, Origin::Current);
}

void PagedRecordset::move_first() {
  leave_row();
  go_to(1);
  current_row();
}

void PagedRecordset::move_last() {
  move(0, Origin::Last);
}

void PagedRecordset::go_to(std::int64_t position) {
  place_ = position < 1 ? Place::Before : Place::Row;
  position_ = position;
}

// The number of the row that a move counts from; 0 before the first, one more than there are rows
// past the last.
std::int64_t PagedRecordset::position_from(Origin origin) {
  if (origin == Origin::First) return 1;
  if (origin == Origin::Last) return count_rows();
  resolve();
  if (place_ == Place::Before) return 0;
  if (place_ == Place::Past) return count_rows() + 1;
  if (place_ == Place::Added) return count_rows();
  return position_;
}

void PagedRecordset::move(std::int64_t rows, Origin origin) {
  leave_row();
  if (forward_only_ && (rows < 0 || origin == Origin::Last)) raise(errors::kFeatureNotAvailable);
  // OPTIMIZATION: the row that was added last is the last one, which needs no reading of the
  // others.
  const bool stays = origin == Origin::Last && rows == 0 && place_ == Place::Added;
  if (stays && !own_rows_.empty()) return;
  const std::int64_t from = position_from(origin);
  const bool from_current = origin == Origin::Current;
  const bool stuck = from_current &&
                     ((rows < 0 && place_ == Place::Before) || (rows > 0 && place_ == Place::Past));
  if (stuck || bof_and_eof()) raise(errors::kNoCurrentRecord);
  // Behind a removed row stands already the next one.
  const std::int64_t skipped = from_current && place_ == Place::Removed && rows > 0 ? 1 : 0;
  const std::int64_t farthest = std::numeric_limits<std::int32_t>::max();
  go_to(from - skipped + std::clamp(rows, -farthest, farthest));
  resolve();
}

// ---- Counts and pages

std::int64_t PagedRecordset::record_count() {
  check_open();
  return forward_only_ ? -1 : count_rows();
}

std::int64_t PagedRecordset::count_rows() {
  take_in_own_rows();
  if (total_ < 0) total_ = read_count();
  return total_;
}

std::int64_t PagedRecordset::read_count() {
  const Timing timing(*this);
  const Reading reading(*session_);
  Handle& handle = session_->handle();
  // Inside the page's transaction the sign says nothing of the page's own changes.
  const bool kept = plan_->only_literals && !session_->in_transaction();
  if (!session_->in_transaction()) counted_in_ = handle.change_sign();
  std::string key;
  if (kept) {
    append_key(key, values_.literals);
    const KeptCount* known = plan_->counts.find(key);
    if (known != nullptr && known->sign == handle.change_sign()) return known->rows;
  }
  const Lease lease = handle.lease(plan_, kCount);
  bind_values(lease.statement(), plan_->translation.parameters, values_);
  if (!handle.step(lease.statement())) return 0;
  const std::int64_t rows = sqlite3_column_int64(lease.statement(), 0);
  if (kept) plan_->keep_count(std::move(key), {handle.change_sign(), rows});
  return rows;
}

std::int32_t PagedRecordset::page_size() const {
  return page_size_;
}

void PagedRecordset::set_page_size(std::int32_t rows) {
  check_open();
  if (rows < 1) raise(errors::kInvalidArgument);
  page_size_ = rows;
  page_size_set_ = true;
}

std::int32_t PagedRecordset::page_count() {
  const std::int64_t rows = record_count();
  if (rows < 0) return -1;
  return static_cast<std::int32_t>((rows + page_size_ - 1) / page_size_);
}

std::int32_t PagedRecordset::absolute_page() {
  const std::int64_t position = absolute_position();
  if (position < 1) return static_cast<std::int32_t>(position);
  return static_cast<std::int32_t>((position - 1) / page_size_ + 1);
}

void PagedRecordset::set_absolute_page(std::int32_t page) {
  leave_row();
  if (forward_only_) raise(errors::kFeatureNotAvailable);
  if (count_rows() == 0) raise(errors::kNoCurrentRecord);
  if (page < 1) raise(errors::kInvalidArgument);
  go_to((static_cast<std::int64_t>(page) - 1) * page_size_ + 1);
  if (position_ > total_) place_ = Place::Past;
}

std::int64_t PagedRecordset::absolute_position() {
  resolve();
  if (forward_only_ || bof_and_eof()) return kUnknownPosition;
  switch (place_) {
    case Place::Before:
      return kPositionBefore;
    case Place::Past:
      return kPositionPast;
    case Place::Added:
      return count_rows();
    case Place::Removed:
      return kUnknownPosition;
    case Place::Row:
      break;
  }
  return position_;
}

void PagedRecordset::set_absolute_position(std::int64_t row) {
  leave_row();
  if (forward_only_) raise(errors::kFeatureNotAvailable);
  if (count_rows() == 0) raise(errors::kNoCurrentRecord);
  if (row < 1) raise(errors::kInvalidArgument);
  go_to(row);
  // Pages that begin at a row walk back from it as often as on.
  backward_ = true;
  if (position_ > total_) place_ = Place::Past;
}

}  // namespace rk::sqlite
