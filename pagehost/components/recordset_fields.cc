// The columns of a record set: by name and number, what is set into them, parts of long values, and
// the columns of a set that a page makes itself.
#include <utility>

#include "pagehost/components/field_objects.h"
#include "pagehost/components/recordset_object.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

using platform::ColumnType;

constexpr KnownError kAlreadyThere{3367, "Object is already in collection. Cannot append.",
                                   errors::kDatabaseSource};

}  // namespace

// The columns of a set that is not open yet are known too.
std::size_t RecordsetObject::ordinal_of(const Value& index) {
  if (rows_ && index.is_text()) return rows_->ordinal(index.as_view());
  const Value plain = plain_value(index);
  if (plain.is_text()) {
    return is_made() ? MemoryRows(appended_, {}).ordinal(plain.as_view())
                     : rows().ordinal(plain.as_view());
  }
  const std::size_t count = field_count();
  const std::int32_t place = to_long(plain);
  if (place < 0 || static_cast<std::size_t>(place) >= count) raise(errors::kItemNotFound);
  return static_cast<std::size_t>(place);
}

std::size_t RecordsetObject::field_count() {
  return is_made() ? appended_.size() : rows().field_count();
}

std::string RecordsetObject::field_name(std::size_t ordinal) {
  return is_made() ? appended_.at(ordinal).name : rows().field_name(ordinal);
}

platform::ColumnTraits RecordsetObject::field_traits(std::size_t ordinal) {
  return is_made() ? MemoryRows(appended_, {}).traits(ordinal) : rows().traits(ordinal);
}

const MemoryColumn* RecordsetObject::memory_column(std::size_t ordinal) const {
  if (is_made()) return &appended_.at(ordinal);
  return memory_ ? &memory_->column(ordinal) : nullptr;
}

void RecordsetObject::append_column(MemoryColumn column) {
  if (rows_ || !source_.text().empty()) raise(errors::kNotAllowedInContext);
  for (const MemoryColumn& each : appended_) {
    if (equal_ignoring_case(each.name, column.name)) raise(kAlreadyThere);
  }
  appended_.push_back(std::move(column));
}

void RecordsetObject::remove_column(const Value& index) {
  if (rows_) raise(errors::kNotAllowedInContext);
  if (appended_.empty()) raise(errors::kItemNotFound);
  appended_.erase(appended_.begin() + static_cast<std::ptrdiff_t>(ordinal_of(index)));
}

Value RecordsetObject::field_object(std::size_t ordinal) {
  return Value::object(pagehost::field_object(Ref<RecordsetObject>(this), ordinal));
}

// rs(name), rs(name) = value, rs.Fields and rs.Fields(name).
Value RecordsetObject::fields(const Call& call) {
  if (call.count() == 0) {
    if (call.assigns()) raise(errors::kWrongArgumentCount);
    return Value::object(fields_object(Ref<RecordsetObject>(this)));
  }
  const std::size_t ordinal = ordinal_of(call.at(0));
  if (!call.assigns()) return field_object(ordinal);
  set_field(ordinal, plain_value(call.assigned()));
  return {};
}

// Collect(name): the value itself, without a Field between.
Value RecordsetObject::collect(const Call& call) {
  const std::size_t ordinal = ordinal_of(call.at(0));
  if (!call.assigns()) return row().field(ordinal);
  set_field(ordinal, plain_value(call.assigned()));
  return {};
}

// Asked once a column: the database looks at its tables for it.
ColumnType RecordsetObject::column_type(std::size_t ordinal) {
  if (column_types_.size() <= ordinal) column_types_.resize(field_count());
  auto& known = column_types_[ordinal];
  if (!known) known = rows().traits(ordinal).type;
  return *known;
}

void RecordsetObject::set_field(std::size_t ordinal, const Value& value) {
  hold_batch();
  row().set_field(ordinal, value_as(column_type(ordinal), value));
  chunks_ = {};
  if (editing_ == Editing::None) editing_ = Editing::Row;
}

// A column of single-byte text takes bytes as text of the server's code page: pages turn what was
// uploaded into text by it.
Text RecordsetObject::text_of_chunk(std::size_t ordinal, const Value& more) const {
  const MemoryColumn* column = memory_column(ordinal);
  const AdoType type = column ? column->type : AdoType::VarWChar;
  const bool single_bytes =
      type == AdoType::Char || type == AdoType::VarChar || type == AdoType::LongVarChar;
  if (!single_bytes || !holds_bytes(more) || !services_.files) return joined_text(more);
  const FileSystem& system = services_.files->xml.system;
  return Text(system.code_pages->to_utf8(bytes_of(more), system.ansi_code_page));
}

// The first part replaces what the field held, each further one goes behind it.
void RecordsetObject::append_chunk(std::size_t ordinal, const Value& more) {
  if (!more.is_text() && !holds_bytes(more)) raise(kFieldMismatch);
  const bool goes_on = chunks_.column == ordinal && chunks_.appending;
  const Value held = goes_on ? rows().field(ordinal) : Value::null();
  const ColumnType type = column_type(ordinal);
  const bool bytes =
      type == ColumnType::Bytes || (type == ColumnType::Unknown && holds_bytes(more));
  if (bytes) {
    set_field(ordinal, Value::array(Array::of_bytes(bytes_of(held) + bytes_of(more))));
  } else {
    Text text = joined_text(held);
    text.append(text_of_chunk(ordinal, more));
    set_field(ordinal, Value::text(std::move(text)));
  }
  chunks_ = {ordinal, true, 0};
}

// The next part of a long value, in characters of a text or in bytes; Null behind its end.
Value RecordsetObject::next_chunk(std::size_t ordinal, std::size_t count) {
  if (chunks_.column != ordinal || chunks_.appending) chunks_ = {ordinal, false, 0};
  const std::size_t from = chunks_.read;
  const Value now = row().field(ordinal);
  Value out = Value::null();
  if (holds_bytes(now) && from < now.as_array().bytes().size()) {
    out = Value::array(Array::of_bytes(now.as_array().bytes().substr(from, count)));
  } else if (now.is_text() && from < now.as_text().length()) {
    out = Value::text(now.as_text().mid(from, count));
  }
  chunks_.read = from + count;
  return out;
}

}  // namespace rk::pagehost
