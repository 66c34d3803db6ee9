// PagePool: the bounded threads that pages run on, and the queue before them.
//
// A page that waits (for a database, a fetch) must not hold up those that could run, and many that
// compute must not trample on one another's time: a task starts at once while fewer than
// `eager_threads` others are fresh (started within kPatience), else it waits in the queue, from
// which a thread that is done takes it, or the supervisor starts it when the others turn out to
// be slow. So under load a few threads work the queue, and up to `max_threads` do when pages wait.
//
// Any thread may submit. The destructor waits for what runs and drops what waits.
#ifndef RK_PAGEHOST_HTTP_PAGE_POOL_H_
#define RK_PAGEHOST_HTTP_PAGE_POOL_H_

#include <pthread.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace rk::http {

// A thread with a stack of a named size, joined by scope.
class PageThread {
 public:
  // Throws std::system_error where the system gives no thread.
  PageThread(std::size_t stack_bytes, std::function<void()> body);
  ~PageThread();  // joins
  PageThread(const PageThread&) = delete;
  PageThread& operator=(const PageThread&) = delete;

 private:
  std::unique_ptr<std::function<void()>> body_;
  pthread_t thread_{};
};

// Runs a body on a thread with such a stack and waits for it; throws what it threw.
void run_on_page_thread(std::size_t stack_bytes, const std::function<void()>& body);

class PageTask {
 public:
  virtual ~PageTask() = default;
  virtual void run() noexcept = 0;
  // Whether nobody waits for it any more: it makes room in a full queue. Any thread, under the
  // pool's lock.
  virtual bool is_abandoned() const noexcept { return false; }
};

struct PagePoolOptions {
  std::size_t max_threads = 256;
  std::size_t eager_threads = 2;
  std::size_t max_waiting = 2560;
  std::size_t stack_bytes = std::size_t{16} << 20;
};

class PagePool {
 public:
  // How long a task may run before it counts as one that waits for something.
  static constexpr std::chrono::milliseconds kPatience{5};

  explicit PagePool(const PagePoolOptions& options);
  ~PagePool();
  PagePool(const PagePool&) = delete;
  PagePool& operator=(const PagePool&) = delete;

  // False, and the task dropped, where the queue is full of tasks that someone waits for.
  bool submit(std::shared_ptr<PageTask> task);

  // Waits until no task waits in the queue, or so long.
  void await_empty_queue(std::chrono::microseconds patience);

  std::size_t running() const;
  std::size_t waiting() const;

 private:
  using Clock = std::chrono::steady_clock;
  struct Worker {
    std::condition_variable wake;
    std::shared_ptr<PageTask> task;
    Clock::time_point started;
    std::unique_ptr<PageThread> thread;
  };

  bool is_full() const;
  bool may_start(Clock::time_point now) const;
  Worker* start(std::shared_ptr<PageTask>& task, Clock::time_point now);
  void work(Worker& worker);
  void supervise();

  const PagePoolOptions options_;
  mutable std::mutex mutex_;  // of all below
  std::deque<std::shared_ptr<PageTask>> queue_;
  std::vector<std::unique_ptr<Worker>> workers_;
  std::vector<Worker*> idle_;  // the one that worked last at the end, its caches still warm
  std::size_t running_ = 0;
  bool stopping_ = false;
  bool supervising_ = false;
  std::condition_variable queued_;
  std::condition_variable emptied_;
  std::unique_ptr<PageThread> supervisor_;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_PAGE_POOL_H_
