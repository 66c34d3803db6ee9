// Keys and literals: what becomes a parameter, what stays, and that two texts of one key differ in
// nothing but values.
#include <gtest/gtest.h>

#include "jetsql/lexer.h"
#include "tests/jetsql/engine.h"
#include "tests/jetsql/storefront_texts.h"

namespace rk::jetsql {
namespace {

Shape shape_of(std::string_view sql) {
  Shape shape;
  read_shape(sql, shape);
  return shape;
}

TEST(Shape, TakesLiteralsOutWhereAValueMayStand) {
  const Shape shape = shape_of(
      "Select Top 5 'a',1 From t Where b='x' And c=2 And d=1.5 And e=#2026-1-1# Order By 3");
  ASSERT_EQ(shape.literals.size(), 4U);
  EXPECT_EQ(shape.literals[0].text, "x");
  EXPECT_EQ(shape.literals[1].integer, 2);
  EXPECT_EQ(shape.literals[2].number, 1.5);
  EXPECT_EQ(shape.literals[3].number, 46023);
  EXPECT_NE(shape.key.find("Top 5 'a',1"), std::string::npos);
  EXPECT_NE(shape.key.find("Order By 3"), std::string::npos);
}

TEST(Shape, KnowsTheClausesOfSubQueries) {
  EXPECT_EQ(shape_of("Select a From t Where b In (Select Top 2 c From u Where d=1) And e=2")
                .literals.size(),
            2U);
  EXPECT_EQ(
      shape_of("Select Left(a,2) From t Where Left(a,2)='x' Group By Left(a,2) Having Count(*)>3")
          .literals.size(),
      3U);
  EXPECT_EQ(
      shape_of("Select a From t Inner Join u On t.b=5 Where c=6 Union Select 7").literals.size(),
      2U);
  EXPECT_EQ(shape_of("Insert Into t (a) Values ('x',Left('yz',1))").literals.size(), 3U);
  EXPECT_EQ(shape_of("Insert Into t (a) Select 'x'").literals.size(), 0U);
  EXPECT_EQ(shape_of("Update t Set a=1,b='x' Where c=2").literals.size(), 3U);
  EXPECT_EQ(shape_of("Create Table t (a Text(50) Default 'x')").literals.size(), 0U);
}

TEST(Shape, IsOneForTextsThatDifferInValuesAlone) {
  EXPECT_EQ(shape_of("Select a From t Where b=1").key, shape_of("Select a From t Where b=22").key);
  EXPECT_EQ(shape_of("Select a From t Where b='x'").key,
            shape_of("Select a From t Where b='it''s'").key);
  EXPECT_EQ(shape_of("Select a From t Where b='x'").key,
            shape_of("Select a From t Where b=\"y\"").key);
}

TEST(Shape, TellsTextsOfDifferentMeaningApart) {
  const char* texts[] = {"Select a From t Where b=1",
                         "Select a From t Where b=1.5",
                         "Select a From t Where b='1'",
                         "Select a From t Where b=#1/1/26#",
                         "Select a From t Where b=-1",
                         "Select a From t Where b=c",
                         "Select Top 1 a From t Where b=1",
                         "Select Top 2 a From t Where b=1",
                         "Select 'x' From t",
                         "Select 'y' From t",
                         "Select a From t Order By 1",
                         "Select a From t Order By 2",
                         "Select a From t Where b In (1)",
                         "Select a From t Where b In (1,2)"};
  for (const char* one : texts) {
    for (const char* other : texts) {
      EXPECT_EQ(shape_of(one).key == shape_of(other).key, std::string(one) == other)
          << one << " " << other;
    }
  }
}

// A text cannot be written so that it takes the key of another.
TEST(Shape, CannotBeForged) {
  const std::string key = shape_of("Select a From t Where b='x'").key;
  EXPECT_NE(shape_of(key).key, key);
  EXPECT_TRUE(shape_of(key).literals.empty());
  EXPECT_NE(shape_of("Select a From t Where b='x").key, "Select a From t Where b='x");
}

TEST(Shape, OfATextThatIsRefusedIsTheWholeText) {
  for (const char* text : {"Select 'x", "Select [x", "Select 1 -- x", "Select #x#", "Select $"}) {
    EXPECT_TRUE(shape_of(text).literals.empty());
    EXPECT_NE(shape_of(text).key.find(text), std::string::npos);
  }
}

TEST(Shape, KeepsLiteralsBeyondTheLimitInTheText) {
  std::string sql = "Select a From t Where b In (0";
  for (std::size_t i = 1; i < kMaxParameters; ++i) sql += ",1";
  EXPECT_EQ(shape_of(sql + ")").literals.size(), kMaxParameters);
  const Shape past = shape_of(sql + ",777)");
  EXPECT_EQ(past.literals.size(), kMaxParameters);
  EXPECT_NE(past.key.find(",777)"), std::string::npos);
}

// Values put into the kept translation of another text of the key give what the text itself gives.
TEST(Shape, HoldsOneTranslationForAllItsTexts) {
  Engine engine(storefront_database());
  for (const std::string& text : storefront_texts()) {
    std::string other;
    // Every second quote closes: only the opening ones get another value behind them.
    bool open = false;
    for (const char c : text) {
      if (c == '\'') open = !open;
      other += c;
      if (c == '\'' && open) other += 'z';
    }
    const Shape one = shape_of(text);
    const Shape two = shape_of(other);
    ASSERT_EQ(one.key, two.key) << text;
    const Translation kept = translate(text, engine);
    const Translation own = translate(other, engine);
    EXPECT_EQ(kept.statements, own.statements) << text;
    EXPECT_EQ(engine.rows(kept.statements.back(), Engine::values_of(kept, two)),
              engine.run(other).rows)
        << other;
  }
}

}  // namespace
}  // namespace rk::jetsql
