#include "pagehost/components/connection_texts.h"

#include <gtest/gtest.h>

namespace rk::pagehost {
namespace {

TEST(ConnectionTexts, KeywordsAreFoundInAnyLetterCase) {
  constexpr std::string_view text = "provider = Some.Thing ; DATA SOURCE='a;b.db';Mode=";
  EXPECT_EQ(connection_keyword(text, "Provider"), "Some.Thing");
  EXPECT_EQ(connection_keyword(text, "Data Source"), "a;b.db");
  EXPECT_EQ(connection_keyword(text, "Mode"), "");
  EXPECT_EQ(connection_keyword(text, "b.db'"), "");
  EXPECT_EQ(connection_keyword("", "Mode"), "");
}

TEST(ConnectionTexts, AKeywordIsAddedOnce) {
  EXPECT_EQ(with_keyword("Data Source=a.db", "Mode", "Read"), "Data Source=a.db;Mode=Read");
  EXPECT_EQ(with_keyword("Data Source=a.db;", "Mode", "Read"), "Data Source=a.db;Mode=Read");
  EXPECT_EQ(with_keyword("", "Data Source", "a.db"), "Data Source=a.db");
  EXPECT_EQ(with_keyword("mode=Create;Data Source=a.db", "Mode", "Read"),
            "mode=Create;Data Source=a.db");
}

TEST(ConnectionTexts, AFileMayBeNamedByItself) {
  EXPECT_EQ(connection_to_file("/site/data/a.mdb"), "Data Source=\"/site/data/a.mdb\"");
  EXPECT_EQ(connection_to_file(" a;b\".mdb "), "Data Source=\"a;b\"\".mdb\"");
  EXPECT_EQ(connection_to_file("Data Source=a.db"), "Data Source=a.db");
  EXPECT_EQ(connection_to_file(" "), " ");
}

TEST(ConnectionTexts, ADriversStringStaysAsItIs) {
  EXPECT_EQ(with_keyword("DSN=shop", "Mode", "Read"), "DSN=shop");
  EXPECT_EQ(with_keyword("Driver={x;y};DBQ=a", "Mode", "Read"), "Driver={x;y};DBQ=a");
}

}  // namespace
}  // namespace rk::pagehost
