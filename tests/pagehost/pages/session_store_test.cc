#include "pagehost/pages/session_store.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/fixed_clock.h"
#include "value/value.h"

namespace rk::pagehost {
namespace {

using namespace std::chrono_literals;

// Other bytes each time.
class CountingRandom final : public platform::Random {
 public:
  double fraction() override { return 0.5; }
  void secret_bytes(std::span<std::uint8_t> out) override {
    ++asked_;
    for (std::size_t i = 0; i < out.size(); ++i) {
      out[i] = static_cast<std::uint8_t>(asked_ >> (i % 4 * 8));
    }
  }

 private:
  std::uint32_t asked_ = 0;
};

class Sessions : public ::testing::Test {
 protected:
  std::string made() { return store_.create()->id; }
  // The turn, where it is given at once.
  SessionStore::Turn turn(const std::string& id) {
    SessionStore::Turn out;
    store_.admit(id, [&](SessionStore::Turn turn) { out = std::move(turn); });
    return out;
  }

  tests::FixedClock clock_;
  CountingRandom random_;
  SessionStore store_{clock_, random_, 20min, 4, 2};
};

TEST_F(Sessions, AnIdentifierHas128Bits) {
  EXPECT_EQ(made().size(), 32u);
}

TEST_F(Sessions, AnUnknownIdentifierIsNotAdopted) {
  EXPECT_EQ(turn("0123456789ABCDEF0123456789ABCDEF"), nullptr);
  EXPECT_EQ(store_.size(), 0u);
}

TEST_F(Sessions, ContentsStayForTheNextTurn) {
  const std::string id = made();
  turn(id)->contents.set("a", Value::text("1"));
  EXPECT_EQ(turn(id)->contents.find("A")->as_view(), "1");
}

TEST_F(Sessions, OnePageATimeAndTheNextIsCalledByTheOneBefore) {
  const std::string id = made();
  SessionStore::Turn first = turn(id);
  std::vector<int> order;
  std::vector<SessionStore::Turn> held;
  for (int i = 0; i < 2; ++i) {
    store_.admit(id, [&order, &held, i](SessionStore::Turn next) {
      order.push_back(i);
      held.push_back(std::move(next));
    });
  }
  EXPECT_TRUE(order.empty());
  first.reset();
  EXPECT_EQ(order, (std::vector<int>{0}));
  SessionStore::Turn second = std::move(held[0]);
  second.reset();
  EXPECT_EQ(order, (std::vector<int>{0, 1}));
}

TEST_F(Sessions, TooManyThatWaitAreTurnedAway) {
  const std::string id = made();
  int called = 0;  // outlives the turn, whose end calls those that wait
  const auto count = [&](SessionStore::Turn) { ++called; };
  const SessionStore::Turn first = turn(id);
  EXPECT_TRUE(store_.admit(id, count));
  EXPECT_TRUE(store_.admit(id, count));
  EXPECT_FALSE(store_.admit(id, count));
  EXPECT_EQ(called, 0);
}

TEST_F(Sessions, RequestsThatNobodyWaitsForAnyMoreMakeRoom) {
  const std::string id = made();
  std::vector<int> called;
  bool second_wanted = true;
  SessionStore::Turn first = turn(id);
  const auto note = [&](int number) {
    return [&called, number](SessionStore::Turn) { called.push_back(number); };
  };
  ASSERT_TRUE(store_.admit(id, note(1)));
  ASSERT_TRUE(store_.admit(id, note(2), [&] { return second_wanted; }));
  EXPECT_FALSE(store_.admit(id, note(3)));
  second_wanted = false;
  EXPECT_TRUE(store_.admit(id, note(4)));
  first.reset();
  EXPECT_EQ(called, (std::vector<int>{1, 4}));
}

TEST_F(Sessions, WhatAllKeepTogetherIsBounded) {
  SessionStore store(clock_, random_, 20min, 100, 2, 1000);
  std::vector<std::string> ids;
  for (int i = 0; i < 5; ++i) {
    const SessionStore::Turn kept = store.create();
    ids.push_back(kept->id);
    kept->bytes = 300;
  }
  EXPECT_EQ(store.size(), 3u) << "300 bytes each, 1000 at most";
  EXPECT_EQ(store.take_dropped(), 2u);
  const auto is_there = [&](const std::string& id) {
    bool there = false;
    store.admit(id, [&](const SessionStore::Turn& turn) { there = turn != nullptr; });
    return there;
  };
  EXPECT_FALSE(is_there(ids[0]));
  EXPECT_FALSE(is_there(ids[1]));
  EXPECT_TRUE(is_there(ids[4]));
  store.admit(ids[4], [](const SessionStore::Turn& turn) { turn->bytes = 100; });
  const SessionStore::Turn more = store.create();
  more->bytes = 290;
  EXPECT_EQ(store.size(), 4u);
}

TEST_F(Sessions, WhoWaitedForARemovedSessionGetsNone) {
  const std::string id = made();
  SessionStore::Turn first = turn(id);
  bool called = false;
  bool empty = false;
  store_.admit(id, [&](SessionStore::Turn next) {
    called = true;
    empty = next == nullptr;
  });
  store_.remove(first);
  first.reset();
  EXPECT_TRUE(called);
  EXPECT_TRUE(empty);
  EXPECT_EQ(turn(id), nullptr);
}

TEST_F(Sessions, ASessionEndsWhenItsTimeIsOver) {
  const std::string id = made();
  clock_.advance(19min);
  EXPECT_NE(turn(id), nullptr);
  clock_.advance(19min);
  EXPECT_NE(turn(id), nullptr);
  clock_.advance(20min);
  EXPECT_EQ(turn(id), nullptr);
  EXPECT_EQ(store_.take_expired().size(), 1u);
  EXPECT_EQ(store_.size(), 0u);
}

TEST_F(Sessions, ASessionInUseDoesNotExpire) {
  const std::string id = made();
  const SessionStore::Turn held = turn(id);
  clock_.advance(60min);
  EXPECT_TRUE(store_.take_expired().empty());
  EXPECT_EQ(store_.size(), 1u);
}

TEST_F(Sessions, AFloodOfNewSessionsLeavesThoseThatWereComeBackTo) {
  const std::string kept = made();
  turn(kept).reset();
  for (int i = 0; i < 100; ++i) made();
  EXPECT_EQ(store_.size(), 4u);
  EXPECT_NE(turn(kept), nullptr);
  EXPECT_EQ(store_.take_dropped(), 97u);
  EXPECT_EQ(store_.take_dropped(), 0u);
}

}  // namespace
}  // namespace rk::pagehost
