// HeldMemory: what the objects of one page hold outside of its script's variables (bytes of
// streams, answers, document trees), in all. Past the bound the page ends as out of memory.
//
// One a page, shared by its objects; one that is kept in a session goes on counting there. Several
// threads may give back.
#ifndef RK_PAGEHOST_PAGES_HELD_MEMORY_H_
#define RK_PAGEHOST_PAGES_HELD_MEMORY_H_

#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

#include "platform/page.h"

namespace rk::pagehost {

// Four streams or answers of the largest size at once; pages hold one or two small ones.
inline constexpr std::size_t kMaxHeldBytes = std::size_t{256} << 20;

class HeldMemory {
 public:
  // Throws PageEnd past the bound, and counts nothing then.
  void add(std::size_t bytes) {
    if (bytes_.fetch_add(bytes) + bytes <= kMaxHeldBytes) return;
    bytes_.fetch_sub(bytes);
    throw platform::PageEnd{platform::PageEnd::Reason::OutOfMemory};
  }
  void remove(std::size_t bytes) noexcept { bytes_.fetch_sub(bytes); }
  std::size_t bytes() const noexcept { return bytes_.load(); }

 private:
  std::atomic<std::size_t> bytes_ = 0;
};

// One object's part of it, given back when the object goes. Without a memory nothing is counted.
class HeldBytes {
 public:
  explicit HeldBytes(std::shared_ptr<HeldMemory> memory) : memory_(std::move(memory)) {}
  ~HeldBytes() {
    if (memory_) memory_->remove(bytes_);
  }
  HeldBytes(const HeldBytes&) = delete;
  HeldBytes& operator=(const HeldBytes&) = delete;

  void set(std::size_t bytes) {
    if (!memory_ || bytes == bytes_) return;
    if (bytes > bytes_) {
      memory_->add(bytes - bytes_);
    } else {
      memory_->remove(bytes_ - bytes);
    }
    bytes_ = bytes;
  }

 private:
  std::shared_ptr<HeldMemory> memory_;
  std::size_t bytes_ = 0;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_HELD_MEMORY_H_
