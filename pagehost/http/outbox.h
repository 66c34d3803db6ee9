// Outbox: finished answers that the event loop sends at its next turn.
//
// While pages queue, the loop turns only now and then, and the box is open between its turns: the
// pages' threads leave their answers here and go on with the next page, and the loop sends many in
// a row. A visitor's program, or the proxy before us, is then woken once for many answers, where
// each wake from another processor costs both sides about a quarter of what a page does.
//
// Any thread may leave an answer; the loop's opens and closes.
#ifndef RK_PAGEHOST_HTTP_OUTBOX_H_
#define RK_PAGEHOST_HTTP_OUTBOX_H_

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace rk::http {

class Connection;

class Outbox {
 public:
  // Whether leave() may succeed; by the time it is called it may have changed.
  bool is_open() const noexcept { return open_.load(std::memory_order_relaxed); }

  // True where the loop has the connection from now on; false where the box is closed.
  bool leave(const std::shared_ptr<Connection>& connection) {
    const std::lock_guard lock(mutex_);
    if (!is_open()) return false;
    left_.push_back(connection);
    return true;
  }

  void open() noexcept { open_.store(true, std::memory_order_relaxed); }

  // What was left since open(), in the order of leaving.
  std::vector<std::shared_ptr<Connection>> close() {
    const std::lock_guard lock(mutex_);
    open_.store(false, std::memory_order_relaxed);
    return std::exchange(left_, {});
  }

 private:
  std::atomic<bool> open_{false};  // changes to false under the mutex
  std::mutex mutex_;
  std::vector<std::shared_ptr<Connection>> left_;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_OUTBOX_H_
