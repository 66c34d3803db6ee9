#include "adapters/odbc/held_recordset.h"

#include <gtest/gtest.h>

#include "tests/adapters/odbc/odbc_world.h"

namespace rk::tests {
namespace {

constexpr const char* kById = "select Id, Name, Num from plan order by Id";

TEST(OdbcHeldRecordset, MovesToAndFro) {
  OdbcWorld world;
  world.make_plans(5);
  const auto rows = world.keyset(kById);
  EXPECT_EQ(rows->record_count(), 5);
  rows->move_last();
  EXPECT_EQ(OdbcWorld::text(*rows, "Name"), "n5");
  rows->move_previous();
  EXPECT_EQ(OdbcWorld::text(*rows, "Name"), "n4");
  rows->move(-9, platform::Recordset::Origin::Current);
  EXPECT_TRUE(rows->bof());
  EXPECT_EQ(rows->absolute_position(), -2);
  EXPECT_EQ(error_number([&] { rows->move_previous(); }), 3021);
  rows->move_first();
  EXPECT_EQ(OdbcWorld::rest(*rows, "Id"), "1 2 3 4 5");
  EXPECT_EQ(rows->absolute_position(), -3);
  EXPECT_EQ(error_number([&] { rows->move_next(); }), 3021);
}

TEST(OdbcHeldRecordset, ShowsOnePageOfSeveral) {
  OdbcWorld world;
  world.make_plans(5);
  const auto rows = world.keyset(kById);
  rows->set_page_size(2);
  EXPECT_EQ(rows->page_count(), 3);
  rows->set_absolute_page(3);
  EXPECT_EQ(OdbcWorld::text(*rows, "Id"), "5");
  EXPECT_EQ(rows->absolute_page(), 3);
  rows->set_absolute_page(4);
  EXPECT_TRUE(rows->eof());
  EXPECT_EQ(error_number([&] { rows->set_absolute_page(0); }), 3001);
  EXPECT_EQ(error_number([&] { rows->set_page_size(0); }), 3001);
}

TEST(OdbcHeldRecordset, AddsARowAndShowsItWithItsNumber) {
  OdbcWorld world;
  world.make_plans(2);
  const auto rows = world.keyset("select * from plan");
  rows->add_new();
  rows->set_field("Name", Value::text("\xE4\xB8\xAD"));
  rows->set_field("Num", Value::text("12"));
  EXPECT_EQ(OdbcWorld::text(*rows, "Num"), "12");
  rows->update();
  EXPECT_EQ(OdbcWorld::text(*rows, "Id"), "3");
  EXPECT_EQ(rows->field("Num").as_long(), 12);
  rows->move_first();
  EXPECT_EQ(OdbcWorld::rest(*rows, "Id"), "1 2 3");
  EXPECT_EQ(world.all("select Name from plan where Num=12", "Name"), "\xE4\xB8\xAD");
}

TEST(OdbcHeldRecordset, ChangesARowByItsKey) {
  OdbcWorld world;
  world.make_plans(3);
  const auto rows = world.keyset(kById);
  rows->move_next();
  rows->set_field("Num", Value::long_integer(7));
  EXPECT_EQ(rows->field("Num").as_long(), 7);
  EXPECT_EQ(rows->original(2).as_long(), 20);
  rows->update();
  EXPECT_EQ(rows->field("Num").as_long(), 7);
  EXPECT_EQ(world.all("select Num from plan order by Id", "Num"), "10 7 30");
}

TEST(OdbcHeldRecordset, WhatIsCancelledIsNotStored) {
  OdbcWorld world;
  world.make_plans(1);
  const auto rows = world.keyset(kById);
  rows->set_field("Num", Value::long_integer(7));
  EXPECT_EQ(error_number([&] { rows->close(); }), 3219);
  rows->cancel_update();
  EXPECT_EQ(rows->field("Num").as_long(), 10);
  rows->close();
  EXPECT_EQ(world.all("select Num from plan", "Num"), "10");
}

TEST(OdbcHeldRecordset, RemovesARow) {
  OdbcWorld world;
  world.make_plans(3);
  const auto rows = world.keyset(kById);
  rows->move_next();
  rows->remove();
  EXPECT_EQ(error_number([&] { rows->field("Id"); }), 3021);
  rows->move_next();
  EXPECT_EQ(OdbcWorld::text(*rows, "Id"), "3");
  EXPECT_EQ(rows->record_count(), 2);
  EXPECT_EQ(world.all("select Id from plan order by Id", "Id"), "1 3");
}

TEST(OdbcHeldRecordset, ARowThatIsGoneCannotBeChanged) {
  OdbcWorld world;
  world.make_plans(1);
  const auto rows = world.keyset(kById);
  EXPECT_FALSE(rows->eof());
  world.run("delete from plan");
  rows->set_field("Num", Value::long_integer(7));
  EXPECT_EQ(error_number([&] { rows->update(); }), -2147217864);
  rows->cancel_update();
}

TEST(OdbcHeldRecordset, ARowWithoutAKeyIsNotChanged) {
  OdbcWorld world;
  world.run("create table loose (a integer, b integer)");
  world.run("insert into loose values (1, 2)");
  const auto rows = world.keyset("select * from loose");
  EXPECT_EQ(error_number([&] { rows->set_field("b", Value::long_integer(7)); }), 3251);
  world.make_plans(1);
  const auto without = world.keyset("select Name from plan");
  EXPECT_EQ(error_number([&] { without->set_field("Name", Value::text("x")); }), 3251);
}

TEST(OdbcHeldRecordset, RowsOfAGroupingAreNotWritten) {
  OdbcWorld world;
  world.make_plans(2);
  const auto rows = world.keyset("select Name, count(*) as n from plan group by Name");
  EXPECT_EQ(rows->record_count(), 2);
  EXPECT_EQ(error_number([&] { rows->add_new(); }), 3251);
}

TEST(OdbcHeldRecordset, AReadOnlyLockWritesNothing) {
  OdbcWorld world;
  world.make_plans(1);
  const auto rows = world.connection->open_recordset(kById, platform::CursorType::Static,
                                                     platform::LockType::ReadOnly);
  EXPECT_EQ(error_number([&] { rows->add_new(); }), 3251);
  EXPECT_EQ(error_number([&] { rows->remove(); }), 3251);
}

TEST(OdbcHeldRecordset, AValueThatDoesNotSuitItsColumnIsNotStored) {
  OdbcWorld world;
  world.make_plans(1);
  const auto rows = world.keyset(kById);
  rows->set_field("Num", Value::text("many"));
  EXPECT_EQ(error_number([&] { rows->update(); }), -2147217913);
  rows->cancel_update();
  EXPECT_EQ(world.all("select Num from plan", "Num"), "10");
}

TEST(OdbcHeldRecordset, ColumnsTellWhatTheyAre) {
  OdbcWorld world;
  world.make_plans(1);
  const auto rows = world.keyset("select * from plan");
  EXPECT_EQ(rows->traits(1).type, platform::ColumnType::Text);
  EXPECT_TRUE(rows->traits(1).writable);
  EXPECT_EQ(rows->traits(5).type, platform::ColumnType::Integer);
}

}  // namespace
}  // namespace rk::tests
