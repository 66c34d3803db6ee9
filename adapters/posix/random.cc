#include "adapters/posix/random.h"

#include <sys/random.h>

#include <cerrno>
#include <system_error>

namespace rk::posix {
namespace {

// A counter that steps by an odd number and is mixed on the way out visits every state once, and
// needs no lock.
constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15u;

std::uint64_t mixed(std::uint64_t x) {
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9u;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBu;
  return x ^ (x >> 31);
}

}  // namespace

SystemRandom::SystemRandom() : state_(0) {
  std::uint8_t seed[sizeof(std::uint64_t)];
  secret_bytes(seed);
  std::uint64_t start = 0;
  for (const std::uint8_t byte : seed) start = start << 8 | byte;
  state_.store(start, std::memory_order_relaxed);
}

double SystemRandom::fraction() {
  const std::uint64_t state = state_.fetch_add(kStep, std::memory_order_relaxed) + kStep;
  return static_cast<double>(mixed(state) >> 11) * 0x1.0p-53;
}

void SystemRandom::secret_bytes(std::span<std::uint8_t> out) {
  while (!out.empty()) {
    const ssize_t count = ::getrandom(out.data(), out.size(), 0);
    if (count < 0) {
      if (errno == EINTR) continue;
      throw std::system_error(errno, std::generic_category(), "getrandom");
    }
    out = out.subspan(static_cast<std::size_t>(count));
  }
}

}  // namespace rk::posix
