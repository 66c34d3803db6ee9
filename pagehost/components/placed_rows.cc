#include "pagehost/components/placed_rows.h"

#include <algorithm>
#include <limits>

#include "value/script_error.h"

namespace rk::pagehost {
namespace {

constexpr std::int64_t kUnknownPosition = -1;
constexpr std::int64_t kPositionBefore = -2;
constexpr std::int64_t kPositionPast = -3;

}  // namespace

bool PlacedRows::eof() const {
  return (at_ >= row_count() && !removed_) || row_count() == 0;
}

std::size_t PlacedRows::current() const {
  if (removed_ || at_ < 0 || at_ >= row_count()) raise(errors::kNoCurrentRecord);
  return static_cast<std::size_t>(at_);
}

void PlacedRows::move_next() {
  leave_row();
  if (removed_) {
    removed_ = false;
    return;
  }
  if (at_ >= row_count()) raise(errors::kNoCurrentRecord);
  ++at_;
}

void PlacedRows::move_first() {
  leave_row();
  removed_ = false;
  at_ = 0;
  current();
}

void PlacedRows::move(std::int64_t rows, Origin origin) {
  leave_row();
  const std::int64_t count = row_count();
  const bool here = origin == Origin::Current;
  const bool stuck = here && ((rows < 0 && at_ < 0) || (rows > 0 && at_ >= count && !removed_));
  if (stuck || count == 0) raise(errors::kNoCurrentRecord);
  std::int64_t from = origin == Origin::First ? 0 : count - 1;
  if (here) from = std::min(at_, count);
  // Behind a removed row stands already the next one.
  if (here && removed_ && rows > 0) --from;
  removed_ = false;
  const std::int64_t farthest = std::numeric_limits<std::int32_t>::max();
  at_ = std::clamp<std::int64_t>(from + std::clamp(rows, -farthest, farthest), -1, count);
}

void PlacedRows::set_page_size(std::int32_t rows) {
  if (rows < 1) raise(errors::kInvalidArgument);
  page_size_ = rows;
}

std::int32_t PlacedRows::page_count() {
  return static_cast<std::int32_t>((row_count() + page_size_ - 1) / page_size_);
}

std::int32_t PlacedRows::absolute_page() {
  const std::int64_t position = absolute_position();
  if (position < 1) return static_cast<std::int32_t>(position);
  return static_cast<std::int32_t>((position - 1) / page_size_ + 1);
}

void PlacedRows::set_absolute_page(std::int32_t page) {
  if (row_count() > 0 && page < 1) raise(errors::kInvalidArgument);
  set_absolute_position((static_cast<std::int64_t>(page) - 1) * page_size_ + 1);
}

std::int64_t PlacedRows::absolute_position() {
  if (row_count() == 0 || removed_) return kUnknownPosition;
  if (at_ < 0) return kPositionBefore;
  return at_ >= row_count() ? kPositionPast : at_ + 1;
}

void PlacedRows::set_absolute_position(std::int64_t row) {
  leave_row();
  if (row_count() == 0) raise(errors::kNoCurrentRecord);
  if (row < 1) raise(errors::kInvalidArgument);
  removed_ = false;
  at_ = std::min(row - 1, row_count());
}

}  // namespace rk::pagehost
