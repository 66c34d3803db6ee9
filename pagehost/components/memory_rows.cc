#include "pagehost/components/memory_rows.h"

#include <utility>

#include "value/array.h"
#include "value/conversions.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

using platform::ColumnType;

constexpr KnownError kTooLong{-2147217887,
                              "Multiple-step operation generated errors: the text is longer than "
                              "its field."};

// The value as a field of this column holds it.
Value suited(const Value& value, const MemoryColumn& column) {
  Value made = value_as(column_type_of(column.type), value);
  const bool limited = column.size > 0 && made.is_text();
  if (limited && made.as_text().length() > static_cast<std::size_t>(column.size)) raise(kTooLong);
  return made;
}

bool is_number_type(AdoType type) {
  const ColumnType kind = column_type_of(type);
  return kind == ColumnType::Integer || kind == ColumnType::Double;
}

// Of a column that only its values tell: the one type that all of them have, Double where they are
// numbers of several, else text.
AdoType type_of_values(const std::vector<std::vector<Value>>& rows, std::size_t ordinal) {
  std::optional<AdoType> out;
  for (const std::vector<Value>& row : rows) {
    const AdoType type = ado_type_of(row[ordinal]);
    if (row[ordinal].is_null() || out == type) continue;
    if (!out) {
      out = type;
    } else if (is_number_type(*out) && is_number_type(type)) {
      out = AdoType::Double;
    } else {
      return AdoType::VarWChar;
    }
  }
  return out.value_or(AdoType::VarWChar);
}

}  // namespace

std::unique_ptr<MemoryRows> MemoryRows::of(platform::Recordset& from, const MemoryRows* beneath) {
  std::vector<std::vector<Value>> rows;
  if (!from.bof() || !from.eof()) from.move_first();
  for (; !from.eof(); from.move_next()) {
    std::vector<Value>& row = rows.emplace_back();
    for (std::size_t i = 0; i < from.field_count(); ++i) row.push_back(from.field(i));
    if (rows.size() * from.field_count() > kMaxArrayElements) raise(errors::kOutOfMemory);
  }
  if (beneath != nullptr) return std::make_unique<MemoryRows>(beneath->columns_, std::move(rows));
  std::vector<MemoryColumn> columns;
  for (std::size_t i = 0; i < from.field_count(); ++i) {
    const platform::ColumnTraits traits = from.traits(i);
    MemoryColumn column{from.field_name(i), ado_type_of(traits), traits.size, traits};
    if (traits.type == ColumnType::Unknown) column.type = type_of_values(rows, i);
    columns.push_back(std::move(column));
  }
  return std::make_unique<MemoryRows>(std::move(columns), std::move(rows));
}

const MemoryColumn& MemoryRows::column(std::size_t ordinal) const {
  if (ordinal >= columns_.size()) raise(errors::kItemNotFound);
  return columns_[ordinal];
}

const std::string& MemoryRows::field_name(std::size_t ordinal) const {
  return column(ordinal).name;
}

std::size_t MemoryRows::ordinal(std::string_view name) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (equal_ignoring_case(columns_[i].name, name)) return i;
  }
  raise(errors::kItemNotFound);
}

Value MemoryRows::field(std::size_t ordinal) {
  column(ordinal);
  if (edit_ && edit_->values[ordinal]) return *edit_->values[ordinal];
  if (edit_ && edit_->adding) return Value::null();
  return rows_[current()][ordinal];
}

// Of a change that waits for its batch: what was read, or stored last.
Value MemoryRows::original(std::size_t ordinal) {
  column(ordinal);
  if (edit_ && edit_->adding) return Value::null();
  const Value& now = rows_[current()][ordinal];
  if (!changes_) return now;
  const auto& before = changes_->of(current()).before;
  const auto found = before.find(ordinal);
  return found == before.end() ? now : found->second;
}

bool MemoryRows::append_field_text(std::size_t ordinal, std::string& out) {
  const Value value = field(ordinal);
  if (value.is_null()) return false;
  append_text(out, value);
  return true;
}

platform::ColumnTraits MemoryRows::traits(std::size_t ordinal) const {
  platform::ColumnTraits traits;
  traits.type = column_type_of(column(ordinal).type);
  traits.size = column(ordinal).size;
  traits.writable = true;
  return traits;
}

void MemoryRows::add_new() {
  leave_row();
  edit_.emplace();
  edit_->adding = true;
  edit_->values.resize(columns_.size());
}

void MemoryRows::set_field(std::size_t ordinal, const Value& value) {
  if (is_batch() && !column(ordinal).origin.writable) raise(errors::kFeatureNotAvailable);
  Value made = suited(value, column(ordinal));
  if (!edit_) {
    current();
    edit_.emplace().values.resize(columns_.size());
  }
  edit_->values[ordinal] = std::move(made);
}

void MemoryRows::update() {
  if (!edit_) return;
  MemoryEdit edit = *std::move(edit_);
  edit_.reset();
  if (edit.adding) {
    if ((rows_.size() + 1) * columns_.size() > kMaxArrayElements) raise(errors::kOutOfMemory);
    rows_.emplace_back(columns_.size(), Value::null());
    if (changes_) changes_->note_added();
    at_ = row_count() - 1;
    removed_ = false;
  }
  std::vector<Value>& row = rows_[current()];
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (!edit.values[i]) continue;
    if (changes_) changes_->note_set(current(), i, row[i]);
    row[i] = *std::move(edit.values[i]);
  }
}

void MemoryRows::remove() {
  edit_.reset();
  if (changes_) changes_->note_removed(current(), rows_[current()]);
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(current()));
  removed_ = true;
}

}  // namespace rk::pagehost
