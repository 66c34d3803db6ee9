// Filter, Sort, Clone and Bookmark of a record set, sets without a connection, and batches.
#include <utility>

#include "pagehost/components/command_object.h"
#include "pagehost/components/recordset_object.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

constexpr std::int32_t kFilterNone = 0;
constexpr std::int32_t kFilterPending = 1;
constexpr std::int32_t kFilterConflicts = 5;
constexpr std::int32_t kLockReadOnly = 1;

std::int64_t bookmark_of(const Value& value) {
  return static_cast<std::int64_t>(to_double(value));
}

// The rows that UpdateBatch and CancelBatch take.
constexpr std::int32_t kCurrentRow = 1;
constexpr std::int32_t kAllRows = 3;

// A filter's rows alone are not offered.
void check_range(std::int32_t range, bool current_row_offered) {
  const bool offered = range == kAllRows || (current_row_offered && range == kCurrentRow);
  if (!offered) raise(errors::kFeatureNotAvailable);
}

// The rows in memory, at the row where the set stands.
std::unique_ptr<MemoryRows> held_copy(platform::Recordset& rows) {
  const std::int64_t position = rows.absolute_position();
  const bool past = rows.eof();
  const bool empty = past && rows.bof();
  auto held = MemoryRows::of(rows);
  if (position > 0) {
    held->set_absolute_position(position);
  } else if (!empty) {
    held->move(past ? 1 : -1,
               past ? platform::Recordset::Origin::Last : platform::Recordset::Origin::First);
  }
  return held;
}

}  // namespace

void RecordsetObject::take(std::unique_ptr<MemoryRows> rows) {
  memory_ = rows.get();
  rows_ = std::move(rows);
  column_types_.clear();
  rows_->set_page_size(page_size_);
  view_ = nullptr;
  cursor_type_ = static_cast<std::int32_t>(platform::CursorType::Static);
}

void RecordsetObject::part_from_connection() {
  auto parted = held_copy(rows());
  if (lock_type_ == kLockBatch) parted->begin_batch();
  std::exchange(rows_, nullptr)->close();
  take(std::move(parted));
  opened_ = nullptr;
}

// The rows of a batch are held in memory from its first change on: until then a large set is read
// as far as the page looks at it.
void RecordsetObject::hold_batch() {
  if (lock_type_ != kLockBatch || memory_ != nullptr) return;
  auto held = held_copy(rows());
  held->begin_batch();
  std::exchange(rows_, nullptr)->close();
  take(std::move(held));
}

// UpdateBatch: what is pending goes to the connection that the set has now. Without a batch each
// Update was stored at once, and nothing is left.
Value RecordsetObject::update_batch(const Call& call) {
  rows();
  const bool batch = memory_ != nullptr && memory_->is_batch();
  if (!batch && memory_ && connection_) raise(errors::kFeatureNotAvailable);
  if (!batch) return update(call);
  const std::int32_t range = call.number_or(0, kAllRows);
  check_range(range, true);
  if (!connection_) raise(errors::kNotAllowedInContext);
  if (range == kCurrentRow) row();  // raises where it was removed
  rows_->update();
  settle();
  if (range == kCurrentRow) rows_->field(std::size_t{0});  // brings a view's rows to its own
  opened_ = connection_->opened();
  connection_->remembering([&] {
    range == kCurrentRow ? memory_->store_current(*opened_) : memory_->store_batch(*opened_);
    return Value();
  });
  return {};
}

Value RecordsetObject::cancel_batch(const Call& call) {
  rows().cancel_update();
  settle();
  if (memory_ == nullptr || !memory_->is_batch()) return {};
  check_range(call.number_or(0, kAllRows), false);
  memory_->cancel_batch();
  if (view_ != nullptr) view_->forget_all();
  show_again();
  return {};
}

// What became of the current row since it was read.
Value RecordsetObject::status(const Call&) {
  if (memory_ == nullptr || !memory_->is_batch()) return Value::long_integer(0);
  if (editing_ == Editing::None && rows().field_count() > 0) rows().field(std::size_t{0});
  return Value::long_integer(memory_->status());
}

// The rows as a view, which they become at the first use of one. Raises 3251 where they are not
// known by number.
RowView& RecordsetObject::view() {
  if (view_ != nullptr) return *view_;
  hold_batch();
  if (rows().record_count() < 0) raise(errors::kFeatureNotAvailable);
  const std::int32_t page = rows_->page_size();
  auto shared = std::make_shared<SharedRows>();
  shared->rows = std::move(rows_);
  auto made = std::make_unique<RowView>(std::move(shared), editing_ == Editing::NewRow);
  made->set_page_size(page);
  view_ = made.get();
  rows_ = std::move(made);
  return *view_;
}

// As view(); rows that are read forward only are asked for anew, as a static set.
RowView& RecordsetObject::view_of_all_rows() {
  if (rows().record_count() < 0) {
    std::exchange(rows_, nullptr)->close();
    cursor_type_ = static_cast<std::int32_t>(platform::CursorType::Static);
    run();
  }
  return view();
}

