#include "adapters/sqlite/rowset.h"

#include <utility>

#include "adapters/sqlite/field_values.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::sqlite {

Rowset::Rowset(Session& session, const void* owner, Ref<Plan> plan,
               std::unique_ptr<TraceEntry> trace)
    : session_(&session),
      plan_(std::move(plan)),
      buffer_(session.take_buffer()),
      owner_(owner),
      trace_(std::move(trace)) {
  session.add(*this);
}

Rowset::~Rowset() {
  Rowset::shut();
}

void Rowset::shut() noexcept {
  if (session_ == nullptr) return;
  if (trace_ != nullptr) end_trace(*session_, *trace_);
  session_->give_buffer(std::move(buffer_));
  session_->remove(*this);
  session_ = nullptr;
  // The plan goes back with the engine connection, which another page's thread may borrow.
  plan_ = nullptr;
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
  return plan_->translation.columns.size();
}

const jetsql::OutputColumn& Rowset::column(std::size_t ordinal) const {
  check_open();
  const auto& columns = plan_->translation.columns;
  if (ordinal >= columns.size()) raise(errors::kItemNotFound);
  return columns[ordinal];
}

const std::string& Rowset::field_name(std::size_t ordinal) const {
  return column(ordinal).name;
}

std::size_t Rowset::ordinal(std::string_view name) const {
  check_open();
  const auto& columns = plan_->translation.columns;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (equal_ignoring_case(columns[i].name, name)) return i;
  }
  raise(errors::kItemNotFound);
}

Value Rowset::field(std::size_t ordinal) {
  const jetsql::Type type = column(ordinal).type;
  const std::size_t row = current_row();
  return field_value(buffer_, buffer_.cell(row, ordinal), type);
}

platform::ColumnTraits Rowset::traits(std::size_t ordinal) const {
  const jetsql::OutputColumn& shown = column(ordinal);
  platform::ColumnTraits traits;
  traits.type = column_type(shown.type);
  if (shown.origin_column.empty()) return traits;
  const Reading reading(*session_);
  const jetsql::Table* table = session_->handle().table(shown.origin_table);
  const jetsql::Column* base = table == nullptr ? nullptr : table->column(shown.origin_column);
  if (base == nullptr) return traits;
  traits.size = base->size;
  traits.required = base->required;
  traits.counter = base->row_id;
  traits.key = base->unique;
  traits.base_table = shown.origin_table;
  traits.base_column = shown.origin_column;
  return traits;
}

bool Rowset::append_field_text(std::size_t ordinal, std::string& out) {
  const jetsql::Type type = column(ordinal).type;
  const std::size_t row = current_row();
  return append_field_value(out, buffer_, buffer_.cell(row, ordinal), type);
}

void Rowset::add_row(sqlite3_stmt* statement) {
  buffer_.add(statement);
  if (trace_ != nullptr) ++trace_->rows;
}

Rowset::Timing::Timing(Rowset& set) : set_(set) {
  if (set_.trace_ != nullptr) begin_ = std::chrono::steady_clock::now();
}

Rowset::Timing::~Timing() {
  if (set_.trace_ != nullptr) set_.trace_->spent += std::chrono::steady_clock::now() - begin_;
}

}  // namespace rk::sqlite
