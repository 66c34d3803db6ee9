// Random numbers from the system: secrets straight from it, fractions by a fast generator that it
// seeds. Several threads may call.
#ifndef RK_ADAPTERS_POSIX_RANDOM_H_
#define RK_ADAPTERS_POSIX_RANDOM_H_

#include <atomic>
#include <cstdint>

#include "platform/random.h"

namespace rk::posix {

class SystemRandom final : public platform::Random {
 public:
  SystemRandom();
  double fraction() override;
  void secret_bytes(std::span<std::uint8_t> out) override;

 private:
  std::atomic<std::uint64_t> state_;
};

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_RANDOM_H_
