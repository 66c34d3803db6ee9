// Random selects over random rows: what the engine answers to the translated text against the plain
// evaluation of the same condition, order and Top.
#include <gtest/gtest.h>

#include <functional>

#include "tests/jetsql/dice.h"
#include "tests/jetsql/engine.h"
#include "tests/plain/jet_rows.h"

namespace rk::jetsql {
namespace {

using plain::compared;
using plain::conjunction;
using plain::disjunction;
using plain::JetRow;
using plain::negation;
using plain::order_of;
using plain::sort_rows;
using plain::Truth;

constexpr const char* kTexts[] = {"", "a", "A", "ab", "AB", "b", "Ba", "abc", "x'y"};
constexpr const char* kPatterns[] = {"%", "a%", "%B", "_", "%b%", "__", "A_C", ""};
constexpr const char* kSymbols[] = {"=", "<>", "<", "<=", ">", ">="};

std::string quoted_text(const std::string& text, Dice& dice) {
  const char quote = dice.roll(2) == 0 ? '\'' : '"';
  std::string made(1, quote);
  for (const char c : text) made += c == quote ? std::string(2, c) : std::string(1, c);
  return made + quote;
}

// A condition as Jet text and as a function of a row.
struct Condition {
  std::string text;
  std::function<Truth(const JetRow&)> truth;
};

Condition number_condition(Dice& dice) {
  const std::string column = dice.roll(2) == 0 ? "n" : "[id]";
  const auto value = [column](const JetRow& row) {
    return column == "n" ? row.n : std::optional<int>(row.id);
  };
  const std::optional<int> a = dice.roll(8) - 2;
  const std::optional<int> b = *a + dice.roll(7) - 3;
  const auto written = [](const std::optional<int>& number) { return std::to_string(*number); };
  switch (dice.roll(4)) {
    case 0:
      return {column + " Between " + written(a) + " And " + written(b), [=](const JetRow& row) {
                return conjunction(compared(order_of(value(row), std::min(a, b)), ">="),
                                   compared(order_of(value(row), std::max(a, b)), "<="));
              }};
    case 1:
      return {column + " In (" + written(a) + "," + written(b) + ")", [=](const JetRow& row) {
                return disjunction(compared(order_of(value(row), a), "="),
                                   compared(order_of(value(row), b), "="));
              }};
    default: {
      const std::string symbol = dice.pick(kSymbols);
      return {column + symbol + written(a),
              [=](const JetRow& row) { return compared(order_of(value(row), a), symbol); }};
    }
  }
}

Condition text_condition(Dice& dice) {
  const auto value = [](const JetRow& row) {
    return row.t ? std::optional<std::string>(plain::folded(*row.t)) : row.t;
  };
  if (dice.roll(3) == 0) {
    const bool negated = dice.roll(2) == 0;
    const std::string pattern = dice.pick(kPatterns);
    return {std::string("t ") + (negated ? "Not " : "") + "Like " + quoted_text(pattern, dice),
            [=](const JetRow& row) {
              if (!row.t) return Truth();
              return Truth(plain::like(*value(row), plain::folded(pattern)) != negated);
            }};
  }
  const std::string text = dice.pick(kTexts);
  const std::string symbol = dice.pick(kSymbols);
  return {"[t] " + symbol + quoted_text(text, dice), [=](const JetRow& row) {
            return compared(order_of(value(row), std::optional<std::string>(plain::folded(text))),
                            symbol);
          }};
}

Condition leaf(Dice& dice) {
  switch (dice.roll(4)) {
    case 0:
      return number_condition(dice);
    case 1:
      return text_condition(dice);
    case 2: {
      const bool wanted = dice.roll(2) == 0;
      const char* const texts[] = {wanted ? "f=True" : "f=False", wanted ? "f<>0" : "f=0",
                                   wanted ? "f=-1" : "f<>Yes", wanted ? "f" : "Not f"};
      return {dice.pick(texts), [=](const JetRow& row) { return Truth(row.f == wanted); }};
    }
    default: {
      const bool negated = dice.roll(2) == 0;
      const bool number = dice.roll(2) == 0;
      return {std::string(number ? "n" : "t") + (negated ? " Is Not Null" : " Is Null"),
              [=](const JetRow& row) {
                return Truth((number ? row.n.has_value() : row.t.has_value()) == negated);
              }};
    }
  }
}

Condition condition(Dice& dice, int depth) {
  if (depth == 0 || dice.roll(4) == 0) return leaf(dice);
  const Condition a = condition(dice, depth - 1);
  if (dice.roll(5) == 0) {
    return {"Not (" + a.text + ")", [=](const JetRow& row) { return negation(a.truth(row)); }};
  }
  const Condition b = condition(dice, depth - 1);
  const auto joined = [&](const char* word, Truth (*join)(Truth, Truth)) {
    return Condition{"(" + a.text + ")" + word + "(" + b.text + ")",
                     [=](const JetRow& row) { return join(a.truth(row), b.truth(row)); }};
  };
  switch (dice.roll(3)) {
    case 0:
      return joined(" And ", plain::conjunction);
    case 1:
      return joined("Or", plain::disjunction);
    default:
      return joined(" Xor ", plain::difference);
  }
}

std::vector<JetRow> random_rows(Dice& dice) {
  std::vector<JetRow> rows(static_cast<std::size_t>(dice.roll(30)));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows[i].id = static_cast<int>(i) + 1;
    if (dice.roll(5) != 0) rows[i].n = dice.roll(6);
    if (dice.roll(5) != 0) rows[i].t = dice.pick(kTexts);
    rows[i].f = dice.roll(2) == 0;
  }
  return rows;
}

std::string definition_of(const std::vector<JetRow>& rows, Dice& dice) {
  std::string sql = "CREATE TABLE r (id INTEGER PRIMARY KEY, n INTEGER, t TEXT";
  sql += dice.roll(2) == 0 ? " COLLATE NOCASE" : "";
  sql += ", f BOOLEAN);";
  // An index changes the way that rows are found, and must not change their order.
  if (dice.roll(2) == 0)
    sql += "CREATE INDEX rn ON r (n);CREATE INDEX rt ON r (t);CREATE INDEX rf ON r (f);";
  for (const JetRow& row : rows) {
    std::string text = "NULL";
    if (row.t) {
      text = "'";
      for (const char c : *row.t) text += c == '\'' ? std::string("''") : std::string(1, c);
      text += "'";
    }
    sql += "INSERT INTO r VALUES (" + std::to_string(row.id) + "," +
           (row.n ? std::to_string(*row.n) : "NULL") + "," + text + "," + (row.f ? "1" : "0") +
           ");";
  }
  return sql;
}

// " Order By" of a random column; the rows sorted by it.
std::string ordered(std::vector<JetRow>& rows, Dice& dice) {
  const bool descending = dice.roll(2) == 0;
  const std::string direction = descending ? " Desc" : "";
  switch (dice.roll(4)) {
    case 0:
      sort_rows(
          rows, [](const JetRow& row) { return row.n; }, descending);
      return " Order By n" + direction;
    case 1:
      sort_rows(
          rows,
          [](const JetRow& row) {
            return row.t ? std::optional<std::string>(plain::folded(*row.t)) : row.t;
          },
          descending);
      return " Order By [t]" + direction;
    case 2:
      // True is -1 and comes first.
      sort_rows(
          rows, [](const JetRow& row) { return !row.f; }, descending);
      return " Order By f" + direction;
    default:
      return "";
  }
}

// The number of rows that the select gave.
std::size_t compare_one(Dice& dice) {
  std::vector<JetRow> rows = random_rows(dice);
  Engine engine(definition_of(rows, dice));
  const Condition chosen = condition(dice, 3);
  rows.erase(std::remove_if(rows.begin(), rows.end(),
                            [&](const JetRow& row) { return !chosen.truth(row).value_or(false); }),
             rows.end());
  const std::string order = ordered(rows, dice);
  std::string top;
  if (dice.roll(3) == 0) {
    const int limit = dice.roll(8);
    top = "Top " + std::to_string(limit) + " ";
    rows.resize(std::min(rows.size(), static_cast<std::size_t>(limit)));
  }
  const std::string sql = "Select " + top + "id From r Where " + chosen.text + order;
  std::vector<std::string> expected;
  for (const JetRow& row : rows) expected.push_back(std::to_string(row.id));
  const Engine::Run run = engine.run(sql);
  EXPECT_EQ(run.rows, expected) << sql << "\n" << run.translation.statements.back();
  EXPECT_EQ(engine.rows(run.translation.count_text, run.values).at(0),
            std::to_string(expected.size()))
      << sql;
  EXPECT_EQ(run.translation.can_reverse(), top.empty()) << sql;
  if (run.translation.can_reverse()) {
    std::reverse(expected.begin(), expected.end());
    std::vector<Literal> values = run.values;
    for (const std::size_t bound : {expected.size(), std::size_t{0}}) {
      values.emplace_back();
      values.back().kind = Literal::Kind::Integer;
      values.back().integer = static_cast<std::int64_t>(bound);
    }
    EXPECT_EQ(engine.rows(run.translation.reversed_text(false), values), expected) << sql;
  }
  return expected.size();
}

TEST(RandomSelects, AnswerAsThePlainEvaluationDoes) {
  Dice dice(20260305);
  std::size_t rows = 0;
  for (int i = 0; i < 1500 && !HasFailure(); ++i) rows += compare_one(dice);
  // Conditions that hardly ever hold would prove little.
  EXPECT_GT(rows, 5000U);
}

}  // namespace
}  // namespace rk::jetsql
