// The storefront database: its tables, columns and indexes as one table of constants, and the DDL
// made of it for each engine. `rkclient schema` prints the DDL; `rkclient check` compares a site's
// own database with the tables. Beside an Id of its own a table holds what the library reads or
// writes and no more: a site may add columns, the library names the ones that it wants.
//
// Table and column names have no letter case, but PostgreSQL (tables and columns) and MariaDB on
// Linux (tables) have; there the DDL writes them in small letters, and so must whoever translates
// a text for these engines.
//
// Thread rule: constants and pure functions.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace rk::app {

enum class SchemaEngine : std::uint8_t { Sqlite, PostgreSql, MariaDb, SqlServer };

// What a column is for; the engines' type names follow from it. But for Key every kind takes Null.
enum class ColumnKind : std::uint8_t {
  Key,        // the row's number, given by the database where the insert names none
  Number,     // whole number
  Reference,  // number of a row elsewhere (a plan, a class, a parent); 0, the default, is none
  Flag,       // compared with 0 and 1 as a number; 0 by default
  Boolean,    // compared with True and False; False by default
  Money,      // four decimals
  Date,       // date with time of day
  Text,       // up to 255 characters where the engine wants a limit
  Memo        // text without a limit
};

struct SchemaColumn {
  std::string_view name;
  ColumnKind kind;
};

struct SchemaTable {
  std::string_view name;
  std::span<const SchemaColumn> columns;
};

struct SchemaIndex {
  std::string_view name;
  std::string_view table;
  // Column names between ", ", each as in the table; a " Desc" may follow.
  std::string_view columns;
  bool unique;
};

std::span<const SchemaTable> schema_tables();
std::span<const SchemaIndex> schema_indexes();

// The type name and the constraints that a column of this kind is declared with.
std::string_view column_declaration(SchemaEngine engine, ColumnKind kind);

// Nothing where no engine has this name: sqlite, postgresql, mariadb, sqlserver (in small letters).
std::optional<SchemaEngine> schema_engine(std::string_view name);

// One statement after another, each closed by ";" and a line end, for the engine's own client (a
// GO line behind each for sqlserver's). Meant for an empty database: a table that is there already
// is the client's error.
std::string schema_ddl(SchemaEngine engine);

}  // namespace rk::app
