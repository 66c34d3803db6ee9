#include "adapters/odbc/schema_rows.h"

#include <utility>

#include "value/conversions.h"

namespace rk::odbc {
namespace {

using platform::SchemaList;
using platform::SchemaRows;

// A column of a list and where the driver's list has it, by how it is shown.
struct ListColumn {
  enum class Show : std::uint8_t { AsTold, Null, IsNullable, HasDefault, TypeNumber, Size, Unique };
  const char* name;
  Show show;
  std::size_t place = 0;
};
using enum ListColumn::Show;

const std::vector<ListColumn>& tables_list() {
  static const std::vector<ListColumn> kList = {
      {"TABLE_CATALOG", AsTold, 0}, {"TABLE_SCHEMA", AsTold, 1}, {"TABLE_NAME", AsTold, 2},
      {"TABLE_TYPE", AsTold, 3},    {"TABLE_GUID", Null},        {"DESCRIPTION", AsTold, 4},
      {"TABLE_PROPID", Null},       {"DATE_CREATED", Null},      {"DATE_MODIFIED", Null}};
  return kList;
}

const std::vector<ListColumn>& columns_list() {
  static const std::vector<ListColumn> kList = {
      {"TABLE_CATALOG", AsTold, 0},     {"TABLE_SCHEMA", AsTold, 1},
      {"TABLE_NAME", AsTold, 2},        {"COLUMN_NAME", AsTold, 3},
      {"ORDINAL_POSITION", AsTold, 16}, {"COLUMN_HASDEFAULT", HasDefault, 12},
      {"COLUMN_DEFAULT", AsTold, 12},   {"IS_NULLABLE", IsNullable, 10},
      {"DATA_TYPE", TypeNumber, 4},     {"CHARACTER_MAXIMUM_LENGTH", Size, 6}};
  return kList;
}

const std::vector<ListColumn>& indexes_list() {
  static const std::vector<ListColumn> kList = {
      {"TABLE_CATALOG", AsTold, 0}, {"TABLE_SCHEMA", AsTold, 1},     {"INDEX_NAME", AsTold, 5},
      {"TYPE", AsTold, 6},          {"TABLE_NAME", AsTold, 2},       {"PRIMARY_KEY", Null},
      {"UNIQUE", Unique, 3},        {"ORDINAL_POSITION", AsTold, 7}, {"COLUMN_NAME", AsTold, 8}};
  return kList;
}

const std::vector<ListColumn>& primary_keys_list() {
  static const std::vector<ListColumn> kList = {
      {"TABLE_CATALOG", AsTold, 0}, {"TABLE_SCHEMA", AsTold, 1}, {"TABLE_NAME", AsTold, 2},
      {"COLUMN_NAME", AsTold, 3},   {"ORDINAL", AsTold, 4},      {"PK_NAME", AsTold, 5}};
  return kList;
}

const std::vector<ListColumn>& foreign_keys_list() {
  static const std::vector<ListColumn> kList = {
      {"PK_TABLE_CATALOG", AsTold, 0}, {"PK_TABLE_SCHEMA", AsTold, 1},
      {"PK_TABLE_NAME", AsTold, 2},    {"FK_TABLE_CATALOG", AsTold, 4},
      {"FK_TABLE_SCHEMA", AsTold, 5},  {"FK_TABLE_NAME", AsTold, 6},
      {"ORDINAL", AsTold, 8},          {"PK_COLUMN_NAME", AsTold, 3},
      {"FK_COLUMN_NAME", AsTold, 7}};
  return kList;
}

const std::vector<ListColumn>& columns_of(SchemaList list) {
  switch (list) {
    case SchemaList::Tables:
      return tables_list();
    case SchemaList::Columns:
      return columns_list();
    case SchemaList::Indexes:
      return indexes_list();
    case SchemaList::PrimaryKeys:
      return primary_keys_list();
    case SchemaList::ForeignKeys:
      break;
  }
  return foreign_keys_list();
}

// How scripts of this kind number the types of columns.
std::int32_t type_number(platform::ColumnType type) {
  switch (type) {
    case platform::ColumnType::Integer:
      return 3;
    case platform::ColumnType::Double:
      return 5;
    case platform::ColumnType::Currency:
      return 6;
    case platform::ColumnType::Boolean:
      return 11;
    case platform::ColumnType::Date:
      return 7;
    case platform::ColumnType::Bytes:
      return 128;
    default:
      return 130;
  }
}

// Places of the driver's list of columns.
constexpr std::size_t kTypeAt = 4, kTypeNameAt = 5, kDecimalsAt = 8;

platform::ColumnType type_of(const std::vector<Value>& row) {
  Column column;
  const int decimals = row[kDecimalsAt].is_null() ? 0 : to_long(row[kDecimalsAt]);
  set_type(column, to_long(row[kTypeAt]), joined_text(row[kTypeNameAt]).view(), decimals);
  return column.type;
}

Value shown(const ListColumn& column, const std::vector<Value>& row) {
  if (column.show == Null || column.place >= row.size()) return Value::null();
  const Value& told = row[column.place];
  switch (column.show) {
    case IsNullable:
      return Value::boolean(!told.is_null() && to_long(told) != 0);
    case HasDefault:
      return Value::boolean(!told.is_null());
    case TypeNumber:
      return Value::long_integer(type_number(type_of(row)));
    case Size:
      return type_of(row) == platform::ColumnType::Text ? told : Value::null();
    case Unique:
      return Value::boolean(!told.is_null() && to_long(told) == 0);
    default:
      return told;
  }
}

std::vector<std::vector<Value>> told_rows(Session& session, Statement::List list,
                                          std::string_view table) {
  std::vector<std::vector<Value>> rows;
  const auto statement = session.statement();
  statement->list(list, table);
  while (statement->next()) {
    auto& row = rows.emplace_back();
    for (std::size_t i = 0; i < statement->columns().size(); ++i) {
      row.push_back(statement->value(i));
    }
  }
  return rows;
}

// The first row of an index list tells of the table itself.
bool tells_of_table(SchemaList list, const std::vector<Value>& row) {
  constexpr std::size_t kIndexNameAt = 5;
  return list == SchemaList::Indexes && (row.size() <= kIndexNameAt || row[kIndexNameAt].is_null());
}

}  // namespace

SchemaRows schema_rows(Session& session, SchemaList list) {
  SchemaRows out;
  const std::vector<ListColumn>& columns = columns_of(list);
  for (const ListColumn& column : columns) out.columns.emplace_back(column.name);
  const auto tables = told_rows(session, Statement::List::Tables, "");
  const auto add = [&](const std::vector<std::vector<Value>>& rows) {
    for (const std::vector<Value>& row : rows) {
      if (tells_of_table(list, row)) continue;
      auto& made = out.rows.emplace_back();
      for (const ListColumn& column : columns) made.push_back(shown(column, row));
    }
  };
  if (list == SchemaList::Tables) {
    add(tables);
    return out;
  }
  constexpr std::size_t kSchemaAt = 1, kTableAt = 2;
  for (const std::vector<Value>& table : tables) {
    const std::string name = joined_text(table[kTableAt]).string();
    auto rows = told_rows(session, static_cast<Statement::List>(list), name);
    // A list takes a name for a pattern.
    const std::size_t at = list == SchemaList::ForeignKeys ? 6 : kTableAt;
    std::erase_if(rows, [&](const std::vector<Value>& row) {
      return joined_text(row[at]).view() != name ||
             joined_text(row[at - 1]).view() != joined_text(table[kSchemaAt]).view();
    });
    add(rows);
  }
  return out;
}

}  // namespace rk::odbc
