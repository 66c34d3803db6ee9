#include "adapters/odbc/forward_recordset.h"

#include <utility>

#include "value/script_error.h"

namespace rk::odbc {

ForwardRecordset::ForwardRecordset(Session& session, const void* owner, Query query,
                                   std::unique_ptr<Statement> statement,
                                   std::unique_ptr<Trace> trace)
    : Rowset(session, owner, std::move(query), std::move(trace)), statement_(std::move(statement)) {
  start();
}

ForwardRecordset::~ForwardRecordset() {
  ForwardRecordset::shut();
}

void ForwardRecordset::start() {
  columns_ = shown_columns(query_, statement_->columns());
  rows_.clear();
  empty_ = !read_one();
  moved_ = false;
}

bool ForwardRecordset::read_one() {
  const Trace::Timing timing(trace_.get());
  std::unique_ptr<Statement> reading = std::move(statement_);  // it ends where a row fails
  if (reading == nullptr || !reading->next()) return false;
  rows_.push_back(read_row(*reading));
  statement_ = std::move(reading);
  return true;
}

void ForwardRecordset::settle() {
  while (read_one()) {
  }
}

void ForwardRecordset::shut() noexcept {
  statement_.reset();
  Rowset::shut();
}

bool ForwardRecordset::bof() const {
  check_open();
  return empty_;
}

bool ForwardRecordset::eof() const {
  check_open();
  return rows_.empty();
}

Value ForwardRecordset::field(std::size_t ordinal) {
  column(ordinal);
  if (rows_.empty()) raise(errors::kNoCurrentRecord);
  return rows_.front()[ordinal];
}

void ForwardRecordset::move_next() {
  check_open();
  if (rows_.empty()) raise(errors::kNoCurrentRecord);
  rows_.pop_front();
  moved_ = true;
  if (rows_.empty()) read_one();
}

void ForwardRecordset::move_first() {
  check_open();
  if (!moved_) return;
  // As scripts know it: the text is run again.
  statement_.reset();
  auto again = session_->statement();
  again->run(query_.sql, query_.values);
  statement_ = std::move(again);
  start();
}

void ForwardRecordset::move(std::int64_t rows, Origin origin) {
  check_open();
  if (rows < 0 || origin == Origin::Last) refuse();
  if (origin == Origin::First) move_first();
  for (; rows > 0 && !eof(); --rows) move_next();
  if (rows > 0) raise(errors::kNoCurrentRecord);
}

void ForwardRecordset::refuse() const {
  check_open();
  raise(errors::kFeatureNotAvailable);
}

std::int64_t ForwardRecordset::record_count() {
  check_open();
  return -1;
}

std::int32_t ForwardRecordset::page_count() {
  check_open();
  return -1;
}

std::int32_t ForwardRecordset::absolute_page() {
  return page_count();
}

std::int64_t ForwardRecordset::absolute_position() {
  return record_count();
}

void ForwardRecordset::move_previous() {
  refuse();
}
void ForwardRecordset::move_last() {
  refuse();
}
void ForwardRecordset::set_absolute_page(std::int32_t /*page*/) {
  refuse();
}
void ForwardRecordset::set_absolute_position(std::int64_t /*row*/) {
  refuse();
}
void ForwardRecordset::add_new() {
  refuse();
}
void ForwardRecordset::set_field(std::size_t /*ordinal*/, const Value& /*value*/) {
  refuse();
}
void ForwardRecordset::update() {
  refuse();
}
void ForwardRecordset::cancel_update() {
  refuse();
}
void ForwardRecordset::remove() {
  refuse();
}

}  // namespace rk::odbc
