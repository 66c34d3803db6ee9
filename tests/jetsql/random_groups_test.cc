// Random joins, groups and sums over random tables: what the engine answers to the translated text
// against the plain evaluation.
#include <gtest/gtest.h>

#include "tests/jetsql/dice.h"
#include "tests/jetsql/engine.h"
#include "tests/plain/jet_groups.h"

namespace rk::jetsql {
namespace {

using plain::GroupedRow;
using plain::Join;
using plain::JoinedRow;
using plain::Number;

std::vector<GroupedRow> random_rows(Dice& dice) {
  std::vector<GroupedRow> rows(static_cast<std::size_t>(dice.roll(12)));
  for (GroupedRow& row : rows) {
    if (dice.roll(6) != 0) row.key = dice.roll(4);
    if (dice.roll(4) != 0) row.amount = dice.roll(21) - 10;
  }
  return rows;
}

std::string written(const Number& number) {
  return number ? std::to_string(*number) : "NULL";
}

std::string table_of(const std::string& name, const std::vector<GroupedRow>& rows, Dice& dice) {
  std::string sql = "CREATE TABLE " + name + " (id INTEGER PRIMARY KEY, k INTEGER, m INTEGER);";
  if (dice.roll(2) == 0) sql += "CREATE INDEX " + name + "k ON " + name + " (k);";
  for (const GroupedRow& row : rows) {
    sql += "INSERT INTO " + name + " (k,m) VALUES (" + written(row.key) + "," +
           written(row.amount) + ");";
  }
  return sql;
}

// An aggregate as Jet text, and its value for the rows of a group.
struct Aggregate {
  std::string text;
  std::string name;
  bool of_right = false;
  bool of_all = false;

  std::string value(const std::vector<JoinedRow>& rows) const {
    if (of_all) return std::to_string(rows.size());
    std::vector<Number> values;
    for (const JoinedRow& row : rows) {
      values.push_back(of_right ? row.right.amount : row.left.amount);
    }
    return plain::aggregated(name, values);
  }
};

Aggregate random_aggregate(Dice& dice, Join join) {
  Aggregate made;
  made.of_all = dice.roll(4) == 0;
  made.of_right = join != Join::None && dice.roll(2) == 0;
  made.name = dice.pick({"Count", "Sum", "Min", "Max"});
  const std::string column = made.of_right ? "b.m" : "a.[m]";
  made.text = made.of_all ? "Count(*)" : made.name + "(" + column + ")";
  return made;
}

std::string random_source(Dice& dice, Join join) {
  switch (join) {
    case Join::None:
      return "a";
    case Join::Left:
      return dice.pick({"a Left Join b On a.k=b.k", "(a LEFT OUTER JOIN [b] ON (b.k=a.k))"});
    case Join::Inner:
      break;
  }
  return dice.pick(
      {"a Inner Join b On a.k=b.k", "a,b Where a.k=b.k", "(a)INNER JOIN b ON(a.k=b.k)"});
}

// The number of rows that the select gave.
std::size_t compare_one(Dice& dice) {
  const std::vector<GroupedRow> left = random_rows(dice);
  const std::vector<GroupedRow> right = random_rows(dice);
  Engine engine(table_of("a", left, dice) + table_of("b", right, dice));
  const Join join = static_cast<Join>(dice.roll(3));
  const bool by_key = dice.roll(4) != 0;
  std::vector<Aggregate> aggregates;
  for (int i = dice.roll(3); i >= 0; --i) aggregates.push_back(random_aggregate(dice, join));
  std::string sql = by_key ? "Select a.k" : "Select ";
  for (const Aggregate& each : aggregates) {
    if (by_key || &each != &aggregates.front()) sql += ",";
    sql += each.text;
  }
  sql += " From " + random_source(dice, join);
  if (by_key) sql += " Group By a.k";
  const int least = dice.roll(4);
  const bool having = by_key && dice.roll(3) == 0;
  if (having) sql += " Having Count(*)>" + std::to_string(least);

  const std::vector<JoinedRow> rows = plain::joined(left, right, join);
  std::vector<std::vector<JoinedRow>> groups{rows};
  if (by_key) groups = plain::grouped(rows);
  std::vector<std::string> expected;
  for (const auto& group : groups) {
    if (having && group.size() <= static_cast<std::size_t>(least)) continue;
    std::string line = by_key ? written(group.front().left.key) : "";
    for (const Aggregate& each : aggregates) {
      if (by_key || &each != &aggregates.front()) line += "|";
      line += each.value(group);
    }
    expected.push_back(line);
  }
  const Engine::Run run = engine.run(sql);
  EXPECT_EQ(run.rows, expected) << sql << "\n" << run.translation.statements.back();
  EXPECT_EQ(engine.rows(run.translation.count_text, run.values).at(0),
            std::to_string(expected.size()))
      << sql;
  return expected.size();
}

TEST(RandomGroups, AnswerAsThePlainEvaluationDoes) {
  Dice dice(20261121);
  std::size_t rows = 0;
  for (int i = 0; i < 1500 && !HasFailure(); ++i) rows += compare_one(dice);
  // Joins and conditions that hardly ever hold would prove little.
  EXPECT_GT(rows, 2000U);
}

}  // namespace
}  // namespace rk::jetsql
