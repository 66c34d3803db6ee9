// How values compare.
//
// Two loosely typed values: both texts by their 16-bit units, letter case counts; a text and a
// number compare as number only where one side is a literal (the language's rule; compare_loosely
// is the rule between variables: every number is below every text). Null compares with nothing.
#ifndef RK_VALUE_COMPARISON_H_
#define RK_VALUE_COMPARISON_H_

#include <compare>
#include <optional>
#include <string_view>

#include "value/value.h"

namespace rk {

// By 16-bit units; UTF-8 orders differently only where halves of pairs meet U+E000 and above.
std::strong_ordering compare_text(std::string_view a, std::string_view b) noexcept;

// Nothing where either is Null. Raises 13 for arrays, 91 for Nothing.
std::optional<std::strong_ordering> compare_loosely(const Value& a, const Value& b);

// As a number beside a numeric literal: nothing for Null; 13 for a text that is no number.
std::optional<std::partial_ordering> compare_number(const Value& a, double literal);
bool above(const Value& value, double literal);         // value > literal; false for Null
bool equals(const Value& value, double literal);        // value = literal; false for Null
bool differs_from(const Value& value, double literal);  // value <> literal; false for Null

// As text beside a text literal: false for Null.
bool equals(const Value& value, std::string_view literal);

}  // namespace rk

#endif  // RK_VALUE_COMPARISON_H_
