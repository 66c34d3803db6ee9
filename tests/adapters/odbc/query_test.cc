#include "adapters/odbc/query.h"

#include <gtest/gtest.h>

namespace rk::odbc {
namespace {

TEST(OdbcQuery, TheTableOfAPlainSelectIsFound) {
  EXPECT_EQ(table_of_text("select * from plan"), "plan");
  EXPECT_EQ(table_of_text("SELECT a, b From \"My plan\" WHERE a='from x' order by b"), "My plan");
  EXPECT_EQ(table_of_text("select a from `plan` limit 3"), "plan");
  EXPECT_EQ(table_of_text("select a from [plan];"), "plan");
}

TEST(OdbcQuery, WhatIsNoPlainSelectHasNone) {
  EXPECT_EQ(table_of_text("select a from x join y on x.i=y.i"), "");
  EXPECT_EQ(table_of_text("select a from x, y"), "");
  EXPECT_EQ(table_of_text("select count(*) from x group by a"), "");
  EXPECT_EQ(table_of_text("select distinct a from x"), "");
  EXPECT_EQ(table_of_text("select a from x union select a from y"), "");
  EXPECT_EQ(table_of_text("select a from (select a from x) y"), "");
  EXPECT_EQ(table_of_text("update x set a=1"), "");
  EXPECT_EQ(table_of_text("select 1"), "");
  EXPECT_EQ(table_of_text("select 'open"), "");
  EXPECT_EQ(table_of_text(""), "");
}

TEST(OdbcQuery, ATranslatedTextShowsItsOwnNames) {
  Query query;
  query.translated = true;
  query.shown = {{"HostName", platform::ColumnType::Text, "t", "hostname"}};
  Column told;
  told.name = "hostname";
  const auto columns = shown_columns(query, {told});
  EXPECT_EQ(columns.at(0).name, "HostName");
  EXPECT_EQ(columns.at(0).base_table, "t");
}

}  // namespace
}  // namespace rk::odbc
