// Random choices that are the same in every run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace rk::jetsql {

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}
  int roll(int sides) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<int>((state_ >> 33U) % static_cast<std::uint64_t>(sides));
  }
  template <std::size_t N>
  std::string pick(const char* const (&choices)[N]) {
    return choices[roll(static_cast<int>(N))];
  }

 private:
  std::uint64_t state_;
};

}  // namespace rk::jetsql
