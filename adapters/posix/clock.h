// The system's clock in the zone of the process.
//
// The zone of the settings is chosen once, before any thread starts, by choose_time_zone(); the
// C library keeps one zone a process. Several threads may call PosixClock.
#ifndef RK_ADAPTERS_POSIX_CLOCK_H_
#define RK_ADAPTERS_POSIX_CLOCK_H_

#include <atomic>
#include <string>

#include "platform/clock.h"

namespace rk::posix {

// A name of the zone database, such as Asia/Shanghai. False, and nothing changed, where the system
// does not know it.
bool choose_time_zone(const std::string& name);

class PosixClock final : public platform::Clock {
 public:
  // With its fraction of a second; who shows it cuts that off.
  double now() const override;
  double ahead_of_utc() const override;
  std::chrono::steady_clock::time_point steady() const override;

 private:
  // Seconds east of Greenwich at a moment.
  long offset_at(std::int64_t unix_seconds) const;
  // OPTIMIZATION: the quarter of an hour last asked for and its offset; zones change theirs at
  // quarters only, so one reading serves all of it.
  mutable std::atomic<std::int64_t> kept_{-1};
};

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_CLOCK_H_
