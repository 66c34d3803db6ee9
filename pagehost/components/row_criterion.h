// Conditions and orders of rows as the page writes them beside a record set. RowCriterion: one
// comparison of a column with a value, as Find takes it: "Name = 'x'", "Price >= 10", "Name Like
// 'a*'". RowFilter: such comparisons joined by And and Or, with brackets. RowOrder: "Name, Price
// Desc". Of the page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_ROW_CRITERION_H_
#define RK_PAGEHOST_COMPONENTS_ROW_CRITERION_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "value/value.h"

namespace rk::pagehost {

class RowCriterion {
 public:
  // Raises 3001 where the text is no such comparison.
  explicit RowCriterion(std::string_view text);
  // For the current row. Raises 3265 for an unknown column. Null matches "= Null" only.
  bool holds(platform::Recordset& rows) const;

 private:
  enum class Test : std::uint8_t { Equal, Differs, Below, NotAbove, Above, NotBelow, Like };
  std::string column_;
  Test test_ = Test::Equal;
  Value value_;
};

class RowFilter {
 public:
  // Raises 3001 where the text is no such condition, or nests deeper than 50 brackets.
  explicit RowFilter(std::string_view text);
  // As RowCriterion's.
  bool holds(platform::Recordset& rows) const;

 private:
  struct Node {
    bool all = false;  // And; else Or
    std::vector<RowCriterion> criteria;
    std::vector<Node> parts;
  };
  static Node parsed(std::string_view text, int depth);
  static bool holds(const Node& node, platform::Recordset& rows);

  Node root_;
};

class RowOrder {
 public:
  // Raises 3001 for a direction that is none.
  explicit RowOrder(std::string_view text);
  // What the current row is ordered by. Raises 3265 for an unknown column.
  std::vector<Value> keys(platform::Recordset& rows) const;
  // `items` in the order of their keys; items of equal keys stay as they are.
  std::vector<std::int64_t> sorted(const std::vector<std::int64_t>& items,
                                   const std::vector<std::vector<Value>>& keys) const;

 private:
  bool before(const std::vector<Value>& a, const std::vector<Value>& b) const;

  struct Column {
    std::string name;
    bool descending = false;
  };
  std::vector<Column> columns_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_ROW_CRITERION_H_
