#include "pagehost/components/ado_values.h"

#include <cmath>
#include <limits>

#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {

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

namespace {

constexpr KnownError kFieldMismatch{-2147352571, "Type mismatch."};

Value whole(double number) {
  const double rounded = std::nearbyint(number);  // halves to the even neighbour
  const bool fits = rounded >= std::numeric_limits<std::int32_t>::min() &&
                    rounded <= std::numeric_limits<std::int32_t>::max();
  return fits ? Value::long_integer(static_cast<std::int32_t>(rounded)) : Value::real(rounded);
}

Value converted(const Value& value, platform::ColumnType type) {
  using platform::ColumnType;
  switch (type) {
    case ColumnType::Integer:
      return whole(to_double(value));
    case ColumnType::Double:
      return Value::real(to_double(value));
    case ColumnType::Currency:
      return Value::currency(to_currency(value));
    case ColumnType::Date:
      return Value::date(to_date(value));
    case ColumnType::Boolean:
      return Value::boolean(to_boolean(value));
    default:
      return value;
  }
}

}  // namespace

Value suited(const Value& value, platform::ColumnType type) {
  if (value.is_null() || value.is_empty()) return Value::null();
  try {
    return converted(value, type);
  } catch (const ScriptError& error) {
    if (error.number() == errors::kOverflow.number) throw;
    raise(kFieldMismatch);
  }
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
