#include "services/control_client.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "tests/support/toy_code_pages.h"
#include "value/script_error.h"

namespace rk::services {
namespace {

using std::chrono::milliseconds;

// A clock that only waiting moves, and a socket whose events have their times.
class Network final : public platform::Sockets, public platform::Clock {
 public:
  std::unique_ptr<platform::Socket> socket() override { return std::make_unique<Line>(*this); }
  double now() const override { return 45000; }
  std::chrono::steady_clock::time_point steady() const override { return time; }

  // Since the first command's start; none: never.
  std::optional<milliseconds> connects_at = milliseconds(0);
  std::vector<std::pair<milliseconds, std::string>> arrivals;
  std::vector<std::string> log;
  std::chrono::steady_clock::time_point time{};

 private:
  class Line final : public platform::Socket {
   public:
    explicit Line(Network& network) : network_(network) {}
    ~Line() override { network_.log.push_back("released"); }
    void connect(std::string_view host, std::int16_t port) override {
      network_.log.push_back("connect " + std::string(host) + " " + std::to_string(port));
    }
    bool wait_connected(milliseconds longest) override {
      return network_.wait_until(network_.connects_at, longest);
    }
    void send(std::string_view bytes) override {
      network_.log.push_back("send " + std::string(bytes));
    }
    std::optional<std::string> receive(std::size_t limit, milliseconds longest) override {
      if (network_.arrivals.empty()) {
        network_.time += longest;
        return std::nullopt;
      }
      if (!network_.wait_until(network_.arrivals.front().first, longest)) return std::nullopt;
      const std::string bytes = network_.arrivals.front().second.substr(0, limit);
      network_.arrivals.erase(network_.arrivals.begin());
      return bytes;
    }
    void close() override { network_.log.push_back("close"); }

   private:
    Network& network_;
  };

  bool wait_until(std::optional<milliseconds> event, milliseconds longest) {
    const auto at =
        std::chrono::steady_clock::time_point() + event.value_or(std::chrono::hours(1000));
    if (at > time + longest) {
      time += longest;
      return false;
    }
    time = std::max(time, at);
    return true;
  }
};

class ControlClientTest : public ::testing::Test {
 protected:
  void init() { client.Init(Value::text("10.0.0.1"), Value::text("8000"), Value::text("pw1")); }
  std::string returned(std::string_view command) {
    return std::string(client.ReturnText(Value::text(command)).as_view());
  }
  int seconds_passed() const {
    return static_cast<int>(
        std::chrono::floor<std::chrono::seconds>(network.time.time_since_epoch()).count());
  }

  Network network;
  tests::ToyCodePages code_pages;
  ControlClient client{{network, network, code_pages, platform::kGb2312}, "Rkclient1.0.0"};
};

TEST_F(ControlClientTest, TheMessageIsCommandPasswordAndReleaseAndNothingElse) {
  network.arrivals = {{milliseconds(5), "ok"}};
  init();
  EXPECT_EQ(returned("abc"), "ok");
  EXPECT_EQ(network.log,
            (std::vector<std::string>{"connect 10.0.0.1 8000", "send abc,pw1~with~Rkclient1.0.0",
                                      "close", "released"}));
}

TEST_F(ControlClientTest, AnEmptyCommandBeginsWithTheComma) {
  network.arrivals = {{milliseconds(5), "ok"}};
  init();
  returned("");
  EXPECT_EQ(network.log.at(1), "send ,pw1~with~Rkclient1.0.0");
}

TEST_F(ControlClientTest, AServerThatNeverAnswersReadsAsTimedOutAndTheConnectionIsClosed) {
  init();
  EXPECT_EQ(returned("abc"), "通讯超时");
  EXPECT_EQ(seconds_passed(), 61);
  EXPECT_EQ(network.log.at(2), "close");
}

TEST_F(ControlClientTest, AConnectionThatNeverComesReadsAsTimedOutWithoutClose) {
  network.connects_at.reset();
  init();
  EXPECT_EQ(returned("abc"), "连接超时");
  EXPECT_EQ(seconds_passed(), 61);
  EXPECT_EQ(network.log, (std::vector<std::string>{"connect 10.0.0.1 8000", "released"}));
}

TEST_F(ControlClientTest, TheReplyHasItsOwnSixtySeconds) {
  network.connects_at = milliseconds(50000);
  network.arrivals = {{milliseconds(105000), "late"}};
  init();
  EXPECT_EQ(returned("abc"), "late");
}

TEST_F(ControlClientTest, AnArrivalInTheLookThatEndsTheWaitNoLongerCounts) {
  network.arrivals = {{milliseconds(61000), "too late"}};
  init();
  EXPECT_EQ(returned("abc"), "通讯超时");
}

TEST_F(ControlClientTest, AReplyIsCutAtTheCap) {
  network.arrivals = {{milliseconds(1), std::string(20000, 'x')}};
  init();
  EXPECT_EQ(returned("abc"), std::string(10240, 'x'));
}

TEST_F(ControlClientTest, ACharacterCutByTheCapDoesNoHarm) {
  network.arrivals = {{milliseconds(1), std::string(10239, 'x') + "\xD6\xD0"}};
  init();
  EXPECT_EQ(returned("abc"), std::string(10239, 'x') + "\xEF\xBF\xBD");
}

TEST_F(ControlClientTest, OnlyTheFirstPieceOfAReplyIsReturned) {
  network.arrivals = {{milliseconds(1), "first"}, {milliseconds(2), "second"}};
  init();
  EXPECT_EQ(returned("abc"), "first");
}

TEST_F(ControlClientTest, KeepsTheFirstReplyForASecondCommandWithoutInit) {
  network.arrivals = {{milliseconds(1), "first"}, {milliseconds(2), "second"}};
  init();
  returned("one");
  EXPECT_EQ(returned("two"), "first");
  EXPECT_EQ(network.log.at(5), "send two,pw1~with~Rkclient1.0.0");
}

TEST_F(ControlClientTest, InitForgetsTheReplyAndTheConnection) {
  network.arrivals = {{milliseconds(1), "first"}, {milliseconds(2), "second"}};
  init();
  returned("one");
  init();
  EXPECT_EQ(returned("two"), "second");
}

TEST_F(ControlClientTest, TextsCrossInTheAnsiCodePage) {
  network.arrivals = {{milliseconds(1), "\xCE\xC4"}};
  init();
  EXPECT_EQ(returned("中"), "文");
  EXPECT_EQ(network.log.at(1), "send \xD6\xD0,pw1~with~Rkclient1.0.0");
}

TEST_F(ControlClientTest, APortPastSixteenBitsOverflows) {
  EXPECT_THROW(client.Init(Value::text("h"), Value::long_integer(40000), Value::text("")),
               ScriptError);
}

}  // namespace
}  // namespace rk::services
