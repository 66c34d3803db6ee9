#include "jetsql/schema.h"

#include <gtest/gtest.h>

namespace rk::jetsql {
namespace {

TEST(TypeOfDeclaration, GoesByTheFirstWord) {
  EXPECT_EQ(type_of_declaration("INTEGER"), Type::Integer);
  EXPECT_EQ(type_of_declaration("text(50)"), Type::Text);
  EXPECT_EQ(type_of_declaration(" DateTime "), Type::Date);
  EXPECT_EQ(type_of_declaration("DECIMAL(10,2)"), Type::Double);
  EXPECT_EQ(type_of_declaration("Currency"), Type::Currency);
  EXPECT_EQ(type_of_declaration("BOOLEAN NOT NULL"), Type::Boolean);
  EXPECT_EQ(type_of_declaration("blob"), Type::Blob);
  EXPECT_EQ(type_of_declaration(""), Type::Unknown);
  EXPECT_EQ(type_of_declaration("geometry"), Type::Unknown);
}

TEST(Table, FindsColumnsInAnyLetterCase) {
  Table table;
  table.columns = {{"Id", Type::Integer, false, true}, {"HostName", Type::Text, true, false}};
  EXPECT_EQ(table.column("HOSTNAME"), &table.columns[1]);
  EXPECT_EQ(table.column("id"), &table.columns[0]);
  EXPECT_EQ(table.column("Host"), nullptr);
}

}  // namespace
}  // namespace rk::jetsql
