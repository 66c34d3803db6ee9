// Format of texts: patterns of "@" (a character, or a blank), "&" (a character, or nothing), "<"
// and
// ">" (lower and upper case) and "!" (filled from the left). Pure functions.
#pragma once

#include <string>
#include <string_view>

namespace rk::jetsql {

// Whether a pattern is one for texts rather than for numbers and dates.
bool is_text_format(std::string_view pattern);
// `text` is UTF-8. Characters that find no place go out whole, on the side that is filled last.
std::string formatted_text(std::string_view text, std::string_view pattern);

}  // namespace rk::jetsql
