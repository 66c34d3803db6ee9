#include "services/control_client.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/scripted_network.h"
#include "tests/support/toy_code_pages.h"
#include "value/script_error.h"

namespace rk::services {
namespace {

using std::chrono::milliseconds;
using tests::ScriptedNetwork;

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

  ScriptedNetwork network;
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
