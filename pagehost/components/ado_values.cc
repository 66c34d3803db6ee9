#include "pagehost/components/ado_values.h"

#include <cmath>

#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

using platform::ColumnType;

Value whole_number(const Value& value) {
  constexpr double kPastLong = 2147483647.5;
  const double number = to_double(value);
  return number < kPastLong && number >= -kPastLong - 1 ? Value::long_integer(to_long(value))
                                                        : value;
}

Value bytes_of(const Value& value) {
  if (value.is_array() && value.as_array().holds_bytes()) return value;
  if (!value.is_text()) raise(errors::kTypeMismatch);
  return Value::array(Array::of_bytes(value.as_text().bytes()));
}

Value converted(ColumnType type, const Value& value) {
  switch (type) {
    case ColumnType::Integer:
      return whole_number(value);
    case ColumnType::Double:
      return Value::real(to_double(value));
    case ColumnType::Currency:
      return Value::currency(to_currency(value));
    case ColumnType::Date:
      return Value::date(to_date(value));
    case ColumnType::Boolean:
      return Value::boolean(to_boolean(value));
    case ColumnType::Bytes:
      return bytes_of(value);
    case ColumnType::Text:
      return value.is_text() ? value : Value::text(to_text(value));
    case ColumnType::Unknown:
      break;
  }
  return value;
}

}  // namespace

Value value_as(ColumnType type, const Value& value) {
  if (value.is_null() || value.is_empty()) return Value::null();
  try {
    return converted(type, value);
  } catch (const ScriptError& error) {  // raised anew, as fields do
    raise(error.number() == errors::kOverflow.number ? kFieldOverflow : kFieldMismatch);
  }
}

Value value_as(AdoType type, const Value& value) {
  if (value.is_empty()) return value;
  return value_as(column_type_of(type), value);
}

ColumnType column_type_of(AdoType type) noexcept {
  switch (type) {
    case AdoType::SmallInt:
    case AdoType::Integer:
    case AdoType::TinyInt:
    case AdoType::UnsignedTinyInt:
    case AdoType::UnsignedSmallInt:
    case AdoType::UnsignedInt:
    case AdoType::BigInt:
      return ColumnType::Integer;
    case AdoType::Single:
    case AdoType::Double:
    case AdoType::Decimal:
    case AdoType::Numeric:
      return ColumnType::Double;
    case AdoType::Currency:
      return ColumnType::Currency;
    case AdoType::Date:
    case AdoType::DbDate:
    case AdoType::DbTime:
    case AdoType::DbTimeStamp:
      return ColumnType::Date;
    case AdoType::Boolean:
      return ColumnType::Boolean;
    case AdoType::Binary:
    case AdoType::VarBinary:
    case AdoType::LongVarBinary:
      return ColumnType::Bytes;
    case AdoType::Empty:
    case AdoType::Variant:
      return ColumnType::Unknown;
    default:
      return ColumnType::Text;
  }
}

bool is_sized(AdoType type) noexcept {
  switch (type) {
    case AdoType::Binary:
    case AdoType::VarBinary:
    case AdoType::Char:
    case AdoType::WChar:
    case AdoType::VarChar:
    case AdoType::VarWChar:
      return true;
    default:
      return false;
  }
}

AdoType ado_type_of(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Boolean:
      return AdoType::Boolean;
    case Value::Kind::Byte:
      return AdoType::UnsignedTinyInt;
    case Value::Kind::Integer:
      return AdoType::SmallInt;
    case Value::Kind::Long:
      return AdoType::Integer;
    case Value::Kind::Single:
      return AdoType::Single;
    case Value::Kind::Double:
      return AdoType::Double;
    case Value::Kind::Currency:
      return AdoType::Currency;
    case Value::Kind::Date:
      return AdoType::Date;
    case Value::Kind::Array:
      return AdoType::LongVarBinary;
    default:
      return AdoType::VarWChar;
  }
}

AdoType ado_type_of(const platform::ColumnTraits& traits) {
  using platform::ColumnType;
  switch (traits.type) {
    case ColumnType::Integer:
      return AdoType::Integer;
    case ColumnType::Double:
      return AdoType::Double;
    case ColumnType::Currency:
      return AdoType::Currency;
    case ColumnType::Boolean:
      return AdoType::Boolean;
    case ColumnType::Date:
      return AdoType::Date;
    case ColumnType::Bytes:
      return AdoType::LongVarBinary;
    case ColumnType::Text:
      return traits.size > 0 ? AdoType::VarWChar : AdoType::LongVarWChar;
    case ColumnType::Unknown:
      break;
  }
  return AdoType::VarWChar;
}

bool holds_bytes(const Value& value) {
  return value.is_array() && value.as_array().holds_bytes();
}

std::string bytes_of(const Value& value) {
  if (value.is_text()) return value.as_text().bytes();
  return holds_bytes(value) ? value.as_array().bytes() : std::string();
}

std::int32_t actual_size_of(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::String:
      return static_cast<std::int32_t>(value.as_text().byte_length());
    case Value::Kind::Array:
      return static_cast<std::int32_t>(value.as_array().bytes().size());
    case Value::Kind::Empty:
    case Value::Kind::Null:
      return 0;
    case Value::Kind::Byte:
      return 1;
    case Value::Kind::Boolean:
    case Value::Kind::Integer:
      return 2;
    case Value::Kind::Long:
    case Value::Kind::Single:
      return 4;
    default:
      return 8;
  }
}

}  // namespace rk::pagehost
