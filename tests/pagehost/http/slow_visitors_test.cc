// Visitors who read slowly, not at all, or go away: what they hold, and for how long.
#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <mutex>
#include <vector>

#include "pagehost/http/front.h"
#include "platform/page.h"
#include "tests/pagehost/http/front_fixture.h"

namespace rk::http {
namespace {

// Far beyond what sockets of this machine hold for a visitor that does not read.
constexpr std::size_t kTooMuch = std::size_t{16} << 20;

pagehost::PageAnswer flushed(pagehost::AnswerSink* sink, std::size_t bytes, std::string rest) {
  pagehost::PageAnswer answer;
  sink->begin(answer);
  sink->write(std::string(bytes, 'x'));
  answer.streamed = true;
  answer.body = std::move(rest);
  return answer;
}

TEST_F(FrontTest, APageThatFlushesToOneWhoDoesNotReadEndsWithItsTime) {
  std::promise<bool> ended;
  std::atomic<int> looks{0};
  pages_.answer = [&](const pagehost::PageRequest& request, pagehost::AnswerSink* sink) {
    if (request.path != "/slow.asp") return pagehost::PageAnswer();
    // As a page's time does, here after a few looks.
    sink->wait_while([&] {
      if (++looks > 3) throw platform::PageEnd{platform::PageEnd::Reason::TimedOut};
    });
    try {
      pagehost::PageAnswer answer = flushed(sink, kTooMuch, "rest");
      ended.set_value(false);
      return answer;
    } catch (const platform::PageEnd&) {
      ended.set_value(true);
    }
    pagehost::PageAnswer answer;
    answer.streamed = true;
    answer.body = "timed out";
    return answer;
  };
  start();
  Visitor slow(port_);
  slow.send(request("/slow.asp", kClose));
  EXPECT_TRUE(ended.get_future().get());
  const std::string all = slow.read_all();
  EXPECT_TRUE(all.ends_with("9\r\ntimed out\r\n0\r\n\r\n")) << "what was begun ends well";
}

TEST_F(FrontTest, TheRestOfAPageThatIsOverWaitsWithoutItsThread) {
  options_.pool.max_threads = 1;
  options_.pool.eager_threads = 1;
  std::atomic<int> answered{0};
  pages_.answer = [&](const pagehost::PageRequest& request, pagehost::AnswerSink* sink) {
    ++answered;
    if (request.path == "/slow.asp") return flushed(sink, 1, std::string(kTooMuch, 'y'));
    pagehost::PageAnswer answer;
    answer.body = "quick";
    return answer;
  };
  start();
  std::vector<std::unique_ptr<Visitor>> slow;
  for (int i = 0; i < 3; ++i) {
    slow.push_back(std::make_unique<Visitor>(port_));
    slow.back()->send(request("/slow.asp", kClose));
  }
  Visitor quick(port_);
  quick.send(request("/a.asp", kClose));
  EXPECT_EQ(body_of(quick.read_all()), "quick");
  EXPECT_EQ(answered.load(), 4);
  for (const auto& visitor : slow) {
    const std::string all = visitor->read_all();
    EXPECT_GT(all.size(), kTooMuch);
    EXPECT_TRUE(all.ends_with("y\r\n0\r\n\r\n"));
  }
}

TEST_F(FrontTest, WhoTakesNothingForTheSendTimeIsGivenUp) {
  options_.send_time = std::chrono::milliseconds(300);
  std::promise<bool> connected;
  pages_.answer = [&](const pagehost::PageRequest&, pagehost::AnswerSink* sink) {
    pagehost::PageAnswer answer = flushed(sink, kTooMuch, "");
    connected.set_value(sink->connected());
    return answer;
  };
  start();
  Visitor slow(port_);
  slow.send(request("/slow.asp", kClose));
  EXPECT_FALSE(connected.get_future().get());
}

TEST_F(FrontTest, APageSeesThatItsVisitorWentAway) {
  std::promise<void> started;
  std::promise<bool> before;
  std::promise<void> left;
  std::promise<bool> after;
  pages_.answer = [&](const pagehost::PageRequest&, pagehost::AnswerSink* sink) {
    before.set_value(sink->connected());
    left.get_future().wait();
    while (sink->connected()) std::this_thread::yield();
    after.set_value(sink->connected());
    return pagehost::PageAnswer();
  };
  start();
  {
    Visitor visitor(port_);
    visitor.send(request("/a.asp"));
    EXPECT_TRUE(before.get_future().get());
  }
  left.set_value();
  EXPECT_FALSE(after.get_future().get());
}

TEST_F(FrontTest, AVisitorWhoWentAwayFreesHisPlaceInTheQueue) {
  options_.pool.max_threads = 1;
  options_.pool.eager_threads = 1;
  options_.pool.max_waiting = 2;
  std::promise<void> running;
  std::promise<void> gate;
  std::atomic<int> left_out{0};
  std::mutex mutex;
  std::vector<std::function<bool()>> wanted;
  const auto one_is_wanted = [&] {
    const std::lock_guard lock(mutex);
    return std::any_of(wanted.begin(), wanted.end(), [](const auto& still) { return still(); });
  };
  pages_.before_turn = [&](const pagehost::PageRequest& request,
                           const std::function<bool()>& still_wanted) {
    const std::lock_guard lock(mutex);
    if (request.path == "/leaves.asp") wanted.push_back(still_wanted);
  };
  pages_.answer = [&](const pagehost::PageRequest& request, pagehost::AnswerSink*) {
    pagehost::PageAnswer answer;
    answer.body = "done";
    if (request.path == "/leaves.asp") ++left_out;
    if (request.path == "/blocks.asp") {
      running.set_value();
      gate.get_future().wait();
    }
    return answer;
  };
  start();
  Visitor blocking(port_);
  blocking.send(request("/blocks.asp", kClose));
  running.get_future().wait();
  for (int i = 0; i < 2; ++i) {
    Visitor leaves(port_);
    leaves.send(request("/leaves.asp"));
    // A file's answer comes by the same thread, behind the page's place in the queue.
    Visitor other(port_);
    other.send(request("/hello.txt", kClose));
    EXPECT_EQ(body_of(other.read_all()), "hello");
  }
  // Both places are taken until their visitors are missed.
  while (one_is_wanted()) std::this_thread::yield();
  Visitor stays(port_);
  stays.send(request("/a.asp", kClose));
  Visitor behind(port_);
  behind.send(request("/hello.txt", kClose));
  EXPECT_EQ(body_of(behind.read_all()), "hello");
  gate.set_value();
  EXPECT_EQ(body_of(stays.read_all()), "done");
  EXPECT_EQ(body_of(blocking.read_all()), "done");
  EXPECT_EQ(left_out.load(), 0);
  wanted.clear();
}

}  // namespace
}  // namespace rk::http
