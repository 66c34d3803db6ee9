// Dates as headers write them. Pure functions over Date values (value/dates.h) in UTC.
#ifndef RK_PAGEHOST_PAGES_HTTP_DATE_H_
#define RK_PAGEHOST_PAGES_HTTP_DATE_H_

#include <string>

namespace rk::pagehost {

// "Sun, 06 Nov 1994 08:49:37 GMT"; days outside of the language's range are brought to its ends.
std::string http_date(double utc_days);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_HTTP_DATE_H_
