#include "adapters/odbc/wide_text.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <type_traits>

#include "value/text.h"

namespace rk::odbc {

static_assert(std::is_same_v<SQLWCHAR, WideUnit>);

std::vector<WideUnit> widen(std::string_view utf8) {
  const std::u16string units = Text(utf8).units();
  std::vector<WideUnit> wide(units.begin(), units.end());
  wide.push_back(0);
  return wide;
}

std::string narrow(const WideUnit* units, std::size_t count) {
  std::string utf8;
  utf8.reserve(count);
  append_narrow(utf8, units, count);
  return utf8;
}

void append_narrow(std::string& utf8, const WideUnit* units, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) append_unit(utf8, static_cast<char16_t>(units[i]));
}

}  // namespace rk::odbc
