// RowCriterion: one comparison of a column with a value, as Find takes it: "Name = 'x'",
// "Price >= 10", "Name Like 'a*'".
#ifndef RK_PAGEHOST_COMPONENTS_ROW_CRITERION_H_
#define RK_PAGEHOST_COMPONENTS_ROW_CRITERION_H_

#include <cstdint>
#include <string>
#include <string_view>

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

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_ROW_CRITERION_H_
