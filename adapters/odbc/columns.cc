#include "adapters/odbc/columns.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include "adapters/odbc/failure.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::odbc {
namespace {

using platform::ColumnType;
using Fetch = Column::Fetch;

// A decimal of four places is money: so the schema of a storefront declares it on every engine.
constexpr int kMoneyDecimals = 4;

Value converted(const Value& value, ColumnType type) {
  switch (type) {
    case ColumnType::Integer: {
      const double number = to_double(value);
      const bool fits = number >= -2147483648.0 && number <= 2147483647.0;
      return fits ? Value::long_integer(to_long(value)) : Value::real(number);
    }
    case ColumnType::Double:
      return Value::real(to_double(value));
    case ColumnType::Currency:
      return Value::currency(to_currency(value));
    case ColumnType::Boolean:
      return Value::boolean(to_boolean(value));
    case ColumnType::Date:
      return Value::date(to_date(value));
    case ColumnType::Text:
      return Value::text(to_text(value));
    case ColumnType::Bytes:
    case ColumnType::Unknown:
      break;
  }
  return value;
}

}  // namespace

void set_type(Column& column, int sql_type, std::string_view type_name, int decimals) {
  const auto set = [&](ColumnType type, Fetch fetch) {
    column.type = type;
    column.fetch = fetch;
  };
  // Some drivers give their engine's Booleans out as texts.
  if (equal_ignoring_case(type_name, "bool") || equal_ignoring_case(type_name, "boolean")) {
    return set(ColumnType::Boolean, Fetch::Boolean);
  }
  switch (sql_type) {
    case SQL_BIT:
      return set(ColumnType::Boolean, Fetch::Boolean);
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return set(ColumnType::Integer, Fetch::Integer);
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return set(ColumnType::Double, Fetch::Real);
    case SQL_NUMERIC:
    case SQL_DECIMAL:
      return set(decimals == kMoneyDecimals ? ColumnType::Currency : ColumnType::Double,
                 Fetch::Decimal);
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
    case SQL_DATE:
    case SQL_TIMESTAMP:
      return set(ColumnType::Date, Fetch::Moment);
    case SQL_TYPE_TIME:
    case SQL_TIME:
      return set(ColumnType::Date, Fetch::Time);
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
      return set(ColumnType::Bytes, Fetch::Bytes);
    default:
      return set(ColumnType::Text, Fetch::Text);
  }
}

Value stored_value(const Value& value, ColumnType type) {
  if (value.is_null() || value.is_empty()) return Value::null();
  const bool bytes = value.is_array() && value.as_array().holds_bytes();
  if (bytes) return value;
  const Value plain = value.is_object() ? plain_value(value) : value;
  if (plain.is_array() || plain.kind() == Value::Kind::Error) {
    raise_database_error(kDataTypeMismatch, "A value of this kind cannot be stored in a column");
  }
  try {
    return converted(plain, type);
  } catch (const ScriptError& error) {
    raise_database_error(
        error.number() == errors::kOverflow.number ? kDataOverflow : kDataTypeMismatch,
        "A value does not suit the column that it is stored into: " + error.description());
  }
}

}  // namespace rk::odbc
