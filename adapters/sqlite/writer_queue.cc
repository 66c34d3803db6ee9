#include "adapters/sqlite/writer_queue.h"

namespace rk::sqlite {
namespace {

// How often a waiting writer looks whether its page's time is over.
constexpr std::chrono::milliseconds kLookInterval{50};

}  // namespace

bool WriterQueue::enter(const std::function<bool()>& expired) {
  std::unique_lock lock(mutex_);
  const std::uint64_t ticket = next_ticket_++;
  const auto my_turn = [&] { return serving_ == ticket; };
  if (!expired) {
    turn_.wait(lock, my_turn);
    return true;
  }
  while (!turn_.wait_for(lock, kLookInterval, my_turn)) {
    if (!expired()) continue;
    abandoned_.insert(ticket);
    return false;
  }
  return true;
}

void WriterQueue::leave() noexcept {
  {
    const std::lock_guard lock(mutex_);
    ++serving_;
    skip_abandoned();
  }
  turn_.notify_all();
}

void WriterQueue::skip_abandoned() noexcept {
  while (!abandoned_.empty() && *abandoned_.begin() == serving_) {
    abandoned_.erase(abandoned_.begin());
    ++serving_;
  }
}

}  // namespace rk::sqlite
