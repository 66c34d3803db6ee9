// What a walk forward keeps in memory. All that this program takes by new is counted.
#include "adapters/sqlite/forward_recordset.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>

#include "adapters/sqlite/engine.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fixed_clock.h"
#include "value/conversions.h"

namespace {

std::atomic<std::int64_t> live{0};
std::atomic<std::int64_t> most{0};

void count(std::int64_t bytes) {
  const std::int64_t now = live += bytes;
  if (now > most) most = now;
}

}  // namespace

void* operator new(std::size_t size) {
  void* made = std::malloc(size);
  if (made == nullptr) throw std::bad_alloc();
  count(static_cast<std::int64_t>(malloc_usable_size(made)));
  return made;
}

void operator delete(void* given) noexcept {
  if (given == nullptr) return;
  count(-static_cast<std::int64_t>(malloc_usable_size(given)));
  std::free(given);
}

void operator delete(void* given, std::size_t) noexcept {
  operator delete(given);
}

namespace rk::sqlite {
namespace {

using platform::CursorType;
using platform::LockType;

class ForwardWalk : public testing::Test {
 protected:
  ForwardWalk() : page_(engine_.page()) {
    connection_ = page_->connection();
    connection_->open("Data Source=shop.db;Mode=Create");
    connection_->execute("Create Table [t] ([Id] Counter primary key, [Info] Memo)");
    connection_->begin_transaction();
    for (int i = 0; i < 60; ++i) {
      connection_->execute("Insert Into [t] ([Info]) Values ('" + std::string(200, 'x') + "')");
    }
    connection_->commit_transaction();
  }
  // The most that is kept, the engine's own included, on a walk over so many rows.
  std::int64_t most_kept(int rows, CursorType cursor, LockType lock) {
    most = live.load();
    const std::int64_t before = live;
    const std::int64_t engine_before = sqlite3_memory_used();
    sqlite3_memory_highwater(1);
    const auto walk = connection_->open_recordset(
        "Select Top " + std::to_string(rows) + " a.Info, b.Id From [t] a, [t] b, [t] c", cursor,
        lock);
    int seen = 0;
    for (; !walk->eof(); walk->move_next()) seen += walk->field("Id").as_long() > 0 ? 1 : 0;
    EXPECT_EQ(seen, rows);
    return most - before + sqlite3_memory_highwater(0) - engine_before;
  }

  tests::DiskFolder folder_;
  tests::FixedClock clock_;
  Engine engine_{{folder_.path(), {}, std::chrono::seconds(1)}, folder_, clock_};
  std::unique_ptr<platform::Database> page_;
  std::unique_ptr<platform::Connection> connection_;
};

constexpr std::int64_t kSlack = 64 << 10;

TEST_F(ForwardWalk, KeepsNoMoreOfManyRowsThanOfAFewHundred) {
  most_kept(1'000, CursorType::ForwardOnly, LockType::ReadOnly);  // prepares, fills the page cache
  const std::int64_t few = most_kept(1'000, CursorType::ForwardOnly, LockType::ReadOnly);
  const std::int64_t many = most_kept(200'000, CursorType::ForwardOnly, LockType::ReadOnly);
  EXPECT_GT(few, 0);
  EXPECT_LT(few, 1 << 20);
  EXPECT_LT(many, few + kSlack);
}

TEST_F(ForwardWalk, OfACursorThatMayWriteKeepsOneWindowAtMost) {
  const std::int64_t some = most_kept(60'000, CursorType::ForwardOnly, LockType::Optimistic);
  const std::int64_t many = most_kept(200'000, CursorType::ForwardOnly, LockType::Optimistic);
  EXPECT_LT(many, some + kSlack);
}

}  // namespace
}  // namespace rk::sqlite
