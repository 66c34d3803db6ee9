// Random numbers, behind an interface so that tests fix them. Several threads may call.
#ifndef RK_PLATFORM_RANDOM_H_
#define RK_PLATFORM_RANDOM_H_

#include <cstdint>
#include <span>

namespace rk::platform {

class Random {
 public:
  virtual ~Random() = default;
  // At least 0, below 1.
  virtual double fraction() = 0;
  // From the system's source, fit for session identifiers.
  virtual void secret_bytes(std::span<std::uint8_t> out) = 0;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_RANDOM_H_
