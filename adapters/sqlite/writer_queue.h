// The order of those who write to one file in this process: first come, first served, so that no
// writer starves behind others. Several threads call.
#ifndef RK_ADAPTERS_SQLITE_WRITER_QUEUE_H_
#define RK_ADAPTERS_SQLITE_WRITER_QUEUE_H_

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <set>

namespace rk::sqlite {

class WriterQueue {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  // Waits for its turn. False where `expired` (may be empty: waits for good) said so before that.
  bool enter(const std::function<bool()>& expired);
  void leave() noexcept;

  // Since when writers find the file held by another process, one after the other; nothing once it
  // was free. For the one whose turn it is: its own wait began before it came to its turn.
  std::optional<TimePoint> held_since() const noexcept { return held_since_; }
  void note_held(std::optional<TimePoint> since) noexcept { held_since_ = since; }

 private:
  void skip_abandoned() noexcept;

  std::mutex mutex_;
  std::condition_variable turn_;
  std::uint64_t next_ticket_ = 0;
  std::uint64_t serving_ = 0;
  std::set<std::uint64_t> abandoned_;  // tickets of writers that stopped waiting
  std::optional<TimePoint> held_since_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_WRITER_QUEUE_H_
