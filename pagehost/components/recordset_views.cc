// Filter, Sort, Clone and Bookmark of a record set, and sets without a connection.
#include <utility>

#include "pagehost/components/recordset_object.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

constexpr std::int32_t kFilterNone = 0;

std::int64_t bookmark_of(const Value& value) {
  return static_cast<std::int64_t>(to_double(value));
}

}  // namespace

void RecordsetObject::take(std::unique_ptr<MemoryRows> rows) {
  memory_ = rows.get();
  rows_ = std::move(rows);
  rows_->set_page_size(page_size_);
  view_ = nullptr;
  cursor_type_ = static_cast<std::int32_t>(platform::CursorType::Static);
}

void RecordsetObject::append_column(MemoryColumn column) {
  if (rows_ || !source_.text().empty()) raise(errors::kNotAllowedInContext);
  appended_.push_back(std::move(column));
}

void RecordsetObject::remove_column(const Value& index) {
  if (rows_) raise(errors::kNotAllowedInContext);
  const MemoryRows columns(appended_, {});
  const Value plain = plain_value(index);
  const std::size_t place =
      plain.is_text() ? columns.ordinal(plain.as_view()) : static_cast<std::size_t>(to_long(plain));
  columns.column(place);
  appended_.erase(appended_.begin() + static_cast<std::ptrdiff_t>(place));
}

std::size_t RecordsetObject::field_count() {
  return rows_ || appended_.empty() ? rows().field_count() : appended_.size();
}

const MemoryColumn* RecordsetObject::memory_column(std::size_t ordinal) const {
  return memory_ ? &memory_->column(ordinal) : nullptr;
}

void RecordsetObject::part_from_connection() {
  auto parted = MemoryRows::of(rows());
  std::exchange(rows_, nullptr)->close();
  take(std::move(parted));
  opened_ = nullptr;
}

// The rows as a view, which they become at the first use of one. Raises 3251 where they are not
// known by number.
RowView& RecordsetObject::view() {
  if (view_ != nullptr) return *view_;
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
  editing_ = Editing::None;
}

// Filter: a condition, an array of bookmarks, or 0 or "" for all rows.
Value RecordsetObject::filter(const Call& call) {
  if (!call.assigns()) return filter_;
  rows();
  Value given = plain_value(call.assigned());
  if (!given.is_text() && !given.is_array()) {
    if (to_long(given) != kFilterNone) raise(errors::kInvalidArgument);
    given = Value::text("");
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
Value RecordsetObject::clone(const Call&) {
  RowView& from = view();
  auto made = make_ref<RecordsetObject>(database_);
  made->connection_ = connection_;
  made->opened_ = opened_;
  made->source_ = source_;
  made->memory_ = memory_;
  made->cursor_type_ = cursor_type_;
  made->lock_type_ = lock_type_;
  made->cursor_location_ = cursor_location_;
  auto rows = std::make_unique<RowView>(from.shared(), false);
  rows->show(nullptr, nullptr);
  rows->set_page_size(from.page_size());
  made->view_ = rows.get();
  made->rows_ = std::move(rows);
  return Value::object(made);
}

Value RecordsetObject::bookmark(const Call& call) {
  if (!call.assigns()) return Value::real(static_cast<double>(view().bookmark()));
  view().go_to_bookmark(bookmark_of(plain_value(call.assigned())));
  editing_ = Editing::None;
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
