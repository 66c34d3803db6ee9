#include "adapters/sqlite/schema_rows.h"

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/sqlite/catalogue.h"
#include "adapters/sqlite/field_values.h"
#include "adapters/sqlite/row_buffer.h"

namespace rk::sqlite {
namespace {

using jetsql::Type;
using platform::SchemaList;
using platform::SchemaRows;

// A column of a list: its name, how its values are shown, and the expression that gives them.
struct ListColumn {
  const char* name;
  Type type;
  const char* expression;
};

struct ListText {
  std::vector<ListColumn> columns;
  const char* from;
};

// The columns stand in the order that scripts restrict the lists by.
ListText tables_list() {
  return {{{"TABLE_CATALOG", Type::Text, "null"},
           {"TABLE_SCHEMA", Type::Text, "null"},
           {"TABLE_NAME", Type::Text, "t.name"},
           {"TABLE_TYPE", Type::Text, "case t.type when 'view' then 'VIEW' else 'TABLE' end"},
           {"TABLE_GUID", Type::Text, "null"},
           {"DESCRIPTION", Type::Text, "null"},
           {"TABLE_PROPID", Type::Integer, "null"},
           // The file does not note when its tables were made.
           {"DATE_CREATED", Type::Date, "null"},
           {"DATE_MODIFIED", Type::Date, "null"}},
          " from sqlite_schema t where t.type in ('table', 'view') and t.name not like "
          "'sqlite\\_%' escape '\\' order by t.name collate nocase"};
}

ListText columns_list() {
  return {{{"TABLE_CATALOG", Type::Text, "null"},
           {"TABLE_SCHEMA", Type::Text, "null"},
           {"TABLE_NAME", Type::Text, "t.name"},
           {"COLUMN_NAME", Type::Text, "c.name"},
           {"ORDINAL_POSITION", Type::Integer, "c.cid + 1"},
           {"COLUMN_HASDEFAULT", Type::Boolean, "c.dflt_value is not null"},
           {"COLUMN_DEFAULT", Type::Text, "c.dflt_value"},
           {"IS_NULLABLE", Type::Boolean, "c.\"notnull\" = 0 and c.pk = 0"},
           {"DATA_TYPE", Type::Text, "c.type"},
           {"CHARACTER_MAXIMUM_LENGTH", Type::Text, "c.type"}},
          " from sqlite_schema t join pragma_table_xinfo(t.name) c where t.type in ('table', "
          "'view') and c.hidden <> 1 and t.name not like 'sqlite\\_%' escape '\\' order by t.name "
          "collate nocase, c.cid"};
}

ListText indexes_list() {
  return {
      {{"TABLE_CATALOG", Type::Text, "null"},
       {"TABLE_SCHEMA", Type::Text, "null"},
       // The file has one index of a name, a table of the page its own: kept as table.index.
       {"INDEX_NAME", Type::Text,
        "case when i.origin = 'pk' then 'PrimaryKey' when i.name like t.name || '.%' then "
        "substr(i.name, length(t.name) + 2) else i.name end"},
       {"TYPE", Type::Integer, "1"},
       {"TABLE_NAME", Type::Text, "t.name"},
       {"PRIMARY_KEY", Type::Boolean, "i.origin = 'pk'"},
       {"UNIQUE", Type::Boolean, "i.\"unique\""},
       {"ORDINAL_POSITION", Type::Integer, "i.seqno + 1"},
       {"COLUMN_NAME", Type::Text, "i.column_name"}},
      // A key that is the number of the rows has no index of its own in the file.
      " from sqlite_schema t join (select t.name as owner, i.name as name, i.origin as "
      "origin, i.\"unique\" as \"unique\", c.seqno as seqno, c.name as column_name from "
      "sqlite_schema t join pragma_index_list(t.name) i "
      "join pragma_index_info(i.name) c where t.type = 'table' union all select t.name, "
      "'PrimaryKey', 'pk', 1, 0, c.name from sqlite_schema t join pragma_table_xinfo(t.name) c "
      "where t.type = 'table' and c.pk = 1 and not exists (select 1 from "
      "pragma_index_list(t.name) k where k.origin = 'pk')) i on i.owner = t.name where t.type = "
      "'table' and t.name not like 'sqlite\\_%' escape '\\' order by t.name collate nocase, "
      "i.name collate nocase, i.seqno"};
}

ListText primary_keys_list() {
  return {{{"TABLE_CATALOG", Type::Text, "null"},
           {"TABLE_SCHEMA", Type::Text, "null"},
           {"TABLE_NAME", Type::Text, "t.name"},
           {"COLUMN_NAME", Type::Text, "c.name"},
           {"ORDINAL", Type::Integer, "c.pk"},
           {"PK_NAME", Type::Text, "'PrimaryKey'"}},
          " from sqlite_schema t join pragma_table_xinfo(t.name) c where t.type = 'table' and c.pk "
          "> 0 and t.name not like 'sqlite\\_%' escape '\\' order by t.name collate nocase, c.pk"};
}

ListText foreign_keys_list() {
  return {{{"PK_TABLE_CATALOG", Type::Text, "null"},
           {"PK_TABLE_SCHEMA", Type::Text, "null"},
           {"PK_TABLE_NAME", Type::Text, "f.\"table\""},
           {"FK_TABLE_CATALOG", Type::Text, "null"},
           {"FK_TABLE_SCHEMA", Type::Text, "null"},
           {"FK_TABLE_NAME", Type::Text, "t.name"},
           {"ORDINAL", Type::Integer, "f.seq + 1"},
           {"PK_COLUMN_NAME", Type::Text, "f.\"to\""},
           {"FK_COLUMN_NAME", Type::Text, "f.\"from\""}},
          " from sqlite_schema t join pragma_foreign_key_list(t.name) f where t.type = 'table' "
          "order by t.name collate nocase, f.id, f.seq"};
}

ListText text_of(SchemaList list) {
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

std::string statement_of(const ListText& list) {
  std::string text = "select ";
  for (const ListColumn& column : list.columns) {
    if (&column != &list.columns.front()) text += ", ";
    text += column.expression;
  }
  return text + list.from;
}

// How scripts of this kind number the types of columns.
std::int32_t type_number(Type type) {
  switch (type) {
    case Type::Integer:
      return 3;
    case Type::Double:
      return 5;
    case Type::Currency:
      return 6;
    case Type::Boolean:
      return 11;
    case Type::Date:
      return 7;
    case Type::Blob:
      return 128;
    case Type::Text:
    case Type::Unknown:
      break;
  }
  return 130;
}

// The declarations of the last two columns become a number of a type and a length.
void read_declaration(std::vector<Value>& row) {
  const std::string declaration(row[8].is_text() ? row[8].as_view() : std::string_view());
  const Type type = jetsql::type_of_declaration(declaration);
  row[8] = Value::long_integer(type_number(type));
  row[9] = type == Type::Text ? Value::long_integer(declared_size(declaration)) : Value::null();
}

}  // namespace

SchemaRows schema_rows(Session& session, SchemaList list) {
  const ListText text = text_of(list);
  SchemaRows out;
  for (const ListColumn& column : text.columns) out.columns.emplace_back(column.name);
  const Reading reading(session);
  Handle& handle = session.handle();
  const Lease lease = handle.lease(handle.own_plan(statement_of(text)), 0);
  RowBuffer buffer;
  while (handle.step(lease.statement())) {
    buffer.begin(text.columns.size());
    buffer.add(lease.statement());
    std::vector<Value> row;
    for (std::size_t i = 0; i < text.columns.size(); ++i) {
      row.push_back(field_value(buffer, buffer.cell(0, i), text.columns[i].type));
    }
    if (list == SchemaList::Columns) read_declaration(row);
    out.rows.push_back(std::move(row));
  }
  return out;
}

}  // namespace rk::sqlite
