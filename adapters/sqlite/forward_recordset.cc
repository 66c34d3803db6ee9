#include "adapters/sqlite/forward_recordset.h"

#include <utility>

#include "value/script_error.h"

namespace rk::sqlite {
namespace {

// A piece ends at either: enough for what pages look up, little beside a page's own texts.
constexpr std::size_t kPieceRows = 256;
constexpr std::size_t kPieceBytes = std::size_t{256} << 10;

}  // namespace

ForwardRecordset::ForwardRecordset(Session& session, const void* owner, Ref<Plan> plan,
                                   RunValues& values, std::unique_ptr<TraceEntry> trace)
    : Rowset(session, owner, std::move(plan), std::move(trace)) {
  run(values);
}

ForwardRecordset::~ForwardRecordset() {
  ForwardRecordset::shut();
}

void ForwardRecordset::run(RunValues& values) {
  lease_ = session_->handle().lease(plan_, kWhole);
  bind_values(lease_.statement(), plan_->translation.parameters, values);
  read_piece();
  empty_ = buffer_.rows() == 0;
  // The statement refers to the values; a move leaves the texts where they are.
  if (lease_) kept_ = std::move(values);
}

void ForwardRecordset::read_piece() {
  buffer_.begin(field_count());
  row_ = 0;
  const Timing timing(*this);
  Handle& handle = session_->handle();
  Lease running = std::move(lease_);  // given back where a step fails
  while (handle.step(running.statement())) {
    add_row(running.statement());
    if (buffer_.rows() == kPieceRows || buffer_.bytes() >= kPieceBytes) {
      lease_ = std::move(running);
      return;
    }
  }
}

void ForwardRecordset::settle() {
  if (!lease_) return;
  const Timing timing(*this);
  Handle& handle = session_->handle();
  const Lease running = std::move(lease_);
  while (handle.step(running.statement())) add_row(running.statement());
}

void ForwardRecordset::shut() noexcept {
  lease_.release();
  Rowset::shut();
}

bool ForwardRecordset::bof() const {
  check_open();
  return empty_;
}

bool ForwardRecordset::eof() const {
  check_open();
  return row_ == buffer_.rows();
}

std::size_t ForwardRecordset::current_row() {
  if (row_ == buffer_.rows() || !is_open()) {
    check_open();
    raise(errors::kNoCurrentRecord);
  }
  return row_;
}

void ForwardRecordset::move_next() {
  current_row();
  if (++row_ < buffer_.rows() || !lease_) return;
  dropped_ = true;
  read_piece();
}

void ForwardRecordset::move_first() {
  check_open();
  if (!dropped_) {
    row_ = 0;
    return;
  }
  // As scripts know it: the text is run again.
  lease_.release();
  const Reading reading(*session_);
  RunValues values = std::move(kept_);
  run(values);
  if (!lease_) kept_ = std::move(values);
  dropped_ = false;
}

void ForwardRecordset::move(std::int64_t rows, Origin origin) {
  check_open();
  if (rows < 0 || origin == Origin::Last) raise(errors::kFeatureNotAvailable);
  if (origin == Origin::First) move_first();
  for (; rows > 0 && !eof(); --rows) move_next();
  if (rows > 0) raise(errors::kNoCurrentRecord);
}

void ForwardRecordset::move_previous() {
  check_open();
  raise(errors::kFeatureNotAvailable);
}

void ForwardRecordset::move_last() {
  move_previous();
}

std::int64_t ForwardRecordset::record_count() {
  check_open();
  return -1;
}

std::int32_t ForwardRecordset::page_size() const {
  return page_size_;
}

void ForwardRecordset::set_page_size(std::int32_t rows) {
  check_open();
  if (rows < 1) raise(errors::kInvalidArgument);
  page_size_ = rows;
}

std::int32_t ForwardRecordset::page_count() {
  check_open();
  return -1;
}

std::int32_t ForwardRecordset::absolute_page() {
  return page_count();
}

void ForwardRecordset::set_absolute_page(std::int32_t /*page*/) {
  move_previous();
}

std::int64_t ForwardRecordset::absolute_position() {
  return record_count();
}

void ForwardRecordset::set_absolute_position(std::int64_t /*row*/) {
  move_previous();
}

void ForwardRecordset::add_new() {
  move_previous();
}

void ForwardRecordset::set_field(std::size_t /*ordinal*/, const Value& /*value*/) {
  move_previous();
}

void ForwardRecordset::update() {
  move_previous();
}

void ForwardRecordset::cancel_update() {
  move_previous();
}

void ForwardRecordset::remove() {
  move_previous();
}

}  // namespace rk::sqlite
