#include "adapters/sqlite/field_values.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdio>
#include <random>

#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::sqlite {
namespace {

using jetsql::Type;

// Cells made by the engine itself out of an expression.
class FieldValues : public testing::Test {
 protected:
  void SetUp() override { sqlite3_open(":memory:", &database_); }
  void TearDown() override { sqlite3_close(database_); }

  const Cell& stored(const std::string& expression) {
    sqlite3_stmt* statement = nullptr;
    const std::string text = "select " + expression;
    EXPECT_EQ(sqlite3_prepare_v2(database_, text.c_str(), -1, &statement, nullptr), SQLITE_OK);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
    rows_.begin(1);
    rows_.add(statement);
    sqlite3_finalize(statement);
    return rows_.cell(0, 0);
  }
  Value value(const std::string& expression, Type type) {
    return field_value(rows_, stored(expression), type);
  }
  std::string text(const std::string& expression, Type type) {
    return joined_text(value(expression, type)).string();
  }
  // Both ways to a text.
  void expect_same_text(const std::string& expression, Type type) {
    const Cell& cell = stored(expression);
    const Value plain = field_value(rows_, cell, type);
    std::string out;
    const bool there = append_field_value(out, rows_, cell, type);
    EXPECT_EQ(there, !plain.is_null()) << expression;
    EXPECT_EQ(out, joined_text(plain).string()) << expression << " as " << static_cast<int>(type);
  }

