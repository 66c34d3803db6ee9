// What is known of tables and their columns beyond the values: the properties of a record set's
// fields, and the lists of a database's tables, columns, indexes and keys. Plain values.
#ifndef RK_PLATFORM_COLUMNS_H_
#define RK_PLATFORM_COLUMNS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "value/value.h"

namespace rk::platform {

// The type that a column was declared with. Unknown: only its values tell.
enum class ColumnType : std::uint8_t {
  Unknown,
  Integer,
  Double,
  Currency,
  Boolean,
  Date,
  Text,
  Bytes
};

struct ColumnTraits {
  ColumnType type = ColumnType::Unknown;
  std::int32_t size = 0;  // of a Text: the characters it was declared for, 0 where it names none
  bool required = false;  // takes no Null
  bool counter = false;   // numbered by the database
  bool writable = false;  // by AddNew and Update
  bool key = false;       // tells its table's rows apart by itself
  // The column of the database behind it; both empty where there is none.
  std::string base_table, base_column;
};

// The lists that a connection can give of its database.
enum class SchemaList : std::uint8_t { Tables, Columns, Indexes, PrimaryKeys, ForeignKeys };

// Rows under the names that scripts of this kind know (TABLE_NAME, COLUMN_NAME, ...).
struct SchemaRows {
  std::vector<std::string> columns;
  std::vector<std::vector<Value>> rows;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_COLUMNS_H_
