// Functions on texts in UTF-8 that the page language and the library share.
//
// Letter case is Unicode's simple one (a character for a character); changes of case keep the
// length in bytes, so offsets in a folded text are offsets in the text.
#ifndef RK_VALUE_TEXT_FUNCTIONS_H_
#define RK_VALUE_TEXT_FUNCTIONS_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "value/text.h"
#include "value/value.h"

namespace rk {

std::string lower_case(std::string_view utf8);
std::string upper_case(std::string_view utf8);

// Without the blanks (U+0020 only) at its start, its end.
std::string_view without_leading_blanks(std::string_view text) noexcept;
std::string_view without_trailing_blanks(std::string_view text) noexcept;

enum class Letters { Exact, AnyCase };

// Byte offset of the first place at or after `from`, or npos. An empty text is found at `from`.
std::size_t find_text(std::string_view text, std::string_view sought, std::size_t from,
                      Letters letters);
// The last place that ends at or before `end`.
std::size_t find_last_text(std::string_view text, std::string_view sought, std::size_t end,
                           Letters letters);

// The first `limit` places replaced, from the left; nothing for an empty `sought`.
Text replaced_text(std::string_view text, std::string_view sought, std::string_view with,
                   std::size_t limit, Letters letters);
// At most `limit` parts; the last keeps the rest. One part for an empty delimiter.
std::vector<Value> split_text(std::string_view text, std::string_view delimiter, std::size_t limit,
                              Letters letters);

// Joins lone halves that came to stand beside one another, where texts were joined byte by byte.
void join_halves(std::string& utf8);

// Its units in the opposite order; pairs of halves stay in order.
std::string reversed_text(std::string_view utf8);

}  // namespace rk

#endif  // RK_VALUE_TEXT_FUNCTIONS_H_
