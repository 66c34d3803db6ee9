// Answers while more pages queue than run, when the event loop sends many in a row.
#include <gtest/gtest.h>

#include <latch>
#include <memory>
#include <string>
#include <vector>

#include "tests/pagehost/http/front_fixture.h"

namespace rk::http {
namespace {

class QueuedPages : public FrontTest {
 protected:
  static constexpr std::size_t kThreads = 2;
  static constexpr std::size_t kVisitors = 60;

  QueuedPages() {
    options_.pool.max_threads = kThreads;
    options_.pool.max_waiting = 2 * kVisitors;
    played_ = pages_.answer;
    pages_.answer = [this](const pagehost::PageRequest& page, pagehost::AnswerSink* sink) {
      if (page.path == "/gate.asp") {
        held_.count_down();
        gate_.wait();
      }
      pagehost::PageAnswer answer = played_(page, sink);
      if (page.path == "/large.asp") answer.body.append(200'000, 'x');
      if (page.path != "/flushes.asp") return answer;
      sink->begin(answer);
      sink->write("first ");
      answer.body = "last\n";
      return answer;
    };
  }
  // Pages may still run, with what this object holds.
  ~QueuedPages() override { stop(); }

  // All pages' threads are held by pages until release().
  void hold_all_threads() {
    for (std::size_t i = 0; i < kThreads; ++i) {
      holders_.push_back(std::make_unique<Visitor>(port_));
      holders_.back()->send(request("/gate.asp", kClose));
    }
    held_.wait();
  }
  void release() { gate_.count_down(); }

  std::latch held_{kThreads};
  std::latch gate_{1};
  std::vector<std::unique_ptr<Visitor>> holders_;
  PlayedPages::Answer played_;
};

TEST_F(QueuedPages, EachVisitorHasHisOwnAnswers) {
  start();
  hold_all_threads();
  std::vector<std::unique_ptr<Visitor>> visitors;
  const auto mark = [](std::size_t i) { return std::to_string(i) + "] []\n"; };
  for (std::size_t i = 0; i < kVisitors; ++i) {
    visitors.push_back(std::make_unique<Visitor>(port_));
    visitors.back()->send(request("/page.asp?" + std::to_string(i)));
  }
  release();
  for (int round = 0; round < 20; ++round) {
    for (std::size_t i = 0; i < kVisitors; ++i) {
      const std::string answer = visitors[i]->read_until(mark(i));
      ASSERT_TRUE(answer.ends_with("GET /page.asp [" + mark(i))) << answer;
      visitors[i]->send(request("/page.asp?" + std::to_string(i)));
    }
  }
}

TEST_F(QueuedPages, AnswersOfEveryKindAreWhole) {
  start();
  hold_all_threads();
  constexpr std::size_t kOfAKind = 10;
  const std::vector<std::string> asked = {
      "HEAD /page.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n",
      request("/large.asp", kClose), request("/flushes.asp", kClose),
      request("/first.asp") + request("/second.asp", kClose),
      "GET /old.asp HTTP/1.0\r\nHost: h\r\n\r\n"};
  std::vector<std::unique_ptr<Visitor>> visitors;
  for (std::size_t i = 0; i < kOfAKind * asked.size(); ++i) {
    visitors.push_back(std::make_unique<Visitor>(port_));
    visitors.back()->send(asked[i % asked.size()]);
  }
  release();
  for (std::size_t i = 0; i < visitors.size(); i += asked.size()) {
    EXPECT_EQ(body_of(visitors[i]->read_all()), "");
    EXPECT_EQ(body_of(visitors[i + 1]->read_all()),
              "GET /large.asp [] []\n" + std::string(200'000, 'x'));
    EXPECT_EQ(body_of(visitors[i + 2]->read_all()), "6\r\nfirst \r\n5\r\nlast\n\r\n0\r\n\r\n");
    const std::string two = visitors[i + 3]->read_all();
    EXPECT_LT(two.find("GET /first.asp"), two.find("GET /second.asp"));
    EXPECT_TRUE(two.ends_with("GET /second.asp [] []\n")) << two;
    EXPECT_EQ(body_of(visitors[i + 4]->read_all()), "GET /old.asp [] []\n");
  }
}

TEST_F(QueuedPages, VisitorsWhoLeftHoldUpNobody) {
  start();
  hold_all_threads();
  std::vector<std::unique_ptr<Visitor>> visitors;
  for (std::size_t i = 0; i < kVisitors; ++i) {
    visitors.push_back(std::make_unique<Visitor>(port_));
    visitors.back()->send(request("/page.asp", kClose));
  }
  for (std::size_t i = 0; i < kVisitors; i += 2) visitors[i].reset();
  release();
  for (std::size_t i = 1; i < kVisitors; i += 2) {
    EXPECT_EQ(body_of(visitors[i]->read_all()), "GET /page.asp [] []\n");
  }
}

TEST_F(QueuedPages, AStopLosesNoAnswer) {
  start();
  hold_all_threads();
  std::vector<std::unique_ptr<Visitor>> visitors;
  for (std::size_t i = 0; i < kVisitors; ++i) {
    visitors.push_back(std::make_unique<Visitor>(port_));
    visitors.back()->send(request("/page.asp"));
  }
  // All of them have come: this one, sent last, is answered.
  EXPECT_EQ(body_of(answer_to(request("/hello.txt", kClose))), "hello");
  front_->stop();
  release();
  for (const auto& visitor : visitors) {
    EXPECT_EQ(body_of(visitor->read_all()), "GET /page.asp [] []\n");
  }
}

}  // namespace
}  // namespace rk::http
