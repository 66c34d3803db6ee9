// What a statement's columns and a data source's tables are to this adapter. Plain values.
#ifndef RK_ADAPTERS_ODBC_COLUMNS_H_
#define RK_ADAPTERS_ODBC_COLUMNS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/columns.h"
#include "value/value.h"

namespace rk::odbc {

struct Column {
  // How it is asked for.
  enum class Fetch : std::uint8_t { Integer, Real, Decimal, Boolean, Moment, Time, Text, Bytes };

  std::string name;
  platform::ColumnType type = platform::ColumnType::Text;
  Fetch fetch = Fetch::Text;
  std::int32_t size = 0;  // of a Text: the characters it was declared for, or 0
  bool required = false;
  bool counter = false;
  // Empty where the driver does not tell.
  std::string base_table, base_column;
};

// By the driver's number of a type, its name at the engine and its decimals.
void set_type(Column& column, int sql_type, std::string_view type_name, int decimals);

// A value suited to a column of this type, as a statement is given it. Raises -2147217913 for a
// text that is no number or date where one must be, for objects and for arrays without bytes.
Value stored_value(const Value& value, platform::ColumnType type);

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_COLUMNS_H_
