// Dates of HTTP headers, in seconds since 1970 (UTC). Pure functions.
#ifndef RK_PAGEHOST_PAGES_HTTP_DATES_H_
#define RK_PAGEHOST_PAGES_HTTP_DATES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rk::pagehost {

// "Sun, 06 Nov 1994 08:49:37 GMT"
std::string date_header(std::int64_t unix_seconds);

// The same of a Date value in UTC; days outside of the calendar are brought to its ends.
std::string date_header_of(double utc_days);

// The same form only; nothing for any other, as the older ones have died out.
std::optional<std::int64_t> parse_date_header(std::string_view text);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_HTTP_DATES_H_
