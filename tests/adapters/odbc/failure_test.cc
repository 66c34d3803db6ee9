#include "adapters/odbc/failure.h"

#include <gtest/gtest.h>

namespace rk::odbc {
namespace {

TEST(OdbcFailure, StatesHaveTheNumbersThatPagesKnow) {
  EXPECT_EQ(number_of_state("42S02"), errors::kSqlMissingTable);
  EXPECT_EQ(number_of_state("42P01"), errors::kSqlMissingTable);
  EXPECT_EQ(number_of_state("42S22"), errors::kSqlMissingColumn);
  EXPECT_EQ(number_of_state("42703"), errors::kSqlMissingColumn);
  EXPECT_EQ(number_of_state("07002"), errors::kSqlMissingColumn);
  EXPECT_EQ(number_of_state("42000"), errors::kSqlSyntax);
  EXPECT_EQ(number_of_state("42601"), errors::kSqlSyntax);
  EXPECT_EQ(number_of_state("37000"), errors::kSqlSyntax);
  EXPECT_EQ(number_of_state("42S01"), kTableExists);
  EXPECT_EQ(number_of_state("22018"), kDataTypeMismatch);
  EXPECT_EQ(number_of_state("22003"), kDataOverflow);
  EXPECT_EQ(number_of_state("23505"), kIntegrityViolation);
  EXPECT_EQ(number_of_state("HYT00"), errors::kSqlTimeout);
  EXPECT_EQ(number_of_state("57014"), errors::kSqlTimeout);
  EXPECT_EQ(number_of_state("HY000"), errors::kSqlFailure);
  EXPECT_EQ(number_of_state(""), errors::kSqlFailure);
}

TEST(OdbcFailure, ALostConnectionIsKnownByItsState) {
  EXPECT_TRUE(is_lost_state("08S01"));
  EXPECT_TRUE(is_lost_state("57P01"));
  EXPECT_FALSE(is_lost_state("57014"));
  EXPECT_FALSE(is_lost_state("42000"));
}

TEST(OdbcFailure, ADriverThatTellsNothingIsSaidToHaveFailed) {
  try {
    raise_failure({});
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), errors::kSqlFailure);
    EXPECT_FALSE(error.description().empty());
  }
}

}  // namespace
}  // namespace rk::odbc
