#include "adapters/odbc/schema_rows.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/adapters/odbc/odbc_world.h"

namespace rk::tests {
namespace {

using platform::SchemaList;

std::string listed(platform::Connection& connection, SchemaList list,
                   const std::vector<std::string>& names) {
  const platform::SchemaRows rows = connection.schema(list);
  std::string out;
  for (const auto& row : rows.rows) {
    for (const std::string& name : names) {
      const auto at = std::find(rows.columns.begin(), rows.columns.end(), name);
      out += joined_text(row.at(static_cast<std::size_t>(at - rows.columns.begin()))).string();
      out += name == names.back() ? "\n" : " ";
    }
  }
  return out;
}

TEST(OdbcSchemaRows, ListsTablesAndTheirColumns) {
  OdbcWorld world;
  world.run("create table a_b (Id integer primary key, Name varchar(30) not null)");
  world.run("create table axb (Id integer)");
  EXPECT_EQ(listed(*world.connection, SchemaList::Tables, {"TABLE_NAME", "TABLE_TYPE"}),
            "a_b TABLE\naxb TABLE\n");
  EXPECT_EQ(listed(*world.connection, SchemaList::Columns,
                   {"TABLE_NAME", "COLUMN_NAME", "DATA_TYPE", "CHARACTER_MAXIMUM_LENGTH"}),
            "a_b Id 3 \na_b Name 130 30\naxb Id 3 \n");
}

TEST(OdbcSchemaRows, ListsKeysAndIndexes) {
  OdbcWorld world;
  world.run("create table a (Id integer primary key, N integer)");
  world.run("create unique index by_n on a (N)");
  world.run("create table b (Id integer, A integer references a(Id))");
  EXPECT_EQ(listed(*world.connection, SchemaList::PrimaryKeys, {"TABLE_NAME", "COLUMN_NAME"}),
            "a Id\n");
  EXPECT_NE(listed(*world.connection, SchemaList::Indexes,
                   {"TABLE_NAME", "INDEX_NAME", "COLUMN_NAME", "UNIQUE"})
                .find("a by_n N True\n"),
            std::string::npos);
  EXPECT_EQ(listed(*world.connection, SchemaList::ForeignKeys,
                   {"PK_TABLE_NAME", "PK_COLUMN_NAME", "FK_TABLE_NAME", "FK_COLUMN_NAME"}),
            "a Id b A\n");
}

}  // namespace
}  // namespace rk::tests
