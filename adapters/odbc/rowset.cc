#include "adapters/odbc/rowset.h"

#include <utility>

#include "value/conversions.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::odbc {

Rowset::Rowset(Session& session, const void* owner, Query query, std::unique_ptr<Trace> trace)
    : session_(&session), query_(std::move(query)), trace_(std::move(trace)), owner_(owner) {
  session.add(*this);
}

Rowset::~Rowset() {
  Rowset::shut();
}

void Rowset::shut() noexcept {
  if (session_ == nullptr) return;
  trace_ = nullptr;
  session_->remove(*this);
  session_ = nullptr;
}

void Rowset::close() {
  check_open();
  shut();
}

void Rowset::check_open() const {
  if (session_ == nullptr) raise(errors::kObjectClosed);
}

std::size_t Rowset::field_count() const {
  check_open();
  return columns_.size();
}

const Column& Rowset::column(std::size_t ordinal) const {
  check_open();
  if (ordinal >= columns_.size()) raise(errors::kItemNotFound);
  return columns_[ordinal];
}

const std::string& Rowset::field_name(std::size_t ordinal) const {
  return column(ordinal).name;
}

std::size_t Rowset::ordinal(std::string_view name) const {
  check_open();
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (equal_ignoring_case(columns_[i].name, name)) return i;
  }
  raise(errors::kItemNotFound);
}

bool Rowset::append_field_text(std::size_t ordinal, std::string& out) {
  const Value value = field(ordinal);
  append_text(out, value);
  return !value.is_null();
}

platform::ColumnTraits Rowset::traits(std::size_t ordinal) const {
  const Column& shown = column(ordinal);
  platform::ColumnTraits traits;
  traits.type = shown.type;
  traits.size = shown.size;
  traits.required = shown.required;
  traits.counter = shown.counter;
  traits.base_table = shown.base_table;
  traits.base_column = shown.base_table.empty() ? std::string() : shown.base_column;
  return traits;
}

void Rowset::set_page_size(std::int32_t rows) {
  check_open();
  if (rows < 1) raise(errors::kInvalidArgument);
  page_size_ = rows;
}

RowValues Rowset::read_row(Statement& statement) {
  RowValues row;
  row.reserve(columns_.size());
  // What a translated text carries behind the columns that it shows is not read.
  const std::vector<Column>& told = statement.columns();
  for (std::size_t i = 0; i < told.size(); ++i) row.push_back(statement.value(i));
  if (trace_ != nullptr) trace_->add_rows(1);
  return row;
}

}  // namespace rk::odbc
