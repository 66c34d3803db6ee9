#include "pagehost/http/page_pool.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <system_error>

namespace rk::http {
namespace {

// The supervisor only waits and wakes.
constexpr std::size_t kSupervisorStackBytes = std::size_t{128} << 10;

void* run_body(void* body) {
  (*static_cast<std::function<void()>*>(body))();
  return nullptr;
}

}  // namespace

PageThread::PageThread(std::size_t stack_bytes, std::function<void()> body)
    : body_(std::make_unique<std::function<void()>>(std::move(body))) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, stack_bytes);
  const int error = pthread_create(&thread_, &attributes, run_body, body_.get());
  pthread_attr_destroy(&attributes);
  if (error != 0) throw std::system_error(error, std::generic_category(), "cannot start a thread");
}

PageThread::~PageThread() {
  pthread_join(thread_, nullptr);
}

void run_on_page_thread(std::size_t stack_bytes, const std::function<void()>& body) {
  std::exception_ptr failure;
  {
    const PageThread thread(stack_bytes, [&] {
      try {
        body();
      } catch (...) {
        failure = std::current_exception();
      }
    });
  }
  if (failure) std::rethrow_exception(failure);
}

PagePool::PagePool(const PagePoolOptions& options) : options_(options) {
  workers_.reserve(options_.max_threads);
  supervisor_ = std::make_unique<PageThread>(kSupervisorStackBytes, [this] { supervise(); });
}

PagePool::~PagePool() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    queue_.clear();
    queued_.notify_all();
    for (const auto& worker : workers_) worker->wake.notify_all();
  }
  supervisor_.reset();
  workers_.clear();
}

void PagePool::await_empty_queue(std::chrono::microseconds patience) {
  std::unique_lock lock(mutex_);
  emptied_.wait_for(lock, patience, [this] { return queue_.empty(); });
}

std::size_t PagePool::running() const {
  const std::lock_guard lock(mutex_);
  return running_;
}

std::size_t PagePool::waiting() const {
  const std::lock_guard lock(mutex_);
  return queue_.size();
}

// Threads that are not started yet count as places too.
bool PagePool::is_full() const {
  return queue_.size() + running_ >= options_.max_waiting + options_.max_threads;
}

bool PagePool::may_start(Clock::time_point now) const {
  if (running_ >= options_.max_threads) return false;
  if (running_ < options_.eager_threads) return true;
  const auto fresh = std::count_if(workers_.begin(), workers_.end(), [&](const auto& worker) {
    return worker->task && now - worker->started < kPatience;
  });
  return static_cast<std::size_t>(fresh) < options_.eager_threads;
}

// Gives a task to a thread, one that waits (to be woken by the caller) or a new one; null where
// none waits and the system has no further one.
PagePool::Worker* PagePool::start(std::shared_ptr<PageTask>& task, Clock::time_point now) {
  Worker* worker = nullptr;
  if (!idle_.empty()) {
    worker = idle_.back();
    idle_.pop_back();
    worker->task = std::move(task);
    worker->started = now;
  } else {
    auto fresh = std::make_unique<Worker>();
    worker = fresh.get();
    worker->task = task;
    worker->started = now;
    try {
      worker->thread =
          std::make_unique<PageThread>(options_.stack_bytes, [this, worker] { work(*worker); });
    } catch (const std::system_error&) {
      return nullptr;  // what runs goes on and takes the queue's next
    }
    task.reset();
    workers_.push_back(std::move(fresh));
  }
  ++running_;
  return worker;
}

bool PagePool::submit(std::shared_ptr<PageTask> task) {
  std::unique_lock lock(mutex_);
  if (stopping_) return false;
  if (queue_.empty()) {
    const Clock::time_point now = Clock::now();
    Worker* const worker = may_start(now) ? start(task, now) : nullptr;
    if (worker != nullptr) {
      // Woken without the lock, which it takes first of all.
      lock.unlock();
      worker->wake.notify_one();
      return true;
    }
  }
  std::deque<std::shared_ptr<PageTask>> abandoned;  // let go without the lock
  if (is_full()) {
    const auto gone = std::stable_partition(
        queue_.begin(), queue_.end(), [](const auto& waiting) { return !waiting->is_abandoned(); });
    std::move(gone, queue_.end(), std::back_inserter(abandoned));
    queue_.erase(gone, queue_.end());
  }
  const bool full = is_full();
  if (!full) {
    queue_.push_back(std::move(task));
    if (!supervising_) queued_.notify_one();
  }
  lock.unlock();
  return !full;
}

void PagePool::work(Worker& worker) {
  std::unique_lock lock(mutex_);
  while (true) {
    if (worker.task) {
      const std::shared_ptr<PageTask> task = worker.task;
      lock.unlock();
      task->run();
      lock.lock();
      worker.task.reset();
    }
    if (!queue_.empty()) {
      worker.task = std::move(queue_.front());
      queue_.pop_front();
      if (queue_.empty()) emptied_.notify_one();
      worker.started = Clock::now();
      continue;
    }
    --running_;
    if (stopping_) return;
    idle_.push_back(&worker);
    worker.wake.wait(lock, [&] { return worker.task != nullptr || stopping_; });
    if (!worker.task) return;
  }
}

void PagePool::supervise() {
  std::unique_lock lock(mutex_);
  while (true) {
    supervising_ = false;
    queued_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
    supervising_ = true;
    if (queued_.wait_for(lock, kPatience, [this] { return stopping_; })) return;
    const Clock::time_point now = Clock::now();
    while (!queue_.empty() && may_start(now)) {
      Worker* const worker = start(queue_.front(), now);
      if (worker == nullptr) break;
      worker->wake.notify_one();
      queue_.pop_front();
    }
    if (queue_.empty()) emptied_.notify_one();
  }
}

}  // namespace rk::http
