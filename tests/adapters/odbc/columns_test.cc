#include "adapters/odbc/columns.h"

#include <gtest/gtest.h>
#include <sql.h>

#include "adapters/odbc/failure.h"
#include "tests/adapters/odbc/odbc_world.h"
#include "value/array.h"

namespace rk::odbc {
namespace {

using platform::ColumnType;

ColumnType type(int sql_type, std::string_view name = "", int decimals = 0) {
  Column column;
  set_type(column, sql_type, name, decimals);
  return column.type;
}

TEST(OdbcColumns, ADriversTypeDecidesTheValue) {
  EXPECT_EQ(type(SQL_INTEGER), ColumnType::Integer);
  EXPECT_EQ(type(SQL_DOUBLE), ColumnType::Double);
  EXPECT_EQ(type(SQL_NUMERIC, "numeric", 4), ColumnType::Currency);
  EXPECT_EQ(type(SQL_NUMERIC, "numeric", 2), ColumnType::Double);
  EXPECT_EQ(type(SQL_TYPE_TIMESTAMP), ColumnType::Date);
  EXPECT_EQ(type(SQL_VARCHAR, "text"), ColumnType::Text);
  EXPECT_EQ(type(SQL_VARCHAR, "bool"), ColumnType::Boolean);
  EXPECT_EQ(type(-777, "strange"), ColumnType::Text);
}

TEST(OdbcColumns, AValueIsStoredInItsColumnsKind) {
  EXPECT_EQ(stored_value(Value::text("12"), ColumnType::Integer).as_long(), 12);
  EXPECT_EQ(stored_value(Value::text("4000000000"), ColumnType::Integer).as_double(), 4e9);
  EXPECT_EQ(stored_value(Value::text("2.5"), ColumnType::Currency).as_currency(), 25000);
  EXPECT_EQ(stored_value(Value::long_integer(7), ColumnType::Text).as_view(), "7");
  EXPECT_TRUE(stored_value(Value::long_integer(-1), ColumnType::Boolean).as_boolean());
  EXPECT_EQ(stored_value(Value::text("2023-03-15 12:00"), ColumnType::Date).as_date(), 45000.5);
  EXPECT_TRUE(stored_value(Value::null(), ColumnType::Integer).is_null());
  EXPECT_TRUE(stored_value(Value(), ColumnType::Text).is_null());
}

TEST(OdbcColumns, WhatSuitsNoColumnIsATypeMismatch) {
  using tests::error_number;
  EXPECT_EQ(error_number([] { stored_value(Value::text("many"), ColumnType::Integer); }),
            kDataTypeMismatch);
  EXPECT_EQ(error_number([] { stored_value(Value::text("soon"), ColumnType::Date); }),
            kDataTypeMismatch);
  EXPECT_EQ(error_number([] { stored_value(Value::real(1e30), ColumnType::Currency); }),
            kDataOverflow);
  EXPECT_EQ(error_number(
                [] { stored_value(Value::array(Array::of({Value::null()})), ColumnType::Text); }),
            kDataTypeMismatch);
}

}  // namespace
}  // namespace rk::odbc
