#include "adapters/posix/clock.h"

#include <sys/stat.h>

#include <cstdlib>
#include <ctime>

namespace rk::posix {
namespace {

constexpr std::int64_t kQuarterSeconds = 900;
// Days from 1899-12-30 to 1970-01-01.
constexpr double kUnixEpochDays = 25569.0;
// Offsets lie within a day, so 18 bits hold one with its sign moved away.
constexpr std::int64_t kOffsetBase = 86400;
constexpr int kOffsetBits = 18;

}  // namespace

bool choose_time_zone(const std::string& name) {
  const bool leaves = name.empty() || name.front() == '/' || name.find("..") != std::string::npos;
  struct stat status {};
  const std::string file = "/usr/share/zoneinfo/" + name;
  if (leaves || ::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  ::setenv("TZ", (":" + name).c_str(), 1);
  ::tzset();
  return true;
}

long PosixClock::offset_at(std::int64_t unix_seconds) const {
  const std::int64_t quarter = unix_seconds / kQuarterSeconds;
  const std::int64_t kept = kept_.load(std::memory_order_relaxed);
  if (kept >= 0 && kept >> kOffsetBits == quarter) {
    return static_cast<long>((kept & ((std::int64_t{1} << kOffsetBits) - 1)) - kOffsetBase);
  }
  const std::time_t moment = static_cast<std::time_t>(unix_seconds);
  std::tm local{};
  ::localtime_r(&moment, &local);
  kept_.store(quarter << kOffsetBits | (local.tm_gmtoff + kOffsetBase), std::memory_order_relaxed);
  return local.tm_gmtoff;
}

double PosixClock::now() const {
  timespec moment{};
  ::clock_gettime(CLOCK_REALTIME, &moment);
  const double local = static_cast<double>(moment.tv_sec + offset_at(moment.tv_sec)) +
                       static_cast<double>(moment.tv_nsec) / 1e9;
  return local / 86400.0 + kUnixEpochDays;
}

double PosixClock::ahead_of_utc() const {
  timespec moment{};
  ::clock_gettime(CLOCK_REALTIME, &moment);
  return static_cast<double>(offset_at(moment.tv_sec)) / 86400.0;
}

std::chrono::steady_clock::time_point PosixClock::steady() const {
  return std::chrono::steady_clock::now();
}

}  // namespace rk::posix
