// A site in memory with a page host on it, for tests of pages: put files, run requests, read what
// came back and what was logged.
#ifndef RK_TESTS_SUPPORT_PAGE_SITE_H_
#define RK_TESTS_SUPPORT_PAGE_SITE_H_

#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pagehost/pages/page_host.h"
#include "platform/regexp.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/memory_files.h"
#include "tests/support/recording_database.h"
#include "tests/support/toy_code_pages.h"

namespace rk::tests {

// Lines of the log, "E ..." for errors and "N ..." for notes.
class KeptLog final : public pagehost::Log {
 public:
  void error(std::string_view event) override { add("E " + std::string(event)); }
  void note(std::string_view event) override { add("N " + std::string(event)); }
  std::vector<std::string> lines() const {
    const std::lock_guard held(mutex_);
    return lines_;
  }

 private:
  void add(std::string line) {
    const std::lock_guard held(mutex_);
    lines_.push_back(std::move(line));
  }
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

// Other bytes each time, the same in every run.
class CountingRandom final : public platform::Random {
 public:
  double fraction() override { return 0.5; }
  void secret_bytes(std::span<std::uint8_t> out) override {
    const std::lock_guard held(mutex_);
    ++asked_;
    for (std::size_t i = 0; i < out.size(); ++i) {
      out[i] = static_cast<std::uint8_t>(asked_ >> (i % 4 * 8));
    }
  }

 private:
  std::mutex mutex_;
  std::uint32_t asked_ = 0;
};

class PageSite {
 public:
  PageSite() { options.site_root = "/site"; }

  PageSite& file(const std::string& path, std::string text) {
    files.put("/site" + path, std::move(text));
    return *this;
  }
  pagehost::PageHost& host() {
    if (!host_) {
      pagehost::PageHostParts parts;
      parts.files = &files;
      parts.code_pages = real_code_pages == nullptr ? &code_pages : real_code_pages;
      parts.clock = &clock;
      parts.random = &random;
      parts.regexps = regexps;
      parts.programs = &programs;
      parts.log = &log;
      parts.make_database = [this](std::shared_ptr<const pagehost::PageWatch>) { return database; };
      host_ = std::make_unique<pagehost::PageHost>(options, parts);
      host_->start();
    }
    return *host_;
  }
  // The path may bring its query string.
  static pagehost::PageRequest request(std::string_view address) {
    pagehost::PageRequest out;
    const std::size_t mark = address.find('?');
    out.path = address.substr(0, mark);
    if (mark != std::string_view::npos) out.query = address.substr(mark + 1);
    out.headers = {{"Host", "shop.example:8080"}};
    return out;
  }
  pagehost::PageAnswer run(std::string_view address) { return host().run(request(address)); }
  std::string body(std::string_view address) { return run(address).body; }
  // A page of this script alone.
  std::string written(std::string_view script) {
    file("/written.asp", "<%" + std::string(script) + "%>");
    return body("/written.asp");
  }
  void stop() { host_.reset(); }

  MemoryFiles files;
  ToyCodePages code_pages;
  const platform::CodePages* real_code_pages = nullptr;  // in place of the toy ones, where given
  FixedClock clock;
  CountingRandom random;
  KeptLog log;
  const platform::Regexps* regexps = nullptr;  // none where not given
  pagehost::Programs programs;
  pagehost::PageHostOptions options;
  std::shared_ptr<RecordingDatabase> database = std::make_shared<RecordingDatabase>();

 private:
  std::unique_ptr<pagehost::PageHost> host_;
};

// All values of a header, "|" behind each.
inline std::string header_of(const pagehost::PageAnswer& answer, std::string_view name) {
  std::string out;
  for (const auto& [key, value] : answer.headers) {
    if (key == name) out += value + "|";
  }
  return out;
}

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_PAGE_SITE_H_
