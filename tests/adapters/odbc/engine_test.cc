#include "adapters/odbc/engine.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "tests/adapters/odbc/odbc_world.h"

namespace rk::tests {
namespace {

TEST(OdbcEngine, ALinkThatWasGivenBackIsBorrowedAgain) {
  OdbcWorld world;
  auto link = world.engine.borrow(world.connection_string());
  const void* handle = link->handle();
  world.engine.give_back(std::move(link));
  EXPECT_EQ(world.engine.borrow(world.connection_string())->handle(), handle);
}

TEST(OdbcEngine, ALinkOfAnotherStringIsNotBorrowed) {
  OdbcWorld world;
  auto link = world.engine.borrow(world.connection_string());
  auto* const first = link.get();
  world.engine.give_back(std::move(link));
  EXPECT_NE(world.engine.borrow(world.connection_string() + ";Timeout=60").get(), first);
}

TEST(OdbcEngine, ALostLinkIsNotKept) {
  OdbcWorld world;
  auto link = world.engine.borrow(world.connection_string());
  link->note_lost();
  world.engine.give_back(std::move(link));
  EXPECT_FALSE(world.engine.borrow(world.connection_string())->is_lost());
}

TEST(OdbcEngine, ALinkTellsItsEngine) {
  OdbcWorld world;
  const auto link = world.engine.borrow(world.connection_string());
  EXPECT_EQ(link->dialect(), odbc::Dialect::Sqlite);
  EXPECT_EQ(link->quoted("a\"b"), "\"a\"\"b\"");
}

TEST(OdbcEngine, PagesOnSeveralThreadsReadAtOnce) {
  OdbcWorld world;
  world.make_plans(20);
  std::vector<std::thread> threads;
  std::vector<std::string> read(4);
  for (std::string& answer : read) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5; ++i) {
        const auto page = world.engine.page();
        const auto connection = page->page_connection();
        connection->open(world.connection_string());
        answer = OdbcWorld::rest(*connection->execute("select sum(Num) as s from plan"), "s");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& answer : read) EXPECT_EQ(answer, "2100");
}

}  // namespace
}  // namespace rk::tests
