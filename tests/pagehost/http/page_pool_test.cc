#include "pagehost/http/page_pool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <latch>
#include <stdexcept>
#include <thread>

namespace rk::http {
namespace {

class Task final : public PageTask {
 public:
  explicit Task(std::function<void()> body) : body_(std::move(body)) {}
  void run() noexcept override { body_(); }

 private:
  std::function<void()> body_;
};

std::shared_ptr<PageTask> task(std::function<void()> body) {
  return std::make_shared<Task>(std::move(body));
}

PagePoolOptions options(std::size_t threads, std::size_t waiting) {
  PagePoolOptions given;
  given.max_threads = threads;
  given.eager_threads = 2;
  given.max_waiting = waiting;
  given.stack_bytes = std::size_t{256} << 10;
  return given;
}

TEST(PagePool, RunsWhatItIsGivenInOrderOfArrivalOnOneThread) {
  std::vector<int> order;
  std::promise<void> done;
  PagePool pool(options(1, 100));
  for (int i = 0; i < 50; ++i) pool.submit(task([&order, i] { order.push_back(i); }));
  pool.submit(task([&] { done.set_value(); }));
  done.get_future().wait();
  ASSERT_EQ(order.size(), 50u);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(PagePool, TasksThatWaitDoNotHoldUpTheNext) {
  PagePool pool(options(8, 100));
  std::promise<void> gate;
  const std::shared_future<void> open = gate.get_future().share();
  std::latch all_wait(7);
  for (int i = 0; i < 7; ++i) {
    pool.submit(task([&all_wait, open] {
      all_wait.count_down();
      open.wait();
    }));
  }
  all_wait.wait();
  std::promise<void> ran;
  pool.submit(task([&] { ran.set_value(); }));
  ran.get_future().wait();
  EXPECT_EQ(pool.waiting(), 0u);
  gate.set_value();
}

TEST(PagePool, PastItsThreadsTasksWaitAndPastItsQueueTheyAreRefused) {
  std::promise<void> gate;
  const std::shared_future<void> open = gate.get_future().share();
  std::atomic<int> ran{0};
  std::promise<void> both;
  {
    PagePool pool(options(2, 3));
    std::atomic<int> started{0};
    for (int i = 0; i < 2; ++i) {
      ASSERT_TRUE(pool.submit(task([&, open] {
        if (++started == 2) both.set_value();
        open.wait();
        ++ran;
      })));
    }
    both.get_future().wait();
    std::promise<void> last;
    ASSERT_TRUE(pool.submit(task([&] { ++ran; })));
    ASSERT_TRUE(pool.submit(task([&] { ++ran; })));
    ASSERT_TRUE(pool.submit(task([&] {
      ++ran;
      last.set_value();
    })));
    EXPECT_FALSE(pool.submit(task([&] { ++ran; })));
    EXPECT_EQ(pool.running(), 2u);
    EXPECT_EQ(pool.waiting(), 3u);
    gate.set_value();
    last.get_future().wait();
    // Every slot is back: as many tasks as before find room again.
    std::promise<void> again;
    while (!pool.submit(task([&] { again.set_value(); }))) {
    }
    again.get_future().wait();
  }
  EXPECT_EQ(ran.load(), 5);
}

TEST(PagePool, AnEmptyQueueIsAwaitedUntilItIsEmptyAndNoLongerThanSaid) {
  std::promise<void> gate;
  const std::shared_future<void> open = gate.get_future().share();
  std::promise<void> held;
  PagePool pool(options(1, 10));
  pool.await_empty_queue(std::chrono::hours(1));
  pool.submit(task([&held, open] {
    held.set_value();
    open.wait();
  }));
  held.get_future().wait();
  for (int i = 0; i < 5; ++i) pool.submit(task([] {}));
  pool.await_empty_queue(std::chrono::microseconds(1));
  EXPECT_EQ(pool.waiting(), 5u);
  gate.set_value();
  pool.await_empty_queue(std::chrono::hours(1));
  EXPECT_EQ(pool.waiting(), 0u);
}

class Abandoned final : public PageTask {
 public:
  void run() noexcept override { ran = true; }
  bool is_abandoned() const noexcept override { return true; }
  bool ran = false;
};

TEST(PagePool, TasksThatNobodyWaitsForMakeRoomInAFullQueue) {
  std::promise<void> started;
  std::promise<void> gate;
  const auto left = std::make_shared<Abandoned>();
  std::atomic<int> ran{0};
  {
    PagePool pool(options(1, 2));
    pool.submit(task([&] {
      started.set_value();
      gate.get_future().wait();
    }));
    started.get_future().wait();
    ASSERT_TRUE(pool.submit(left));
    ASSERT_TRUE(pool.submit(task([&] { ++ran; })));
    EXPECT_EQ(pool.waiting(), 2u);
    std::promise<void> last;
    ASSERT_TRUE(pool.submit(task([&] {
      ++ran;
      last.set_value();
    })));
    EXPECT_EQ(pool.waiting(), 2u);
    EXPECT_EQ(left.use_count(), 1) << "what nobody waits for is let go";
    EXPECT_FALSE(pool.submit(task([&] { ++ran; })));
    gate.set_value();
    last.get_future().wait();
  }
  EXPECT_EQ(ran.load(), 2);
  EXPECT_FALSE(left->ran);
}

TEST(PagePool, TheEndOfThePoolWaitsForWhatRuns) {
  std::promise<void> started;
  std::promise<void> gate;
  bool finished = false;
  auto pool = std::make_unique<PagePool>(options(1, 10));
  pool->submit(task([&] {
    started.set_value();
    gate.get_future().wait();
    finished = true;
  }));
  started.get_future().wait();
  std::thread end([&] { pool.reset(); });
  gate.set_value();
  end.join();
  EXPECT_TRUE(finished);
}

TEST(PagePool, APageThreadHasTheStackItWasPromised) {
  // More than any default, so that it cannot come from one.
  constexpr std::size_t kBytes = std::size_t{48} << 20;
  std::size_t bytes = 0;
  run_on_page_thread(kBytes, [&] {
    pthread_attr_t attributes;
    pthread_getattr_np(pthread_self(), &attributes);
    void* address = nullptr;
    pthread_attr_getstack(&attributes, &address, &bytes);
    pthread_attr_destroy(&attributes);
  });
  EXPECT_GE(bytes, kBytes);
}

TEST(PagePool, WhatABodyThrowsReachesWhoRanIt) {
  EXPECT_THROW(run_on_page_thread(std::size_t{256} << 10, [] { throw std::runtime_error("x"); }),
               std::runtime_error);
}

}  // namespace
}  // namespace rk::http
