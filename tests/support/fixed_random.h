// Random numbers that a test chose, over and over.
#ifndef RK_TESTS_SUPPORT_FIXED_RANDOM_H_
#define RK_TESTS_SUPPORT_FIXED_RANDOM_H_

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/random.h"

namespace rk::tests {

class FixedRandom : public platform::Random {
 public:
  explicit FixedRandom(std::vector<double> fractions = {0.5}) : fractions_(std::move(fractions)) {}

  double fraction() override { return fractions_[drawn_++ % fractions_.size()]; }
  void secret_bytes(std::span<std::uint8_t> out) override {
    std::fill(out.begin(), out.end(), std::uint8_t{0x5A});
  }
  std::size_t drawn() const { return drawn_; }

 private:
  std::vector<double> fractions_;
  std::size_t drawn_ = 0;
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_FIXED_RANDOM_H_
