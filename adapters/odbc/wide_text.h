// Between UTF-8 and the 16-bit units that drivers take and give. Pure functions.
#ifndef RK_ADAPTERS_ODBC_WIDE_TEXT_H_
#define RK_ADAPTERS_ODBC_WIDE_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace rk::odbc {

// As the driver manager declares its wide character; checked against it where it is known.
using WideUnit = unsigned short;

// With a unit 0 behind the text.
std::vector<WideUnit> widen(std::string_view utf8);
std::string narrow(const WideUnit* units, std::size_t count);
// The same behind a text: halves of a character that two pieces part are joined.
void append_narrow(std::string& utf8, const WideUnit* units, std::size_t count);

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_WIDE_TEXT_H_
