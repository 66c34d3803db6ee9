#include "adapters/posix/kept_memory.h"

#include <cstddef>
#include <cstdlib>

namespace rk::posix {

// Setting the allocator's two bounds (mallopt) would fix them for good. A block that was the
// system's own and is freed raises them instead: to its size, and to twice its size.
void keep_freed_memory() {
  constexpr std::size_t kLargestUsualText = std::size_t{2} << 20;
  void* volatile block = std::malloc(kLargestUsualText);
  std::free(block);
}

}  // namespace rk::posix
