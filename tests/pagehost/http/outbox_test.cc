#include "pagehost/http/outbox.h"

#include <gtest/gtest.h>

#include <thread>

#include "pagehost/http/connection.h"

namespace rk::http {
namespace {

class Idle final : public Connection {
 public:
  void start() override {}
  std::chrono::steady_clock::time_point deadline() const override { return {}; }
  void meet_deadline() override {}
  void conclude_page() override {}
  void break_off() override {}
};

TEST(Outbox, TakesNothingWhileItIsClosed) {
  Outbox outbox;
  EXPECT_FALSE(outbox.leave(std::make_shared<Idle>()));
  outbox.open();
  outbox.close();
  EXPECT_FALSE(outbox.leave(std::make_shared<Idle>()));
}

TEST(Outbox, GivesWhatWasLeftOnceAndInItsOrder) {
  Outbox outbox;
  const auto first = std::make_shared<Idle>();
  const auto second = std::make_shared<Idle>();
  outbox.open();
  EXPECT_TRUE(outbox.leave(first));
  EXPECT_TRUE(outbox.leave(second));
  EXPECT_EQ(outbox.close(), (std::vector<std::shared_ptr<Connection>>{first, second}));
  outbox.open();
  EXPECT_TRUE(outbox.close().empty());
}

TEST(Outbox, LosesNothingThatItTookWhileItOpensAndCloses) {
  constexpr std::size_t kLeaves = 20'000;
  Outbox outbox;
  std::size_t taken = 0;
  std::atomic<bool> done{false};
  std::thread thread([&] {
    const auto connection = std::make_shared<Idle>();
    for (std::size_t i = 0; i < kLeaves; ++i) {
      if (outbox.leave(connection)) ++taken;
    }
    done.store(true);
  });
  std::size_t given = 0;
  while (!done.load()) {
    outbox.open();
    given += outbox.close().size();
  }
  thread.join();
  EXPECT_EQ(given, taken);
}

}  // namespace
}  // namespace rk::http
