// Joins, groups and aggregates over rows in memory, step by step and without an engine: what the
// translated text of a random grouping select is compared with.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace rk::plain {

using Number = std::optional<int>;

// A row of either table: a key and an amount, each a number or Null.
struct GroupedRow {
  Number key;
  Number amount;
};

// A row of the join: the left table's row, and the right one's where there is one.
struct JoinedRow {
  GroupedRow left;
  GroupedRow right;
};

enum class Join { None, Inner, Left };

// Each left row with all right rows of its key, in the order stored; a Null key has no partner.
inline std::vector<JoinedRow> joined(const std::vector<GroupedRow>& left,
                                     const std::vector<GroupedRow>& right, Join join) {
  std::vector<JoinedRow> rows;
  for (const GroupedRow& a : left) {
    bool found = join == Join::None;
    if (join == Join::None) rows.push_back({a, {}});
    for (const GroupedRow& b : right) {
      if (join == Join::None || !a.key || !b.key || *a.key != *b.key) continue;
      rows.push_back({a, b});
      found = true;
    }
    if (!found && join == Join::Left) rows.push_back({a, {}});
  }
  return rows;
}

// An aggregate of the values that are no Nulls: Null where there is none, but for Count.
inline std::string aggregated(const std::string& name, const std::vector<Number>& values) {
  std::vector<int> known;
  for (const Number& value : values) {
    if (value) known.push_back(*value);
  }
  if (name == "Count") return std::to_string(known.size());
  if (known.empty()) return "NULL";
  if (name == "Min") return std::to_string(*std::min_element(known.begin(), known.end()));
  if (name == "Max") return std::to_string(*std::max_element(known.begin(), known.end()));
  int sum = 0;
  for (const int value : known) sum += value;
  return std::to_string(sum);
}

// The rows of each key, keys in the order of their first rows; Nulls are one key.
inline std::vector<std::vector<JoinedRow>> grouped(const std::vector<JoinedRow>& rows) {
  std::vector<std::vector<JoinedRow>> groups;
  for (const JoinedRow& row : rows) {
    const auto own = std::find_if(groups.begin(), groups.end(), [&](const auto& group) {
      return group.front().left.key == row.left.key;
    });
    if (own == groups.end()) {
      groups.push_back({row});
    } else {
      own->push_back(row);
    }
  }
  return groups;
}

}  // namespace rk::plain
