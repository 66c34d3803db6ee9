#include "adapters/posix/kept_memory.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>
#include <vector>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define RK_OTHER_ALLOCATOR
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define RK_OTHER_ALLOCATOR
#endif

namespace rk::posix {
namespace {

// Pages of memory that the system handed out while texts of a page of 1.5 MiB came and went.
long fresh_pages() {
  constexpr std::size_t kTexts = 3;
  constexpr std::size_t kText = std::size_t{512} << 10;
  rusage before{};
  getrusage(RUSAGE_SELF, &before);
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < kTexts; ++i) texts.emplace_back(kText, 'x');
  texts.clear();
  rusage after{};
  getrusage(RUSAGE_SELF, &after);
  return after.ru_minflt - before.ru_minflt;
}

TEST(KeptMemory, ThePagesAfterTheFirstAreBuiltInMemoryThatWasUsed) {
#ifdef RK_OTHER_ALLOCATOR
  GTEST_SKIP() << "another allocator";
#endif
  keep_freed_memory();
  fresh_pages();
  constexpr int kPages = 20;
  long fresh = 0;
  for (int i = 0; i < kPages; ++i) fresh += fresh_pages();
  // A page that gets its memory fresh takes 384 of them.
  EXPECT_LT(fresh, kPages * 20);
}

}  // namespace
}  // namespace rk::posix
