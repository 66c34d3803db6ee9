#include "adapters/sqlite/connection_string.h"

#include <gtest/gtest.h>

#include "value/script_error.h"

namespace rk::sqlite {
namespace {

std::string source(std::string_view text) {
  return parse_connection_string(text).data_source;
}

std::string refusal(std::string_view text) {
  try {
    parse_connection_string(text);
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), errors::kSqlFailure);
    return error.description();
  }
  return {};
}

TEST(ConnectionString, KeywordsComeInAnyLetterCaseAndOrder) {
  EXPECT_EQ(source("Data Source=shop.db"), "shop.db");
  EXPECT_EQ(source("  DATA SOURCE = shop.db ; mode=read"), "shop.db");
  EXPECT_EQ(source("Provider=Microsoft.Jet.OLEDB.4.0;data source=a/b.mdb;"), "a/b.mdb");
}

TEST(ConnectionString, JetsOwnKeywordsHaveNoEffect) {
  EXPECT_EQ(source("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=x.mdb;Jet OLEDB:Database "
                   "Password=secret;Persist Security Info=False;User ID=admin"),
            "x.mdb");
}

TEST(ConnectionString, ValuesMayBeQuoted) {
  EXPECT_EQ(source("Data Source='a;b.db'"), "a;b.db");
  EXPECT_EQ(source("Data Source=\"it's.db\" ;Mode=Read"), "it's.db");
  EXPECT_EQ(source("Data Source='it''s.db'"), "it's.db");
  EXPECT_EQ(source("Data Source={br}}ace.db}"), "br}ace.db");
}

TEST(ConnectionString, AnAccessDriverNamesItsFileByDbq) {
  EXPECT_EQ(source("Driver={Microsoft Access Driver (*.mdb)};DBQ=C:\\site\\x.mdb"),
            "C:\\site\\x.mdb");
  EXPECT_EQ(source("dbq=x.mdb;DRIVER={Microsoft Access Driver (*.mdb, *.accdb)};Uid=;Pwd=;"),
            "x.mdb");
}

TEST(ConnectionString, AnSqliteDriverNamesItsFileByDatabase) {
  EXPECT_EQ(source("Driver=SQLite3 ODBC Driver;Database=x.db"), "x.db");
}

TEST(ConnectionString, OtherDriversAndDataSourcesAreRefusedByName) {
  EXPECT_NE(refusal("Driver={SQL Server};Server=db;Database=x").find("{SQL Server}"),
            std::string::npos);
  EXPECT_NE(refusal("DSN=shop").find("DSN=shop"), std::string::npos);
  EXPECT_NE(refusal("Driver=SQLite3;DBQ=x"), "");
  EXPECT_NE(refusal("Driver={Microsoft Access Driver (*.mdb)};Database=x"), "");
}

TEST(ConnectionString, OtherDriversAndDataSourcesAreThoseOfOdbc) {
  EXPECT_TRUE(names_odbc_source("Driver={SQL Server};Server=db;Database=x"));
  EXPECT_TRUE(names_odbc_source("Driver={PostgreSQL Unicode};Server=db"));
  EXPECT_TRUE(names_odbc_source("dsn=shop;uid=a"));
  EXPECT_FALSE(names_odbc_source("Driver={Microsoft Access Driver (*.mdb)};DBQ=x.mdb"));
  EXPECT_FALSE(names_odbc_source("Driver=SQLite3;Database=x.db"));
  EXPECT_FALSE(names_odbc_source("Data Source=shop.db"));
  EXPECT_FALSE(names_odbc_source("DSN=shop;nonsense"));
  EXPECT_FALSE(names_odbc_source(""));
}

TEST(ConnectionString, TheModeIsReadWriteUnlessItSaysReadOrCreate) {
  EXPECT_EQ(parse_connection_string("Data Source=x").mode, OpenMode::ReadWrite);
  EXPECT_EQ(parse_connection_string("Data Source=x;Mode=CREATE").mode, OpenMode::Create);
  EXPECT_EQ(parse_connection_string("Mode=Read;Data Source=x").mode, OpenMode::Read);
  EXPECT_EQ(parse_connection_string("Data Source=x;Mode=Share Deny None").mode,
            OpenMode::ReadWrite);
}

TEST(ConnectionString, TheLastOfAKeywordGivenTwiceCounts) {
  EXPECT_EQ(source("Data Source=a;Data Source=b"), "b");
}

TEST(ConnectionString, WhatIsMissingIsSaid) {
  EXPECT_NE(refusal("").find("empty"), std::string::npos);
  EXPECT_NE(refusal("  ").find("empty"), std::string::npos);
  EXPECT_NE(refusal("Provider=x").find("Data Source"), std::string::npos);
  EXPECT_NE(refusal("Data Source=").find("Data Source"), std::string::npos);
  EXPECT_NE(refusal("shop.db").find("shop.db"), std::string::npos);
  EXPECT_NE(refusal("=x;Data Source=y"), "");
  EXPECT_NE(refusal("Data Source='x").find("closing"), std::string::npos);
  EXPECT_NE(refusal("Data Source='x'y"), "");
}

}  // namespace
}  // namespace rk::sqlite
