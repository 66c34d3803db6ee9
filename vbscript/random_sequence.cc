#include "vbscript/random_sequence.h"

#include <bit>

namespace rk::vbscript {

namespace {

constexpr std::uint32_t kMultiplier = 0xFD43FD;
constexpr std::uint32_t kIncrement = 0xC39EC3;
constexpr std::uint32_t kStateMask = 0xFFFFFF;
constexpr float kStates = 16777216.0F;

}  // namespace

float RandomSequence::last() const noexcept {
  return static_cast<float>(state_) / kStates;
}

float RandomSequence::next() noexcept {
  state_ = (state_ * kMultiplier + kIncrement) & kStateMask;
  return last();
}

float RandomSequence::restart(float seed) noexcept {
  const auto bits = std::bit_cast<std::uint32_t>(seed);
  state_ = (bits + (bits >> 24)) & kStateMask;
  return next();
}

void RandomSequence::randomize(double seed) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(seed);
  const auto high = static_cast<std::uint32_t>(bits >> 32);
  const std::uint32_t mixed = (high & 0xFFFF) ^ (high >> 16);
  state_ = (state_ & 0xFF) | (mixed << 8);
}

}  // namespace rk::vbscript
