#include "pagehost/components/command_texts.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/object_calls.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

using platform::SqlText;
using tests::error_number;

std::string statement(std::string_view text, std::int32_t options = 0) {
  return statement_of(SqlText(std::string(text)), options).text();
}

SqlText with_values(std::string text, int count) {
  SqlText sql(std::move(text));
  for (int i = 0; i < count; ++i) sql.bind(Value::long_integer(i));
  return sql;
}

// A database that knows no name of these but those of a Parameters clause.
void refuse_unknown(const SqlText& sql, std::initializer_list<std::string_view> unknown) {
  for (const std::string_view name : unknown) {
    if (sql.text().find("[" + std::string(name) + "] Text") != std::string::npos) continue;
    throw ScriptError(errors::kSqlMissingColumn, "No value: '" + std::string(name) + "'.");
  }
}

TEST(CommandTexts, ATableMayBeNamedInPlaceOfAStatement) {
  EXPECT_EQ(statement("t"), "Select * From [t]");
  EXPECT_EQ(statement(" [my tab] "), "Select * From [my tab]");
  EXPECT_EQ(statement("my tab", kCommandTable), "Select * From [my tab]");
  EXPECT_EQ(statement("[t]", kCommandTableDirect), "Select * From [t]");
  EXPECT_EQ(statement("t", kCommandTable | kExecuteNoRecords), "Select * From [t]");
}

TEST(CommandTexts, AStatementStaysAsItIs) {
  EXPECT_EQ(statement("Select 1"), "Select 1");
  EXPECT_EQ(statement("[a] or [b]"), "[a] or [b]");
  EXPECT_EQ(statement("Select 1", -1), "Select 1");
  EXPECT_EQ(statement(" "), " ");
}

TEST(CommandTexts, ASelectIsKnownByItsFirstWord) {
  EXPECT_TRUE(begins_as_select("  (Select a"));
  EXPECT_TRUE(begins_as_select("select*from t"));
  EXPECT_FALSE(begins_as_select("selection"));
  EXPECT_FALSE(begins_as_select("Delete From t"));
}

TEST(CommandTexts, UnknownNamesStandForTheValuesInTheOrderOfTheText) {
  SqlText sql = with_values("Select a From t Where b=[x y] And c=pc", 2);
  naming_parameters(sql, [&] { refuse_unknown(sql, {"pc", "x y"}); });
  EXPECT_EQ(sql.text(), "Parameters [x y] Text,[pc] Text;Select a From t Where b=[x y] And c=pc");
  EXPECT_EQ(sql.values().size(), 2U);
}

TEST(CommandTexts, MoreNamesThanValuesAreRefused) {
  SqlText sql = with_values("Select a From t Where b=p And c=q", 1);
  EXPECT_EQ(error_number([&] { naming_parameters(sql, [&] {
                                 refuse_unknown(sql, {"p", "q"});
                               }); }),
            errors::kSqlMissingColumn);
}

TEST(CommandTexts, NamesStandForNoValueBesideMarks) {
  for (const char* text : {"Select a From t Where b=? And c=q", "Parameters p Text; Select q"}) {
    SqlText sql = with_values(text, 2);
    int runs = 0;
    EXPECT_EQ(error_number([&] {
                naming_parameters(sql, [&] {
                  ++runs;
                  refuse_unknown(sql, {"q"});
                });
              }),
              errors::kSqlMissingColumn);
    EXPECT_EQ(runs, 1);
  }
}

}  // namespace
}  // namespace rk::pagehost
