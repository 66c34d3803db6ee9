// What a page's connection string says, as far as the connection object itself must know it. The
// database beneath reads the whole of it. Pure functions.
#ifndef RK_PAGEHOST_COMPONENTS_CONNECTION_TEXTS_H_
#define RK_PAGEHOST_COMPONENTS_CONNECTION_TEXTS_H_

#include <string>
#include <string_view>

namespace rk::pagehost {

// The value behind a keyword, in any letter case; empty where the string has none. Quotes around a
// value are left off, and what they hold is no keyword.
std::string connection_keyword(std::string_view connection_string, std::string_view keyword);

// The string with "keyword=value" behind it, as it stands where it has the keyword already or hands
// the connection over to a driver.
std::string with_keyword(std::string_view connection_string, std::string_view keyword,
                         std::string_view value);

// A file named by itself, as it may be beside a provider that was set before, as a connection
// string; any other text as it stands.
std::string connection_to_file(std::string_view text);

// Whether it names the provider of record sets that were saved, in place of a database's.
bool names_saved_rows(std::string_view connection_string);
bool is_saved_rows_provider(std::string_view provider);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_CONNECTION_TEXTS_H_
