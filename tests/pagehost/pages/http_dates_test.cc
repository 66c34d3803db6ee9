#include "pagehost/pages/http_dates.h"

#include <gtest/gtest.h>

namespace rk::pagehost {
namespace {

TEST(HttpDates, GoBothWays) {
  EXPECT_EQ(date_header(784111777), "Sun, 06 Nov 1994 08:49:37 GMT");
  EXPECT_EQ(parse_date_header("Sun, 06 Nov 1994 08:49:37 GMT"), 784111777);
  EXPECT_EQ(date_header(0), "Thu, 01 Jan 1970 00:00:00 GMT");
}

TEST(HttpDates, ADateValueIsBroughtIntoTheCalendar) {
  EXPECT_EQ(date_header_of(34644.0 + 31777.0 / 86400.0), "Sun, 06 Nov 1994 08:49:37 GMT");
  EXPECT_EQ(date_header_of(-1e9), "Fri, 01 Jan 0100 00:00:00 GMT");
  EXPECT_EQ(date_header_of(1e9), "Fri, 31 Dec 9999 00:00:00 GMT");
}

TEST(HttpDates, OtherFormsAreNoDate) {
  for (const char* text : {"", "soon", "Sunday, 06-Nov-94 08:49:37 GMT", "Sun Nov  6 08:49:37 1994",
                           "Sun, 06 Nox 1994 08:49:37 GMT", "Sun, 06 Nov 1994 08:49:37 CET",
                           "Sun, 06 Nov 1994 0a:49:37 GMT"}) {
    EXPECT_FALSE(parse_date_header(text)) << text;
  }
}

}  // namespace
}  // namespace rk::pagehost
