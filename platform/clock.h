// The clock, behind an interface so that tests set it. Several threads may call.
#ifndef RK_PLATFORM_CLOCK_H_
#define RK_PLATFORM_CLOCK_H_

#include <chrono>

namespace rk::platform {

class Clock {
 public:
  virtual ~Clock() = default;
  // Local time in the zone of the settings, as a Date value's days (value/dates.h).
  virtual double now() const = 0;
  // Days by which local time is ahead of UTC, for dates that go out in headers.
  virtual double ahead_of_utc() const { return 0; }
  // Never set back; for time-outs.
  virtual std::chrono::steady_clock::time_point steady() const = 0;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_CLOCK_H_
