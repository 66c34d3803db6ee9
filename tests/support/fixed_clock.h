// A clock that stands where a test set it.
#ifndef RK_TESTS_SUPPORT_FIXED_CLOCK_H_
#define RK_TESTS_SUPPORT_FIXED_CLOCK_H_

#include "platform/clock.h"

namespace rk::tests {

class FixedClock : public platform::Clock {
 public:
  // In days, as a Date value holds them: 45000 is 2023-03-15.
  explicit FixedClock(double days = 45000.5) : days_(days) {}
  void set(double days) { days_ = days; }
  void advance(std::chrono::steady_clock::duration by) { steady_ += by; }

  double now() const override { return days_; }
  std::chrono::steady_clock::time_point steady() const override { return steady_; }

 private:
  double days_;
  std::chrono::steady_clock::time_point steady_{};
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_FIXED_CLOCK_H_
