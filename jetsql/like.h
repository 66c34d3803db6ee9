// Jet's Like. Thread rule: pure.
#pragma once

#include <string_view>

namespace rk::jetsql {

// "%" stands for any text, "_" for one character, "[a-z]" for one of a set, "[!a-z]" for one
// outside it; "*", "?" and "#" are themselves, and so is a "[" that nothing closes. ASCII letters
// match in either case. Both are UTF-8; a character is a code point, and a byte that begins none is
// itself.
bool is_like(std::string_view text, std::string_view pattern);

}  // namespace rk::jetsql
