#include "pagehost/pages/page_cache.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/memory_files.h"
#include "tests/support/toy_code_pages.h"

namespace rk::pagehost {
namespace {

class SilentLog : public Log {
 public:
  void error(std::string_view) override {}
  void note(std::string_view) override {}
};

// Counts how often a path had to be looked for, other than for its stamp.
class SearchedFiles : public tests::MemoryFiles {
 public:
  std::optional<std::string> find(std::string_view path) const override {
    ++searches;
    return MemoryFiles::find(path);
  }
  std::optional<platform::FileStamp> stamp(std::string_view path) const override {
    const int before = searches;
    auto found = MemoryFiles::stamp(path);
    searches = before;
    return found;
  }
  mutable std::atomic<int> searches = 0;
};

class Cache : public ::testing::Test {
 protected:
  std::string text(std::string_view path) {
    const auto page = cache_.page(path);
    return page ? page->path : "none";
  }

  SearchedFiles files_;
  tests::ToyCodePages code_pages_;
  SilentLog log_;
  PageCache cache_{files_, PageReader(files_, code_pages_, "/site"), log_};
};

TEST_F(Cache, APageIsReadOnceUntilItChanges) {
  files_.put("/site/a.asp", "one");
  const auto first = cache_.page("/a.asp");
  EXPECT_EQ(cache_.page("/a.asp"), first);
  files_.put("/site/a.asp", "two");
  EXPECT_NE(cache_.page("/a.asp"), first);
}

TEST_F(Cache, AChangedIncludeIsAChangeOfThePage) {
  files_.put("/site/a.asp", "<!--#include file=\"b.inc\"-->");
  files_.put("/site/b.inc", "b");
  const auto first = cache_.page("/a.asp");
  files_.put("/site/b.inc", "c");
  EXPECT_NE(cache_.page("/a.asp"), first);
}

TEST_F(Cache, AnotherLetterCaseIsTheSamePage) {
  files_.put("/site/Shop/Index.asp", "x");
  EXPECT_EQ(cache_.page("/shop/INDEX.ASP"), cache_.page("/Shop/Index.asp"));
}

TEST_F(Cache, AFileOfTheExactLetterCaseTakesOverWhenItIsMade) {
  files_.put("/site/INDEX.asp", "x");
  const auto other = cache_.page("/index.asp");
  files_.put("/site/index.asp", "y");
  EXPECT_NE(cache_.page("/index.asp"), other);
}

TEST_F(Cache, APageThatWentIsGone) {
  files_.put("/site/a.asp", "x");
  EXPECT_EQ(text("/a.asp"), "/a.asp");
  files_.remove("/site/a.asp");
  EXPECT_EQ(text("/a.asp"), "none");
}

TEST_F(Cache, AKeptPageIsNotLookedForAgain) {
  files_.put("/site/a.asp", "x");
  cache_.page("/a.asp");
  files_.searches = 0;
  cache_.page("/a.asp");
  EXPECT_EQ(files_.searches, 0);
}

TEST_F(Cache, ManyRequestsOfANewPageReadItOnce) {
  constexpr std::size_t kThreads = 8;
  files_.put("/site/a.asp", "x");
  std::vector<std::shared_ptr<const CompiledPage>> pages(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] { pages[i] = cache_.page("/a.asp"); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const auto& page : pages) EXPECT_EQ(page, pages[0]);
  EXPECT_EQ(files_.reads().size(), 1u);
}

}  // namespace
}  // namespace rk::pagehost