void RecordsetObject::show_again() {
  const Value filter = plain_value(filter_);
  if (!filter.is_text() && !filter.is_array()) {
    if (memory_ == nullptr) hold_batch();
    std::vector<std::int64_t> places;
    if (memory_ != nullptr) {
      places = to_long(filter) == kFilterConflicts ? memory_->conflict_positions()
                                                   : memory_->changed_positions();
    }
    return view_of_all_rows().show_positions(std::move(places));
  }
  if (filter.is_array()) {
    std::vector<std::int64_t> bookmarks;
    for (const Value& each : filter.as_array().elements()) bookmarks.push_back(bookmark_of(each));
    return view_of_all_rows().show_bookmarked(bookmarks);
  }
  std::optional<RowFilter> chosen;
  std::optional<RowOrder> order;
  if (!filter.as_view().empty()) chosen.emplace(filter.as_view());
  if (!sort_.empty()) order.emplace(sort_);
  if (!chosen && !order && view_ == nullptr) return;
  view_of_all_rows().show(chosen ? &*chosen : nullptr, order ? &*order : nullptr);
  settle();
}

// Filter: a condition, an array of bookmarks, 1 for the rows whose changes are pending, 5 for those
// that the last UpdateBatch could not store, or 0 or "" for all rows.
Value RecordsetObject::filter(const Call& call) {
  if (!call.assigns()) {
    const bool none = filter_.is_text() && filter_.as_view().empty();
    return none ? Value::long_integer(kFilterNone) : filter_;
  }
  rows();
  Value given = plain_value(call.assigned());
  if (!given.is_text() && !given.is_array()) {
    const std::int32_t number = to_long(given);
    const bool known =
        number == kFilterNone || number == kFilterPending || number == kFilterConflicts;
    if (!known) raise(errors::kInvalidArgument);
    given = number == kFilterNone ? Value::text("") : Value::long_integer(number);
  }
  const Value before = std::exchange(filter_, given);
  try {
    show_again();
  } catch (const ScriptError&) {  // passed on: the rows stay as they were
    filter_ = before;
    throw;
  }
  return {};
}

Value RecordsetObject::sort(const Call& call) {
  if (!call.assigns()) return Value::text(sort_);
  rows();
  const std::string before = std::exchange(sort_, to_text(call.assigned()).string());
  try {
    show_again();
  } catch (const ScriptError&) {  // passed on: the rows stay as they were
    sort_ = before;
    throw;
  }
  return {};
}

// A second record set over the same rows, at the first of them, without filter and sort.
Value RecordsetObject::clone(const Call& call) {
  RowView& from = view();
  auto made = make_ref<RecordsetObject>(services_);
  made->belong_to(connection_);
  made->opened_ = opened_;
  made->source_ = source_;
  made->memory_ = memory_;
  made->cursor_type_ = cursor_type_;
  made->lock_type_ = call.number_or(0, -1) == kLockReadOnly ? kLockReadOnly : lock_type_;
  made->cursor_location_ = cursor_location_;
  auto rows = std::make_unique<RowView>(from.shared(), false);
  rows->show(nullptr, nullptr);
  rows->set_page_size(from.page_size());
  made->view_ = rows.get();
  made->rows_ = std::move(rows);
  return Value::object(made);
}

// CompareBookmarks(a, b): 0 where a's row stands before b's, 1 at one row, 2 behind it.
Value RecordsetObject::compare_bookmarks(const Call& call) {
  rows();
  const std::int64_t a = bookmark_of(plain_value(call.at(0)));
  const std::int64_t b = bookmark_of(plain_value(call.at(1)));
  return Value::long_integer(a < b ? 0 : a == b ? 1 : 2);
}

// The command that opened it, or one of its statement.
Value RecordsetObject::active_command(const Call&) {
  if (command_) return Value::object(command_);
  if (source_.text().empty()) return Value::nothing();
  auto made = make_ref<CommandObject>(services_);
  made->take(source_.text(), connection_);
  return Value::object(made);
}

// Kept for pages that set them; the rows are stored as they would be without.
Value RecordsetObject::properties(const Call& call) {
  if (!properties_) {
    properties_ = std::make_shared<PropertyList>(PropertyList{
        {"Update Criteria", Value::long_integer(2)},
        {"Update Resync", Value::long_integer(1)},
        {"Unique Table", Value::text("")},
        {"Unique Catalog", Value::text("")},
        {"Unique Schema", Value::text("")},
        {"Resync Command", Value::text("")},
        {"Batch Size", Value::long_integer(15)},
        {"Bookmarkable", Value::boolean(cursor_type_ != 0)},
    });
  }
  return properties_member(properties_, call);
}

Value RecordsetObject::bookmark(const Call& call) {
  if (!call.assigns()) return Value::real(static_cast<double>(view().bookmark()));
  view().go_to_bookmark(bookmark_of(plain_value(call.assigned())));
  settle();
  return {};
}

// A bookmark, or 0 the current row, 1 the first, 2 the last.
void RecordsetObject::go_to(const Value& start) {
  const Value plain = plain_value(start);
  if (is_bookmark(plain)) return view().go_to_bookmark(bookmark_of(plain));
  switch (to_long(plain)) {
    case 0:
      return;
    case 1:
      return rows().move_first();
    case 2:
      return rows().move_last();
    default:
      raise(errors::kInvalidArgument);
  }
}

}  // namespace rk::pagehost
