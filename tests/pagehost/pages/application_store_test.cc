#include "pagehost/pages/application_store.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "pagehost/pages/page_time.h"
#include "tests/support/fixed_clock.h"
#include "value/array.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

class ThingObject final : public Object {
 public:
  std::string_view type_name() const override { return "Thing"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) override { return {}; }
};

class ApplicationTest : public ::testing::Test {
 protected:
  std::shared_ptr<PageTime> time() {
    return std::make_shared<PageTime>(clock_, std::chrono::seconds(180), stopping_);
  }
  tests::FixedClock clock_;
  std::shared_ptr<std::atomic<bool>> stopping_ = std::make_shared<std::atomic<bool>>(false);
  ApplicationStore store_;
};

TEST_F(ApplicationTest, NamesHaveNoLetterCase) {
  ApplicationView page(store_, time());
  page.set_value("Rk_Tp_/a.html", Value::text("x"));
  EXPECT_EQ(page.value("RK_TP_/A.html").as_view(), "x");
  EXPECT_TRUE(page.value("other").is_empty());
}

TEST_F(ApplicationTest, WhatIsStoredIsSharedBetweenThreads) {
  ApplicationView page(store_, time());
  page.set_value("a", Value::array(Array::of({Value::text("x")})));
  EXPECT_TRUE(page.value("a").array_ref()->shared());
}

TEST_F(ApplicationTest, AnObjectOfAPageIsRefused) {
  ApplicationView page(store_, time());
  EXPECT_THROW(page.set_value("a", Value::object(make_ref<ThingObject>())), ScriptError);
  EXPECT_THROW(
      page.set_value("a", Value::array(Array::of({Value::object(make_ref<ThingObject>())}))),
      ScriptError);
  EXPECT_TRUE(page.value("a").is_empty());
}

TEST_F(ApplicationTest, TheHolderMayLockAgainAndStore) {
  ApplicationView page(store_, time());
  page.lock();
  page.lock();
  page.set_value("a", Value::integer(1));
  page.unlock();
  page.unlock();
  ApplicationView other(store_, time());
  other.set_value("a", Value::integer(2));
  EXPECT_EQ(page.value("a").as_integer(), 2);
}

TEST_F(ApplicationTest, ALockIsGivenBackAtThePagesEnd) {
  auto page = std::make_unique<ApplicationView>(store_, time());
  page->lock();
  page.reset();
  ApplicationView other(store_, time());
  clock_.advance(std::chrono::seconds(181));  // it may not wait at all
  EXPECT_NO_THROW(other.lock());
}

TEST_F(ApplicationTest, WhoWaitsTooLongEnds) {
  ApplicationView holder(store_, time());
  holder.lock();
  auto late = time();
  ApplicationView waiting(store_, late);
  clock_.advance(std::chrono::seconds(181));
  EXPECT_THROW(waiting.lock(), platform::PageEnd);
  EXPECT_TRUE(waiting.value("a").is_empty());
}

TEST_F(ApplicationTest, CountingUnderTheLockLosesNothing) {
  constexpr int kPages = 4;
  constexpr int kTimes = 500;
  std::vector<std::thread> threads;
  for (int i = 0; i < kPages; ++i) {
    threads.emplace_back([&] {
      ApplicationView page(store_, time());
      for (int n = 0; n < kTimes; ++n) {
        page.lock();
        const Value now = page.value("count");
        page.set_value("count", Value::long_integer(now.is_empty() ? 1 : now.as_long() + 1));
        page.unlock();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(store_.value("count").as_long(), kPages * kTimes);
}

}  // namespace
}  // namespace rk::pagehost
