#include "pagehost/http/front.h"

#include <gtest/gtest.h>

#include <fstream>
#include <future>

#include "tests/pagehost/http/front_fixture.h"

namespace rk::http {
namespace {

TEST_F(FrontTest, APageAnswersWithItsLength) {
  start();
  const std::string answer = answer_to(request("/shop/index.asp?a=1", kClose));
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 200 OK\r\nDate: ")) << answer;
  EXPECT_NE(answer.find("\r\nContent-Length: 29\r\n"), std::string::npos) << answer;
  EXPECT_EQ(body_of(answer), "GET /shop/index.asp [a=1] []\n");
}

TEST_F(FrontTest, PipelinedRequestsAreAnsweredInOrder) {
  start();
  Visitor visitor(port_);
  std::string all;
  for (int i = 0; i < 200; ++i) {
    all += i % 2 == 0 ? request("/" + std::to_string(i) + ".asp") : request("/hello.txt");
  }
  visitor.send(all + request("/last.asp", kClose));
  const std::string answers = visitor.read_all();
  std::size_t at = 0;
  for (int i = 0; i < 200; ++i) {
    const std::string mark = i % 2 == 0 ? "GET /" + std::to_string(i) + ".asp" : "\r\n\r\nhello";
    at = answers.find(mark, at);
    ASSERT_NE(at, std::string::npos) << i;
  }
  EXPECT_NE(answers.find("GET /last.asp", at), std::string::npos);
}

TEST_F(FrontTest, ABodyReachesItsPageWholeAndHeadSendsNone) {
  start();
  EXPECT_EQ(body_of(answer_to("POST /a.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\n"
                              "Content-Length: 3\r\n\r\na=1")),
            "POST /a.asp [] [a=1]\n");
  EXPECT_EQ(body_of(answer_to("POST /a.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\n"
                              "Transfer-Encoding: chunked\r\n\r\n2\r\na=\r\n1\r\n1\r\n0\r\n\r\n")),
            "POST /a.asp [] [a=1]\n");
  const std::string head =
      answer_to("HEAD /a.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
  EXPECT_NE(head.find("Content-Length: 18"), std::string::npos) << head;
  EXPECT_EQ(body_of(head), "");
}

TEST_F(FrontTest, AVisitorThatAsksIsToldToSendItsBody) {
  start();
  Visitor visitor(port_);
  visitor.send(
      "POST /a.asp HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nConnection: close\r\n"
      "Content-Length: 3\r\n\r\n");
  EXPECT_EQ(visitor.read_until("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
  visitor.send("a=1");
  EXPECT_EQ(body_of(visitor.read_all()), "POST /a.asp [] [a=1]\n");
}

TEST_F(FrontTest, RefusalsHaveTheirStatusAndCloseTheConnection) {
  start();
  struct Row {
    std::string bytes;
    int status;
  };
  const Row rows[] = {
      {"GET / HTTP/1.1\r\n\r\n", 400},
      {request("/a%2fb"), 400},
      {request("/../a"), 400},
      {request("/%zz"), 400},
      {request("/a%00.asp"), 400},
      {"GET /" + std::string(9000, 'a') + " HTTP/1.1\r\nHost: h\r\n\r\n", 414},
      {request("/", "X: " + std::string(40000, 'a') + "\r\n"), 431},
      {"POST /a.asp HTTP/1.1\r\nHost: h\r\nContent-Length: 1001\r\n\r\n" + std::string(1001, 'a'),
       413},
      {"POST /a.asp HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: gzip\r\n\r\n", 501},
      {"GET / HTTP/3.0\r\nHost: h\r\n\r\n", 505},
  };
  for (const Row& row : rows) {
    Visitor visitor(port_);
    visitor.send(row.bytes);
    const std::string answer = visitor.read_all();
    EXPECT_EQ(std::atoi(answer.c_str() + 9), row.status) << row.bytes.substr(0, 80);
    EXPECT_NE(answer.find("Connection: close"), std::string::npos) << answer;
  }
}

TEST_F(FrontTest, AFormPostedToAFileIsNotAllowedAndToNothingIsForThePageOfFriendlyAddresses) {
  start();
  const auto posted = [this](const std::string& target) {
    return answer_to("POST " + target +
                     " HTTP/1.1\r\nHost: h\r\nConnection: close\r\nContent-Length: 3\r\n\r\na=1");
  };
  EXPECT_TRUE(posted("/hello.txt").starts_with("HTTP/1.1 405 "));
  const std::string missed = posted("/item/%e5?x=%D6");
  EXPECT_TRUE(missed.starts_with("HTTP/1.1 404 ")) << missed;
  EXPECT_TRUE(missed.ends_with(" (/item/%e5?x=%D6)")) << missed;
  EXPECT_TRUE(posted("/item.html").starts_with("HTTP/1.1 404 "));
}

TEST_F(FrontTest, OtherMethodsAreToldWhatIsAllowed) {
  start();
  for (const char* method : {"PUT", "DELETE", "TRACE", "OPTIONS", "CONNECT"}) {
    const std::string answer =
        answer_to(std::string(method) + " /a.asp HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 405")) << method << answer;
    EXPECT_NE(answer.find("Allow: GET, HEAD, POST"), std::string::npos);
  }
}

TEST_F(FrontTest, FilesAreServedAsTheyAre) {
  start();
  const std::string answer = answer_to(request("/hello.txt", kClose));
  EXPECT_NE(answer.find("Content-Type: text/plain\r\n"), std::string::npos);
  EXPECT_NE(answer.find("Last-Modified: Sun, 06 Nov 1994 08:49:37 GMT\r\n"), std::string::npos);
  EXPECT_EQ(body_of(answer), "hello");
  EXPECT_EQ(body_of(answer_to(request("/hello.txt", "Connection: close\r\nRange: bytes=1-2\r\n"))),
            "el");
  EXPECT_EQ(status_of(request("/hello.txt",
                              "Connection: close\r\nIf-Modified-Since: Sun, 06 Nov 1994 08:49:37 "
                              "GMT\r\n")),
            304);
  const std::string large = body_of(answer_to(request("/large.bin", kClose)));
  EXPECT_EQ(large.size(), 300'003u);
  EXPECT_TRUE(large.ends_with("xend"));
}

TEST_F(FrontTest, WhatIsHiddenOrMissingIsNotFound) {
  start();
  for (const char* target : {"/none.png", "/data/secret.txt", "/DATA/secret.txt", "/renamed.png",
                             "/global.asa", "/.git", "/%2e./x"}) {
    const int status = status_of(request(target, kClose));
    EXPECT_TRUE(status == 404 || status == 400) << target << status;
  }
  EXPECT_EQ(body_of(answer_to(request("/renamed.png", kClose))), "no /renamed.png (/renamed.png)");
}

TEST_F(FrontTest, AFolderIsRedirectedWithItsQueryString) {
  start();
  const std::string answer = answer_to(request("/shop?a=1&b", kClose));
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 301 ")) << answer;
  EXPECT_NE(answer.find("\r\nLocation: /shop/?a=1&b\r\n"), std::string::npos) << answer;
  EXPECT_EQ(body_of(answer_to(request("/shop/?a", kClose))), "GET /shop/index.asp [a] []\n");
}

TEST_F(FrontTest, AStreamedAnswerComesInChunksAsItIsWritten) {
  std::promise<void> gate;
  pages_.answer = [&](const pagehost::PageRequest&, pagehost::AnswerSink* sink) {
    pagehost::PageAnswer answer;
    sink->begin(answer);
    sink->write("first");
    gate.get_future().wait();
    sink->write("second");
    answer.streamed = true;
    answer.body = "third";
    return answer;
  };
  start();
  Visitor visitor(port_);
  visitor.send(request("/a.asp", kClose));
  const std::string first = visitor.read_until("5\r\nfirst\r\n");
  EXPECT_NE(first.find("Transfer-Encoding: chunked\r\n"), std::string::npos) << first;
  gate.set_value();
  EXPECT_EQ(visitor.read_all(), "6\r\nsecond\r\n5\r\nthird\r\n0\r\n\r\n");
}

TEST_F(FrontTest, AnOldVisitorGetsAStreamUntilTheConnectionEnds) {
  pages_.answer = [&](const pagehost::PageRequest&, pagehost::AnswerSink* sink) {
    pagehost::PageAnswer answer;
    sink->begin(answer);
    sink->write("one ");
    answer.streamed = true;
    answer.body = "two";
    return answer;
  };
  start();
  const std::string answer =
      answer_to("GET /a.asp HTTP/1.0\r\nHost: h\r\nConnection: keep-alive\r\n\r\n");
  EXPECT_EQ(answer.find("chunked"), std::string::npos) << answer;
  EXPECT_EQ(body_of(answer), "one two");
}

TEST_F(FrontTest, APagesOwnLengthCountsWhereItFlushes) {
  pages_.answer = [&](const pagehost::PageRequest& request, pagehost::AnswerSink* sink) {
    pagehost::PageAnswer answer;
    answer.headers.emplace_back("Content-Length", request.query);
    sink->begin(answer);
    sink->write("four");
    answer.streamed = true;
    answer.body = "more";
    return answer;
  };
  start();
  const auto body_for = [&](const std::string& length) {
    Visitor visitor(port_);
    visitor.send(request("/a.asp?" + length) + request("/hello.txt", kClose));
    std::string answer = visitor.read_all();
    EXPECT_NE(answer.find("Content-Length: " + length + "\r\n"), std::string::npos) << answer;
    EXPECT_EQ(answer.find("chunked"), std::string::npos) << answer;
    return body_of(answer).substr(0, 12);
  };
  EXPECT_EQ(body_for("8"), "fourmoreHTTP") << "the next answer follows";
  EXPECT_EQ(body_for("6"), "fourmoHTTP/1") << "no byte more than was promised";
  EXPECT_EQ(body_for("9"), "fourmore") << "the end of the connection tells that one is missing";
  const std::string no_number = answer_to(request("/a.asp?many", kClose));
  EXPECT_NE(no_number.find("Transfer-Encoding: chunked\r\n"), std::string::npos) << no_number;
  EXPECT_EQ(no_number.find("many"), std::string::npos) << no_number;
}

TEST_F(FrontTest, APageThatBreaksInTheHostIsA500AndLogged) {
  pages_.answer = [](const pagehost::PageRequest&, pagehost::AnswerSink*) -> pagehost::PageAnswer {
    throw std::runtime_error("secret inside");
  };
  start();
  const std::string answer = answer_to(request("/a.asp", kClose));
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 500 ")) << answer;
  EXPECT_EQ(answer.find("secret"), std::string::npos);
  EXPECT_EQ(log_.errors.load(), 1);
}

TEST_F(FrontTest, AFullPoolAnswers503AndRecovers) {
  std::promise<void> gate;
  const std::shared_future<void> open = gate.get_future().share();
  pages_.answer = [&](const pagehost::PageRequest& request, pagehost::AnswerSink*) {
    if (request.path == "/wait.asp") open.wait();
    pagehost::PageAnswer answer;
    answer.body = "done";
    return answer;
  };
  start();
  // Four run and four wait, in whatever order they come; the ninth is one too many.
  std::vector<std::unique_ptr<Visitor>> blocked;
  for (int i = 0; i < 9; ++i) {
    blocked.push_back(std::make_unique<Visitor>(port_));
    blocked.back()->send(request("/wait.asp", kClose));
  }
  int refused = 0;
  int answered = 0;
  std::vector<std::thread> readers;
  std::mutex mutex;
  std::promise<void> one_refused;
  for (const auto& visitor : blocked) {
    readers.emplace_back([&, who = visitor.get()] {
      const std::string answer = who->read_all();
      const std::lock_guard lock(mutex);
      if (answer.starts_with("HTTP/1.1 503 ") &&
          answer.find("Retry-After: ") != std::string::npos && ++refused == 1) {
        one_refused.set_value();
      }
      if (answer.starts_with("HTTP/1.1 200 ")) ++answered;
    });
  }
  one_refused.get_future().wait();
  gate.set_value();
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(refused, 1);
  EXPECT_EQ(answered, 8);
  EXPECT_EQ(body_of(answer_to(request("/a.asp", kClose))), "done");
}

TEST_F(FrontTest, SessionsAreSweptAgainAndAgainOnAPagesThread) {
  options_.session_sweep = std::chrono::milliseconds(1);
  std::atomic<int> times{0};
  std::promise<void> often;
  pages_.swept = [&] {
    if (++times == 3) often.set_value();
  };
  start();
  often.get_future().wait();
  stop();
  EXPECT_GE(times.load(), 3);
}

TEST_F(FrontTest, ASweepThatFailsIsLoggedAndTheNextOneComes) {
  options_.session_sweep = std::chrono::milliseconds(1);
  std::atomic<int> times{0};
  std::promise<void> again;
  pages_.swept = [&] {
    if (++times == 2) again.set_value();
    if (times < 2) throw std::runtime_error("an event that broke");
  };
  start();
  again.get_future().wait();
  EXPECT_GE(log_.errors.load(), 1);
}

TEST_F(FrontTest, TooManyForASessionIs503) {
  pages_.admits = false;
  start();
  EXPECT_EQ(status_of(request("/a.asp", kClose)), 503);
}

TEST_F(FrontTest, AHeaderOrBodyThatDoesNotComeInTimeIs408) {
  options_.header_time = std::chrono::milliseconds(50);
  options_.body_time = std::chrono::milliseconds(50);
  start();
  Visitor header(port_);
  header.send("GET / HTTP/1.1\r\n");
  EXPECT_TRUE(header.read_all().starts_with("HTTP/1.1 408 "));
  Visitor body(port_);
  body.send("POST /a.asp HTTP/1.1\r\nHost: h\r\nContent-Length: 3\r\n\r\na");
  EXPECT_TRUE(body.read_all().starts_with("HTTP/1.1 408 "));
  Visitor silent(port_);
  EXPECT_EQ(silent.read_all(), "");
}

TEST_F(FrontTest, AConnectionBetweenRequestsIsClosedAfterItsTime) {
  options_.idle_time = std::chrono::milliseconds(50);
  start();
  Visitor visitor(port_);
  visitor.send(request("/hello.txt"));
  EXPECT_EQ(body_of(visitor.read_all()), "hello");
}

TEST_F(FrontTest, StoppingLetsARunningPageFinish) {
  std::promise<void> started;
  std::promise<void> gate;
  pages_.answer = [&](const pagehost::PageRequest&, pagehost::AnswerSink*) {
    started.set_value();
    gate.get_future().wait();
    pagehost::PageAnswer answer;
    answer.body = "finished";
    return answer;
  };
  start();
  Visitor visitor(port_);
  visitor.send(request("/a.asp"));
  started.get_future().wait();
  front_->stop();
  // The port is closed as soon as the stop has begun.
  while (Visitor(port_).connected()) std::this_thread::yield();
  gate.set_value();
  const std::string answer = visitor.read_all();
  EXPECT_EQ(body_of(answer), "finished");
  thread_.join();
  front_.reset();
  EXPECT_FALSE(pages_.ended.load());
}

// One request after another on one connection, until an answer says that it is the last.
// `under_way` is kept once many were answered.
int lost_until_told_to_close(std::uint16_t port, std::atomic<int>& answered,
                             std::promise<void>& under_way) {
  Visitor visitor(port);
  while (true) {
    visitor.send("GET /a.asp HTTP/1.1\r\nHost: h\r\n\r\n");
    const std::string answer = visitor.read_until("[] []\n");
    if (answer.empty()) return 1;
    if (++answered == 500) under_way.set_value();
    if (answer.find("Connection: close") != std::string::npos) return 0;
  }
}

TEST_F(FrontTest, StoppingUnderLoadLosesNoAnswer) {
  options_.pool.max_waiting = 64;
  start();
  std::atomic<int> answered{0};
  std::atomic<int> lost{0};
  std::promise<void> under_way;
  std::vector<std::thread> visitors;
  for (int i = 0; i < 8; ++i) {
    visitors.emplace_back([&] { lost += lost_until_told_to_close(port_, answered, under_way); });
  }
  under_way.get_future().wait();
  stop();
  for (std::thread& visitor : visitors) visitor.join();
  EXPECT_EQ(lost.load(), 0);
}

TEST_F(FrontTest, APageThatRunsTooLongAfterTheStopIsEndedWithAnAnswer) {
  options_.stop_time = std::chrono::milliseconds(20);
  std::promise<void> started;
  pages_.answer = [&](const pagehost::PageRequest&, pagehost::AnswerSink*) {
    started.set_value();
    while (!pages_.ended.load()) std::this_thread::yield();
    pagehost::PageAnswer answer;
    answer.status = 500;
    answer.body = "timed out";
    return answer;
  };
  start();
  Visitor visitor(port_);
  visitor.send(request("/a.asp"));
  started.get_future().wait();
  stop();
  EXPECT_EQ(body_of(visitor.read_all()), "timed out");
}

TEST_F(FrontTest, ATakenPortIsAClearError) {
  start();
  FrontOptions second = options_;
  second.port = port_;
  Front other(second, {&pages_, &files_, &site_files_, &code_pages_, &log_});
  try {
    other.open();
    FAIL() << "it opened";
  } catch (const FrontError& error) {
    EXPECT_EQ(error.what(),
              "cannot serve at 127.0.0.1:" + std::to_string(port_) + ": Address already in use");
  }
}

TEST_F(FrontTest, TheAccessLogTellsOfEveryAnswer) {
  std::string folder = ::testing::TempDir() + "rk-front-XXXXXX";
  ASSERT_NE(::mkdtemp(folder.data()), nullptr);
  options_.access_log = folder + "/access.log";
  start();
  answer_to(request("/hello.txt", "Connection: close\r\nUser-Agent: tester\r\n"));
  answer_to("BAD\r\n\r\n");
  pages_.answer = [](const pagehost::PageRequest&, pagehost::AnswerSink*) {
    pagehost::PageAnswer answer;
    answer.log_note = "sold \"7\"";
    return answer;
  };
  answer_to(request("/a.asp") + request("/hello.txt", kClose));
  stop();
  std::ifstream in(options_.access_log);
  std::string first;
  std::string second;
  std::string third;
  std::string fourth;
  for (std::string* line : {&first, &second, &third, &fourth}) std::getline(in, *line);
  EXPECT_NE(first.find("\"GET /hello.txt HTTP/1.1\" 200 5 \"-\" \"tester\""), std::string::npos)
      << first;
  EXPECT_NE(second.find("\"BAD\" 400 "), std::string::npos) << second;
  EXPECT_TRUE(third.ends_with(" 200 0 \"-\" \"-\" \"sold \\x227\\x22\"")) << third;
  EXPECT_TRUE(fourth.ends_with("\"GET /hello.txt HTTP/1.1\" 200 5 \"-\" \"-\"")) << fourth;
  std::remove(options_.access_log.c_str());
  std::remove(folder.c_str());
}

TEST_F(FrontTest, APageAndTheLogKnowTheVisitorBehindANamedProxyOnly) {
  const std::string told =
      "X-Forwarded-For: 192.0.2.7\r\nX-Forwarded-Proto: https\r\nX-Forwarded-Host: "
      "shop.example\r\n";
  pages_.answer = [](const pagehost::PageRequest& request, pagehost::AnswerSink*) {
    pagehost::PageAnswer answer;
    answer.body = request.remote_address + (request.secure ? " secure " : " plain ") +
                  std::string(request.header("host"));
    return answer;
  };
  std::string folder = ::testing::TempDir() + "rk-front-XXXXXX";
  ASSERT_NE(::mkdtemp(folder.data()), nullptr);
  options_.access_log = folder + "/access.log";
  start();
  EXPECT_EQ(body_of(answer_to(request("/a.asp", kClose + told))), "127.0.0.1 plain h");
  stop();
  options_.proxies = {*parse_network("127.0.0.1")};
  start();
  EXPECT_EQ(body_of(answer_to(request("/a.asp", kClose + told))), "192.0.2.7 secure shop.example");
  stop();
  std::ifstream in(options_.access_log);
  std::string first;
  std::string second;
  std::getline(in, first);
  std::getline(in, second);
  EXPECT_TRUE(first.starts_with("127.0.0.1 - - [")) << first;
  EXPECT_TRUE(second.starts_with("192.0.2.7 - - [")) << second;
  std::remove(options_.access_log.c_str());
  std::remove(folder.c_str());
}

TEST_F(FrontTest, APageKnowsWhatStandsBehindItsName) {
  pages_.answer = [](const pagehost::PageRequest& request, pagehost::AnswerSink*) {
    pagehost::PageAnswer answer;
    answer.body = request.path + " " + request.path_info;
    return answer;
  };
  start();
  const std::string answers = answer_to(request("/shop/index.asp/7") + request("/shop/", kClose));
  EXPECT_NE(answers.find("\r\n\r\n/shop/index.asp /shop/index.asp/7HTTP"), std::string::npos);
  EXPECT_TRUE(answers.ends_with("\r\n\r\n/shop/index.asp ")) << "nothing is left of the one before";
}

}  // namespace
}  // namespace rk::http
