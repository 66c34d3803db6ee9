// Text out of a database file, which may hold any bytes: what is no UTF-8 is read as U+FFFD.
// Pure functions.
#ifndef RK_ADAPTERS_SQLITE_READABLE_TEXT_H_
#define RK_ADAPTERS_SQLITE_READABLE_TEXT_H_

#include <string>
#include <string_view>

namespace rk::sqlite {

// Whether all of it is UTF-8, as is_valid_utf8 (value/text.h) says.
bool is_readable(std::string_view bytes) noexcept;

// Appends it, U+FFFD for each byte that belongs to no character.
void append_repaired(std::string& out, std::string_view bytes);

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_READABLE_TEXT_H_
