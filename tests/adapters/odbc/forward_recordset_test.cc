#include "adapters/odbc/forward_recordset.h"

#include <gtest/gtest.h>

#include "tests/adapters/odbc/odbc_world.h"

namespace rk::tests {
namespace {

TEST(OdbcForwardRecordset, WalksOnceAndRefusesTheRest) {
  OdbcWorld world;
  world.make_plans(3);
  const auto rows = world.connection->execute("select Id from plan order by Id");
  EXPECT_EQ(rows->record_count(), -1);
  EXPECT_EQ(rows->absolute_position(), -1);
  EXPECT_EQ(error_number([&] { rows->move_previous(); }), 3251);
  EXPECT_EQ(error_number([&] { rows->move_last(); }), 3251);
  EXPECT_EQ(error_number([&] { rows->set_absolute_page(1); }), 3251);
  EXPECT_EQ(error_number([&] { rows->add_new(); }), 3251);
  EXPECT_EQ(OdbcWorld::rest(*rows, "Id"), "1 2 3");
  EXPECT_EQ(error_number([&] { rows->move_next(); }), 3021);
  EXPECT_EQ(error_number([&] { rows->field("Id"); }), 3021);
  EXPECT_EQ(error_number([&] { rows->field("Name"); }), 3265);
}

TEST(OdbcForwardRecordset, ItsFirstRowRunsTheTextAgain) {
  OdbcWorld world;
  world.make_plans(2);
  const auto rows = world.connection->execute("select Id from plan order by Id");
  rows->move_next();
  rows->move_first();
  EXPECT_EQ(OdbcWorld::rest(*rows, "Id"), "1 2");
}

TEST(OdbcForwardRecordset, AnEmptyOneIsAtBothEnds) {
  OdbcWorld world;
  world.make_plans(0);
  const auto rows = world.connection->execute("select Id from plan");
  EXPECT_TRUE(rows->bof());
  EXPECT_TRUE(rows->eof());
}

TEST(OdbcForwardRecordset, SeveralAreReadAtOnce) {
  OdbcWorld world;
  world.make_plans(3);
  const auto outer = world.connection->execute("select Id from plan order by Id");
  std::string seen;
  for (; !outer->eof(); outer->move_next()) {
    seen += world.all("select Name from plan where Id=" + OdbcWorld::text(*outer, "Id"), "Name");
  }
  EXPECT_EQ(seen, "n1n2n3");
}

TEST(OdbcForwardRecordset, EndsWithItsConnection) {
  OdbcWorld world;
  world.make_plans(3);
  const auto rows = world.connection->execute("select Id from plan");
  world.connection->close();
  EXPECT_EQ(error_number([&] { rows->eof(); }), 3704);
  EXPECT_EQ(error_number([&] { rows->close(); }), 3704);
}

TEST(OdbcForwardRecordset, AWalkGoesOnBehindATransactionsEnd) {
  OdbcWorld world;
  world.make_plans(3);
  const auto rows = world.connection->execute("select Id from plan order by Id");
  world.connection->begin_transaction();
  world.run("delete from plan");
  world.connection->commit_transaction();
  EXPECT_EQ(OdbcWorld::rest(*rows, "Id"), "1 2 3");
}

}  // namespace
}  // namespace rk::tests
