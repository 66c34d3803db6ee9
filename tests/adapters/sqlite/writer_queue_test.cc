#include "adapters/sqlite/writer_queue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace rk::sqlite {
namespace {

TEST(WriterQueue, OneWriterAtATime) {
  WriterQueue queue;
  int inside = 0;  // guarded by the queue alone
  int total = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(queue.enter({}));
        EXPECT_EQ(++inside, 1);
        ++total;
        --inside;
        queue.leave();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(total, 1600);
}

TEST(WriterQueue, AWriterWhoseTimeIsOverGivesUpAndLetsTheNextIn) {
  WriterQueue queue;
  ASSERT_TRUE(queue.enter({}));
  EXPECT_FALSE(queue.enter([] { return true; }));
  std::atomic<bool> entered = false;
  std::thread next([&] {
    entered = queue.enter({});
    queue.leave();
  });
  queue.leave();
  next.join();
  EXPECT_TRUE(entered);
  EXPECT_TRUE(queue.enter([] { return true; }));  // free: nothing to wait for
  queue.leave();
}

}  // namespace
}  // namespace rk::sqlite