  sqlite3* database_ = nullptr;
  RowBuffer rows_;
};

TEST_F(FieldValues, AnIntegerIsALongOrADoubleWhereItDoesNotFit) {
  EXPECT_EQ(value("7", Type::Integer).kind(), Value::Kind::Long);
  EXPECT_EQ(value("2147483647", Type::Integer).as_long(), 2147483647);
  EXPECT_EQ(value("2147483648", Type::Integer).kind(), Value::Kind::Double);
  EXPECT_EQ(text("123456789012345", Type::Integer), "123456789012345");
  EXPECT_EQ(text("-999999999999999", Type::Integer), "-999999999999999");
}

TEST_F(FieldValues, NumbersAreDoubles) {
  EXPECT_EQ(value("7", Type::Double).kind(), Value::Kind::Double);
  EXPECT_EQ(text("99.5", Type::Double), "99.5");
  EXPECT_EQ(value("1.5", Type::Unknown).kind(), Value::Kind::Double);
}

TEST_F(FieldValues, CurrencyHasFourDecimals) {
  EXPECT_EQ(value("99.5", Type::Currency).as_currency(), 995000);
  EXPECT_EQ(value("3", Type::Currency).kind(), Value::Kind::Currency);
  EXPECT_EQ(text("0.00005", Type::Currency), "0");  // to the even neighbour
  EXPECT_EQ(value("1e15", Type::Currency).kind(), Value::Kind::Double);
  EXPECT_EQ(text("922337203685477", Type::Currency), "922337203685477");
  EXPECT_EQ(value("922337203685477.0", Type::Currency).as_currency(), 9223372036854770000);
  EXPECT_EQ(value("922337203685478", Type::Currency).kind(), Value::Kind::Double);
}

TEST_F(FieldValues, AFlagIsABoolean) {
  EXPECT_TRUE(value("1", Type::Boolean).as_boolean());
  EXPECT_FALSE(value("0", Type::Boolean).as_boolean());
  EXPECT_EQ(text("-1", Type::Boolean), "True");
}

TEST_F(FieldValues, ADateIsReadFromItsText) {
  EXPECT_EQ(value("'2024-03-04 05:06:07'", Type::Date).kind(), Value::Kind::Date);
  EXPECT_EQ(text("'2024-03-04'", Type::Date), "2024-03-04");
  EXPECT_EQ(text("'2024-3-4 00:00:00'", Type::Date), "2024-03-04");
  EXPECT_EQ(value("'soon'", Type::Date).kind(), Value::Kind::String);
  EXPECT_EQ(value("45000", Type::Date).as_date(), 45000);
}

TEST_F(FieldValues, TextIsMadeReadable) {
  EXPECT_EQ(text("cast(x'61ff62' as text)", Type::Text),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(value("x'61ff'", Type::Text).as_view(), "a\xEF\xBF\xBD");
  EXPECT_EQ(value("'a' || char(0) || 'b'", Type::Text).as_view(), std::string_view("a\0b", 3));
}

TEST_F(FieldValues, ABlobIsAnArrayOfBytes) {
  const Value bytes = value("x'00ff41'", Type::Blob);
  ASSERT_TRUE(bytes.is_array());
  EXPECT_EQ(bytes.as_array().bytes(), std::string("\0\xFF"
                                                  "A",
                                                  3));
  EXPECT_TRUE(value("x''", Type::Blob).is_array());
}

TEST_F(FieldValues, NullIsNullOfEveryType) {
  for (int type = 0; type <= static_cast<int>(Type::Blob); ++type) {
    EXPECT_TRUE(value("null", static_cast<Type>(type)).is_null());
  }
}

TEST_F(FieldValues, TheFastTextIsTheValuesText) {
  const char* expressions[] = {"null",
                               "0",
                               "-1",
                               "7",
                               "2147483648",
                               "999999999999999",
                               "1000000000000000",
                               "9223372036854775807",
                               "-9223372036854775808",
                               "0.5",
                               "-0.0",
                               "1e300",
                               "100.0",
                               "99.995",
                               "'x'",
                               "''",
                               "'5'",
                               "'2024-03-04'",
                               "'2024-03-04 05:06:07'",
                               "'2024-03-04 00:00:00'",
                               "'1899-12-30'",
                               "'1899-12-30 10:00:00'",
                               "'2024-02-30'",
                               "'2024-02-29'",
                               "'0999-01-01'",
                               "'2024-1-1'",
                               "'2024-01-01 24:00:00'",
                               "'9999-12-31 23:59:59'",
                               "'10:20:30'",
                               "x'4100'",
                               "x''",
                               "cast(x'ff' as text)"};
  for (const char* expression : expressions) {
    for (int type = 0; type <= static_cast<int>(Type::Blob); ++type) {
      expect_same_text(expression, static_cast<Type>(type));
    }
  }
}

TEST_F(FieldValues, TheFastTextOfRandomDatesAndNumbersIsTheValuesText) {
  std::mt19937 random(11);
  const auto below = [&](unsigned bound) { return static_cast<int>(random() % bound); };
  for (int i = 0; i < 3000; ++i) {
    char date[64];
    std::snprintf(date, sizeof date, "'%04d-%02d-%02d%s%02d:%02d:%02d'", 1890 + below(200),
                  below(14), below(33), below(5) == 0 ? "T" : " ", below(25), below(61), below(61));
    expect_same_text(date, Type::Date);
    expect_same_text(std::to_string(static_cast<std::int64_t>(random()) * below(1000000)),
                     Type::Integer);
    expect_same_text(std::to_string(below(100000)) + "." + std::to_string(below(100000)),
                     static_cast<Type>(below(8)));
  }
}

TEST_F(FieldValues, WhatNoColumnTakesIsAMismatch) {
  bool bytes = false;
  for (const Value& bad : {Value::nothing(), Value::missing(), Value::array(Array::of({}))}) {
    try {
      literal_of(bad, bytes);
      ADD_FAILURE();
    } catch (const ScriptError& error) {
      EXPECT_TRUE(error.number() == -2147217913 || error.number() == 91) << error.number();
    }
  }
}

TEST_F(FieldValues, ASingleIsStoredAsItIsShown) {
  bool bytes = false;
  EXPECT_EQ(literal_of(Value::single(0.1F), bytes).number, 0.1);
  EXPECT_EQ(literal_of(Value::currency(-15000), bytes).number, -1.5);
}

}  // namespace
}  // namespace rk::sqlite
