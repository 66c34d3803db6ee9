// The storefront's own texts, beyond what their rows say.
#include <gtest/gtest.h>

#include "tests/jetsql/engine.h"
#include "tests/jetsql/storefront_texts.h"

namespace rk::jetsql {
namespace {

// The text with its letters' case turned about, but for what stands in quotes.
std::string respelled(const std::string& text, char (*change)(char)) {
  std::string made;
  bool quoted = false;
  for (const char c : text) {
    if (c == '\'') quoted = !quoted;
    made += quoted ? c : change(c);
  }
  return made;
}

char small(char c) {
  return lower(c);
}
char capital(char c) {
  return upper(c);
}

std::string without_brackets(const std::string& text) {
  std::string made;
  for (const char c : text) made += c == '[' || c == ']' ? ' ' : c;
  return made;
}

TEST(StorefrontTexts, MeanTheSameInAnyLetterCaseAndWithoutBrackets) {
  Engine engine(storefront_database());
  const std::vector<std::string> texts = storefront_texts();
  ASSERT_GT(texts.size(), 80U);
  for (const std::string& text : texts) {
    const Engine::Run run = engine.run(text);
    for (const std::string& other :
         {respelled(text, small), respelled(text, capital), without_brackets(text)}) {
      const Engine::Run again = engine.run(other);
      EXPECT_EQ(again.rows, run.rows) << other;
      EXPECT_EQ(again.translation.count_text.size(), run.translation.count_text.size()) << other;
    }
  }
}

TEST(StorefrontTexts, CountAsManyRowsAsTheyGive) {
  Engine engine(storefront_database());
  for (const std::string& text : storefront_texts()) {
    const Engine::Run run = engine.run(text);
    const std::vector<std::string> count = engine.rows(run.translation.count_text, run.values);
    EXPECT_EQ(count.at(0), std::to_string(run.rows.size())) << text;
  }
}

TEST(StorefrontTexts, ShowTheSameRowsThroughAnyWindow) {
  Engine engine(storefront_database());
  for (const std::string& text : storefront_texts()) {
    const Engine::Run run = engine.run(text);
    for (const std::int64_t size : {1, 2, 5}) {
      std::vector<std::string> gathered;
      for (std::int64_t from = 0; from <= static_cast<std::int64_t>(run.rows.size());
           from += size) {
        std::vector<Literal> values = run.values;
        for (const std::int64_t number : {size, from}) {
          Literal value;
          value.kind = Literal::Kind::Integer;
          value.integer = number;
          values.push_back(value);
        }
        for (const std::string& row :
             engine.rows(run.translation.select_text(false, true), values)) {
          gathered.push_back(row);
        }
      }
      EXPECT_EQ(gathered, run.rows) << text;
    }
  }
}

TEST(StorefrontTexts, ShowTheSameRowsFromTheLastOneOn) {
  Engine engine(storefront_database());
  std::size_t reversed = 0;
  for (const std::string& text : storefront_texts()) {
    const Engine::Run run = engine.run(text);
    if (!run.translation.can_reverse()) continue;
    ++reversed;
    std::vector<std::string> gathered;
    for (std::size_t from = 0; from < run.rows.size(); from += 2) {
      std::vector<Literal> values = run.values;
      for (const std::size_t number : {std::size_t{2}, from}) {
        values.emplace_back();
        values.back().kind = Literal::Kind::Integer;
        values.back().integer = static_cast<std::int64_t>(number);
      }
      for (const std::string& row : engine.rows(run.translation.reversed_text(false), values)) {
        gathered.insert(gathered.begin(), row);
      }
    }
    EXPECT_EQ(gathered, run.rows) << text;
  }
  EXPECT_GT(reversed, 20U);
}

TEST(StorefrontTexts, KeyEachRowOfTheTableThatTheyWriteTo) {
  Engine engine(storefront_database());
  for (const std::string& text : storefront_texts()) {
    const Engine::Run run = engine.run(text);
    const bool joined = text.find(",[Rk_AgentPriceSet] As [bb]") != std::string::npos;
    if (joined) {
      EXPECT_EQ(run.translation.table, "Rk_AgentPriceSet") << text;
    }
    EXPECT_FALSE(run.translation.table.empty()) << text;
    EXPECT_EQ(run.translation.row_key, joined ? "[bb].rowid" : "rowid") << text;
    const std::vector<std::string> keyed =
        engine.rows(run.translation.select_text(true, false), run.values);
    ASSERT_EQ(keyed.size(), run.rows.size()) << text;
    for (std::size_t i = 0; i < keyed.size(); ++i) {
      EXPECT_EQ(keyed[i].rfind(run.rows[i], 0), 0U) << text;
      EXPECT_NE(keyed[i], run.rows[i]) << text;
    }
  }
}

TEST(StorefrontTexts, ListTheirColumnsWithTheTypesDeclared) {
  Engine engine(storefront_database());
  const Engine::Run run = engine.run(
      "Select [title],[Id],[Time],EveryOne=1,Count_=2 From (Select *,3 As Count_ From [Rk_News]) "
      "As a");
  ASSERT_EQ(run.translation.columns.size(), 5U);
  const Translation one =
      engine.run("Select [title],[Id],[Time] As [t] From [Rk_News]").translation;
  ASSERT_EQ(one.columns.size(), 3U);
  EXPECT_EQ(one.columns[0].name, "Title");
  EXPECT_EQ(one.columns[0].type, Type::Text);
  EXPECT_EQ(one.columns[1].type, Type::Integer);
  EXPECT_EQ(one.columns[2].name, "t");
  EXPECT_EQ(one.columns[2].base_column, "Time");
  EXPECT_EQ(one.columns[2].type, Type::Date);
}

}  // namespace
}  // namespace rk::jetsql
