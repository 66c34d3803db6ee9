#include "pagehost/components/row_view.h"

#include <algorithm>
#include <utility>

#include "value/script_error.h"

namespace rk::pagehost {

RowView::RowView(std::shared_ptr<SharedRows> shared, bool adding)
    : shared_(std::move(shared)), adding_(adding) {
  const std::int64_t position = rows().absolute_position();
  at_ = position > 0 ? position - 1 : rows().bof() && !rows().eof() ? -1 : row_count();
  if (row_count() == 0) at_ = 0;
  shared_->views.push_back(this);
}

RowView::~RowView() {
  auto& views = shared_->views;
  views.erase(std::find(views.begin(), views.end(), this));
}

std::int64_t RowView::row_count() const {
  return shown_ ? static_cast<std::int64_t>(shown_->size()) : rows().record_count();
}

std::int64_t RowView::position_of(std::int64_t place) const {
  return shown_ ? (*shown_)[static_cast<std::size_t>(place)] : place + 1;
}

// Makes the current row that of the rows beneath, which another view may have moved.
void RowView::bring() {
  const std::int64_t position = position_of(static_cast<std::int64_t>(current()));
  if (rows().absolute_position() != position) rows().set_absolute_position(position);
}

void RowView::leave_row() {
  if (adding_ || editing_) update();
}

void RowView::show(const RowFilter* filter, const RowOrder* order) {
  leave_row();
  removed_ = false;
  at_ = 0;
  shown_.reset();
  if (filter == nullptr && order == nullptr) return;
  rows().hold_rows();
  std::vector<std::int64_t> passed;
  std::vector<std::vector<Value>> keys;
  const std::int64_t count = rows().record_count();
  for (std::int64_t position = 1; position <= count; ++position) {
    position == 1 ? rows().move_first() : rows().move_next();
    if (filter != nullptr && !filter->holds(rows())) continue;
    passed.push_back(position);
    if (order != nullptr) keys.push_back(order->keys(rows()));
  }
  shown_ = order != nullptr ? order->sorted(passed, keys) : std::move(passed);
}

void RowView::show_bookmarked(const std::vector<std::int64_t>& bookmarks) {
  std::vector<std::int64_t> found;
  for (const std::int64_t bookmark : bookmarks) {
    if (const auto position = position_of_bookmark(bookmark)) found.push_back(*position);
  }
  show_positions(std::move(found));
}

void RowView::show_positions(std::vector<std::int64_t> positions) {
  leave_row();
  removed_ = false;
  at_ = 0;
  shown_ = std::move(positions);
}

void RowView::forget_all() {
  shared_->removed.clear();
  for (RowView* view : shared_->views) {
    view->shown_.reset();
    view->removed_ = view->adding_ = view->editing_ = false;
    view->at_ = 0;
  }
}

std::int64_t RowView::bookmark() {
  std::int64_t bookmark = position_of(static_cast<std::int64_t>(current()));
  for (const std::int64_t gone : shared_->removed) {
    if (gone <= bookmark) ++bookmark;
  }
  return bookmark;
}

std::optional<std::int64_t> RowView::position_of_bookmark(std::int64_t bookmark) const {
  const auto& removed = shared_->removed;
  const auto past = std::lower_bound(removed.begin(), removed.end(), bookmark);
  if (past != removed.end() && *past == bookmark) return std::nullopt;
  const std::int64_t position = bookmark - (past - removed.begin());
  if (position < 1 || position > rows().record_count()) return std::nullopt;
  return position;
}

void RowView::go_to_bookmark(std::int64_t bookmark) {
  leave_row();
  const auto position = position_of_bookmark(bookmark);
  if (!position) raise(errors::kInvalidArgument);
  std::int64_t place = *position - 1;
  if (shown_) {
    place = std::find(shown_->begin(), shown_->end(), *position) - shown_->begin();
    if (place == row_count()) raise(errors::kInvalidArgument);
  }
  removed_ = false;
  at_ = place;
}

Value RowView::field(std::size_t ordinal) {
  if (!adding_) bring();
  return rows().field(ordinal);
}

Value RowView::original(std::size_t ordinal) {
  if (!adding_) bring();
  return rows().original(ordinal);
}

bool RowView::append_field_text(std::size_t ordinal, std::string& out) {
  if (!adding_) bring();
  return rows().append_field_text(ordinal, out);
}

void RowView::add_new() {
  leave_row();
  rows().add_new();
  adding_ = true;
}

void RowView::set_field(std::size_t ordinal, const Value& value) {
  if (!adding_) bring();
  rows().set_field(ordinal, value);
  editing_ = true;
}

void RowView::update() {
  if (!adding_ && !editing_) return;
  rows().update();
  editing_ = false;
  if (!std::exchange(adding_, false)) return;
  // A new row stands last, whether the filter lets it through or not: the page goes on with it.
  if (shown_) shown_->push_back(rows().record_count());
  removed_ = false;
  at_ = row_count() - 1;
}

void RowView::cancel_update() {
  rows().cancel_update();
  adding_ = false;
  editing_ = false;
}

void RowView::remove() {
  if (std::exchange(adding_, false)) return rows().cancel_update();
  editing_ = false;
  bring();
  const std::int64_t mark = bookmark();
  const std::int64_t position = position_of(at_);
  rows().remove();
  auto& removed = shared_->removed;
  removed.insert(std::lower_bound(removed.begin(), removed.end(), mark), mark);
  for (RowView* view : shared_->views) view->forget(position);
}

// A row is gone: what stood behind it moves up.
void RowView::forget(std::int64_t position) {
  std::int64_t place = position - 1;
  if (shown_) {
    const auto found = std::find(shown_->begin(), shown_->end(), position);
    place = found - shown_->begin();
    const bool was_shown = found != shown_->end();
    if (was_shown) shown_->erase(found);
    for (std::int64_t& each : *shown_) {
      if (each > position) --each;
    }
    if (!was_shown) return;
  }
  if (place < at_) {
    --at_;
  } else if (place == at_) {
    removed_ = true;
  }
}

}  // namespace rk::pagehost
