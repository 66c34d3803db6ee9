// What the translator must know of a database: its tables, their columns and the types these were
// declared with. The adapter of an engine implements Schema over its own catalogue. Thread rule: a
// Schema is asked on the caller's thread, and what it answers stays valid until translate returns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rk::jetsql {

// The type that a page sees. Unknown: an expression whose type only its values tell.
enum class Type { Unknown, Integer, Double, Currency, Boolean, Date, Text, Blob };

// The type that a column's declaration stands for: INTEGER, REAL, DECIMAL, NUMERIC, CURRENCY,
// BOOLEAN, DATETIME, TEXT, BLOB and their usual relatives, without regard to letter case and to
// what stands in brackets behind; Unknown for an empty or a strange one.
Type type_of_declaration(std::string_view declaration);

struct Column {
  std::string name;  // in the table's own spelling
  Type type = Type::Unknown;
  bool no_case =
      false;  // declared COLLATE NOCASE: comparisons need not say so, and may use its index
  bool row_id = false;    // INTEGER PRIMARY KEY: another name of the row's number
  bool unique = false;    // no two rows hold the same value
  bool required = false;  // declared NOT NULL
  int size = 0;           // of a Text: the characters it was declared for, or 0
};

struct Table {
  std::string name;  // in the table's own spelling
  std::vector<Column> columns;
  std::vector<std::string> indexes;  // their names in the file
  bool row_ids = true;  // false for views and tables WITHOUT ROWID: no stored order to fall back on

  // Without regard to letter case; null where the table has no such column.
  const Column* column(std::string_view column_name) const;
};

class Schema {
 public:
  virtual ~Schema() = default;

  // Without regard to letter case; null where there is no such table or view. The table belongs to
  // the schema.
  virtual const Table* table(std::string_view name) const = 0;
};

}  // namespace rk::jetsql
