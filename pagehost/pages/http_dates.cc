#include "pagehost/pages/http_dates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "value/dates.h"

namespace rk::pagehost {
namespace {

constexpr std::array<std::string_view, 7> kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::string_view kForm = "Sun, 06 Nov 1994 08:49:37 GMT";

int number_at(std::string_view text, std::size_t at, std::size_t digits) {
  int number = 0;
  for (std::size_t i = at; i < at + digits; ++i) {
    if (text[i] < '0' || text[i] > '9') return -1;
    number = number * 10 + (text[i] - '0');
  }
  return number;
}

}  // namespace

std::string date_header(std::int64_t unix_seconds) {
  const std::time_t moment = static_cast<std::time_t>(unix_seconds);
  std::tm utc{};
  ::gmtime_r(&moment, &utc);
  char text[64];
  const int length = std::snprintf(text, sizeof text, "%s, %02d %s %04d %02d:%02d:%02d GMT",
                                   kDays[static_cast<std::size_t>(utc.tm_wday)].data(), utc.tm_mday,
                                   kMonths[static_cast<std::size_t>(utc.tm_mon)].data(),
                                   utc.tm_year + 1900, utc.tm_hour, utc.tm_min, utc.tm_sec);
  return std::string(text, static_cast<std::size_t>(length));
}

std::string date_header_of(double utc_days) {
  constexpr double kUnixEpoch = 25569.0;  // 1970-01-01 as a Date
  constexpr double kSecondsOfADay = 86400.0;
  const double days = std::clamp(utc_days, kFirstDate, kPastLastDate - 1);
  return date_header(std::llround((days - kUnixEpoch) * kSecondsOfADay));
}

std::optional<std::int64_t> parse_date_header(std::string_view text) {
  if (text.size() != kForm.size() || !text.ends_with(" GMT")) return std::nullopt;
  std::tm utc{};
  utc.tm_mon = -1;
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (text.substr(8, 3) == kMonths[i]) utc.tm_mon = static_cast<int>(i);
  }
  utc.tm_mday = number_at(text, 5, 2);
  const int year = number_at(text, 12, 4);
  utc.tm_hour = number_at(text, 17, 2);
  utc.tm_min = number_at(text, 20, 2);
  utc.tm_sec = number_at(text, 23, 2);
  const bool wrong = utc.tm_mon < 0 || utc.tm_mday < 1 || year < 1970 || utc.tm_hour < 0 ||
                     utc.tm_min < 0 || utc.tm_sec < 0;
  if (wrong) return std::nullopt;
  utc.tm_year = year - 1900;
  return static_cast<std::int64_t>(::timegm(&utc));
}

}  // namespace rk::pagehost
