// A front for tests: pages that a function answers, files in memory, visitors with sockets of
// their own. The front runs on a thread of the fixture.
#ifndef RK_TESTS_PAGEHOST_HTTP_FRONT_FIXTURE_H_
#define RK_TESTS_PAGEHOST_HTTP_FRONT_FIXTURE_H_

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "pagehost/http/front.h"
#include "tests/pagehost/http/visitor.h"
#include "tests/support/memory_files.h"
#include "tests/support/toy_code_pages.h"

namespace rk::http {

// Pages that tests script: a function answers each.
class PlayedPages final : public Pages {
 public:
  using Answer =
      std::function<pagehost::PageAnswer(const pagehost::PageRequest&, pagehost::AnswerSink*)>;
  Answer answer;
  bool admits = true;
  std::function<void()> swept;  // called on a page's thread; may be empty
  // Told of each request on the event loop's thread, which it must not hold up; may be empty.
  std::function<void(const pagehost::PageRequest&, const std::function<bool()>& wanted)>
      before_turn;
  std::atomic<bool> ended{false};

  bool admit(const pagehost::PageRequest& request, std::function<void(pagehost::SessionTurn)> ready,
             std::function<bool()> still_wanted) override {
    if (before_turn) before_turn(request, still_wanted);
    if (admits) ready(pagehost::SessionTurn());
    return admits;
  }
  pagehost::PageAnswer run(const pagehost::PageRequest& request, pagehost::SessionTurn,
                           pagehost::AnswerSink* sink) override {
    return answer(request, sink);
  }
  pagehost::PageAnswer answer_not_found(const pagehost::PageRequest& request, pagehost::SessionTurn,
                                        pagehost::AnswerSink*) override {
    pagehost::PageAnswer missing;
    missing.status = 404;
    missing.reason = "Not Found";
    missing.body = "no " + request.path + " (" + request.missed_address + ")";
    return missing;
  }
  void end_running_pages() override { ended.store(true); }
  void sweep_sessions() override {
    if (swept) swept();
  }
  int code_page() const override { return platform::kUtf8; }
};

class MemorySiteFile final : public SiteFile {
 public:
  MemorySiteFile(std::string bytes, platform::FileStamp stamp)
      : bytes_(std::move(bytes)), stamp_(stamp) {}
  const platform::FileStamp& stamp() const override { return stamp_; }
  std::size_t read_at(std::uint64_t offset, char* out, std::size_t count) override {
    if (offset >= bytes_.size()) return 0;
    return bytes_.copy(out, count, static_cast<std::size_t>(offset));
  }

 private:
  std::string bytes_;
  platform::FileStamp stamp_;
};

class MemorySiteFiles final : public SiteFiles {
 public:
  explicit MemorySiteFiles(const tests::MemoryFiles& files) : files_(files) {}
  std::unique_ptr<SiteFile> open(std::string_view path) const override {
    if (!files_.find(path)) return nullptr;
    std::string bytes = files_.read(path);
    const std::uint64_t size = bytes.size();
    return std::make_unique<MemorySiteFile>(std::move(bytes),
                                            platform::FileStamp{784111777'000000000, size, 1});
  }

 private:
  const tests::MemoryFiles& files_;
};

class SilentLog final : public pagehost::Log {
 public:
  void error(std::string_view) override { ++errors; }
  void note(std::string_view) override {}
  std::atomic<int> errors{0};
};

class FrontTest : public ::testing::Test {
 protected:
  FrontTest() {
    options_.rules.site_root = "/site";
    options_.rules.hidden_folders = {"/data"};
    options_.rules.is_page = [](std::string_view path) { return path.ends_with(".asp"); };
    options_.max_body_bytes = 1000;
    options_.stop_time = std::chrono::milliseconds(10000);
    options_.pool.max_threads = 4;
    options_.pool.max_waiting = 4;
    options_.pool.stack_bytes = std::size_t{256} << 10;
    files_.put("/site/hello.txt", "hello");
    files_.put("/site/shop/index.asp", "");
    files_.put("/site/data/secret.txt", "secret");
    files_.put("/site/renamed.png", std::string("SQLite format 3\0 and more", 25));
    files_.put("/site/large.bin", std::string(300'000, 'x') + "end");
    pages_.answer = [](const pagehost::PageRequest& request, pagehost::AnswerSink*) {
      pagehost::PageAnswer answer;
      answer.headers.emplace_back("Content-Type", "text/plain");
      answer.body =
          request.method + " " + request.path + " [" + request.query + "] [" + request.body + "]\n";
      return answer;
    };
  }
  ~FrontTest() override { stop(); }

  void start() {
    FrontParts parts;
    parts.pages = &pages_;
    parts.files = &files_;
    parts.site_files = &site_files_;
    parts.code_pages = &code_pages_;
    parts.log = &log_;
    front_ = std::make_unique<Front>(options_, parts);
    port_ = front_->open();
    thread_ = std::thread([this] { front_->run(); });
  }
  void stop() {
    if (!front_) return;
    front_->stop();
    thread_.join();
    front_.reset();
  }

  static std::string request(const std::string& target, const std::string& more = "") {
    return "GET " + target + " HTTP/1.1\r\nHost: h\r\n" + more + "\r\n";
  }
  std::string answer_to(std::string_view bytes) {
    Visitor visitor(port_);
    visitor.send(bytes);
    visitor.finish_sending();
    return visitor.read_all();
  }
  int status_of(std::string_view bytes) {
    const std::string answer = answer_to(bytes);
    return answer.starts_with("HTTP/1.1 ") ? std::atoi(answer.c_str() + 9) : 0;
  }
  static std::string body_of(const std::string& answer) {
    return answer.substr(answer.find("\r\n\r\n") + 4);
  }

  FrontOptions options_;
  PlayedPages pages_;
  tests::MemoryFiles files_;
  MemorySiteFiles site_files_{files_};
  tests::ToyCodePages code_pages_;
  SilentLog log_;
  std::unique_ptr<Front> front_;
  std::uint16_t port_ = 0;
  std::thread thread_;
};

inline constexpr const char* kClose = "Connection: close\r\n";

}  // namespace rk::http

#endif  // RK_TESTS_PAGEHOST_HTTP_FRONT_FIXTURE_H_
