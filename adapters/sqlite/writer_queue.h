// The order of those who write to one file in this process: first come, first served, so that no
// writer starves behind others. Several threads call.
#ifndef RK_ADAPTERS_SQLITE_WRITER_QUEUE_H_
#define RK_ADAPTERS_SQLITE_WRITER_QUEUE_H_

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <set>

namespace rk::sqlite {

class WriterQueue {
 public:
  // Waits for its turn. False where `expired` (may be empty: waits for good) said so before that.
  bool enter(const std::function<bool()>& expired);
  void leave() noexcept;

 private:
  void skip_abandoned() noexcept;

  std::mutex mutex_;
  std::condition_variable turn_;
  std::uint64_t next_ticket_ = 0;
  std::uint64_t serving_ = 0;
  std::set<std::uint64_t> abandoned_;  // tickets of writers that stopped waiting
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_WRITER_QUEUE_H_
