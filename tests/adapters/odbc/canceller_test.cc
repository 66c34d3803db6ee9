#include "adapters/odbc/canceller.h"

#include <gtest/gtest.h>

#include <atomic>

#include "tests/adapters/odbc/odbc_world.h"

namespace rk::tests {
namespace {

TEST(OdbcCanceller, AStatementOfAPageWhoseTimeEndsIsCancelled) {
  OdbcWorld world;
  std::atomic<int> asked{0};
  odbc::PageHooks hooks;
  // Not over as the statement is sent, and over as soon as another thread asks.
  hooks.expired = [&] { return ++asked > 1; };
  const auto page = world.engine.page(hooks);
  const auto connection = page->page_connection();
  connection->open(world.connection_string());
  EXPECT_EQ(error_number([&] {
              connection->execute(
                  "with recursive c(n) as (select 1 union all select n+1 from c) "
                  "select count(*) as n from c where n < 0");
            }),
            errors::kSqlTimeout);
}

TEST(OdbcCanceller, APagesEndIsRaisedInItsPlace) {
  OdbcWorld world;
  odbc::PageHooks hooks;
  hooks.expired = [] { return true; };
  struct PageIsOver {};
  hooks.end = [] { throw PageIsOver(); };
  const auto page = world.engine.page(hooks);
  const auto connection = page->page_connection();
  connection->open(world.connection_string());
  EXPECT_THROW(connection->execute("select 1"), PageIsOver);
}

}  // namespace
}  // namespace rk::tests
