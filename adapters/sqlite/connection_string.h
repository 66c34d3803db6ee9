// Reads a connection string: `Keyword=value` pairs between ";", keywords in any letter case and
// order, values plain, in 'quotes', "quotes" or {braces} (the closing sign doubled inside).
// A pure function; where the file lies is settled elsewhere (locate.h).
#ifndef RK_ADAPTERS_SQLITE_CONNECTION_STRING_H_
#define RK_ADAPTERS_SQLITE_CONNECTION_STRING_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace rk::sqlite {

enum class OpenMode : std::uint8_t { ReadWrite, Read, Create };

struct ConnectionString {
  std::string data_source;  // as written, never empty
  OpenMode mode = OpenMode::ReadWrite;
};

// Whether the text names a data source of ODBC, or a driver that is neither Access's nor SQLite's:
// such a one means no file. False where it is malformed.
bool names_odbc_source(std::string_view text);

// Raises -2147467259 where the text is malformed, names no file, or names a driver or data source
// of ODBC.
ConnectionString parse_connection_string(std::string_view text);

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_CONNECTION_STRING_H_
