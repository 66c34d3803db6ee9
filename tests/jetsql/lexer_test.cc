#include "jetsql/lexer.h"

#include <gtest/gtest.h>

#include <string>

namespace rk::jetsql {
namespace {

// The tokens with a bar between.
std::string tokens_of(std::string_view sql) {
  Lexer lexer(sql);
  std::string all;
  for (Token token = lexer.next(); token.kind != TokenKind::End; token = lexer.next()) {
    if (!all.empty()) all += '|';
    if (token.kind == TokenKind::Refused) return all + "refused";
    all += sql.substr(token.begin, token.end - token.begin);
  }
  return all;
}

TEST(Lexer, PartsWhatOldPagesStickTogether) {
  EXPECT_EQ(tokens_of("id=5AND x=false"), "id|=|5|AND|x|=|false");
  EXPECT_EQ(tokens_of("5e3 5Eqv 5.5.5 .5"), "5e3|5|Eqv|5.5|.5|.5");
  EXPECT_EQ(tokens_of(")INNER JOIN"), ")|INNER|JOIN");
  EXPECT_EQ(tokens_of("like'%x%'And"), "like|'%x%'|And");
  EXPECT_EQ(tokens_of("[a b].[c]<>`d`"), "[a b]|.|[c]|<>|`d`");
  EXPECT_EQ(tokens_of("a<=b>=c<d>e"), "a|<=|b|>=|c|<|d|>|e");
  EXPECT_EQ(tokens_of("'it''s'\"a\"\"b\""), "'it''s'|\"a\"\"b\"");
  EXPECT_EQ(tokens_of("@@identity ?"), "@@identity|?");
}

TEST(Lexer, RefusesWhatHasNoMeaning) {
  for (const char* text :
       {"'a", "\"a", "[a", "[]", "[ ]", "`a", "#x#", "#1/1/26", "--",   "/*", "$",
        "{",  "|",   "~",  ":",  "@x",  "@@", "]",   "1e999",   "\x01", "%"}) {
    EXPECT_EQ(tokens_of(text), "refused") << text;
  }
  EXPECT_EQ(tokens_of(std::string_view("a\0b", 3)), "a|refused");
}

TEST(Lexer, GivesTheValuesOfLiterals) {
  const auto value = [](std::string_view sql) {
    Lexer lexer(sql);
    return literal_value(sql, lexer.next());
  };
  EXPECT_EQ(value("'it''s'").text, "it's");
  EXPECT_EQ(value("\"it's\"").text, "it's");
  EXPECT_EQ(value("007").integer, 7);
  EXPECT_EQ(value("9223372036854775808").kind, Literal::Kind::Double);
  EXPECT_EQ(value("#2026-03-05#").number, 46086);
}

}  // namespace
}  // namespace rk::jetsql
