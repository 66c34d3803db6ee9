#include "pagehost/components/memory_rows.h"

#include <gtest/gtest.h>

#include "tests/support/object_calls.h"

namespace rk::pagehost {
namespace {

using tests::error_number;

MemoryRows two_rows() {
  return {{{"Id", AdoType::Integer, 0}, {"Name", AdoType::VarWChar, 3}},
          {{Value::long_integer(1), Value::text("a")}, {Value::long_integer(2), Value::null()}}};
}

TEST(MemoryRows, AreWalkedToBothEnds) {
  MemoryRows rows = two_rows();
  EXPECT_EQ(rows.record_count(), 2);
  rows.move_next();
  EXPECT_TRUE(rows.field("Name").is_null());
  rows.move_next();
  EXPECT_TRUE(rows.eof());
  EXPECT_EQ(error_number([&] { rows.move_next(); }), 3021);
  EXPECT_EQ(error_number([&] { rows.field(0); }), 3021);
  rows.move_first();
  rows.move_previous();
  EXPECT_TRUE(rows.bof());
  EXPECT_EQ(error_number([&] { rows.move_previous(); }), 3021);
}

TEST(MemoryRows, CountTheirPages) {
  MemoryRows rows = two_rows();
  rows.set_page_size(1);
  EXPECT_EQ(rows.page_count(), 2);
  rows.set_absolute_page(2);
  EXPECT_EQ(to_long(rows.field("Id")), 2);
  EXPECT_EQ(rows.absolute_page(), 2);
  rows.set_absolute_page(9);
  EXPECT_TRUE(rows.eof());
  EXPECT_EQ(error_number([&] { rows.set_absolute_page(0); }), 3001);
  EXPECT_EQ(error_number([&] { rows.set_page_size(0); }), 3001);
}

TEST(MemoryRows, ANewRowIsThereAfterItsUpdateAndNotBefore) {
  MemoryRows rows = two_rows();
  rows.add_new();
  rows.set_field("Id", Value::text("7"));
  EXPECT_EQ(rows.record_count(), 2);
  rows.update();
  EXPECT_EQ(rows.record_count(), 3);
  EXPECT_EQ(rows.field("Id").kind(), Value::Kind::Long);
  EXPECT_TRUE(rows.field("Name").is_null());
  rows.add_new();
  rows.cancel_update();
  EXPECT_EQ(rows.record_count(), 3);
}

TEST(MemoryRows, AFieldKeepsItsValueUntilTheUpdate) {
  MemoryRows rows = two_rows();
  rows.set_field("Name", Value::text("b"));
  EXPECT_EQ(joined_text(rows.field("Name")).view(), "b");
  EXPECT_EQ(joined_text(rows.original(1)).view(), "a");
  rows.move_next();  // stores it
  rows.move_first();
  EXPECT_EQ(joined_text(rows.original(1)).view(), "b");
}

TEST(MemoryRows, AValueMustSuitItsColumn) {
  MemoryRows rows = two_rows();
  EXPECT_EQ(error_number([&] { rows.set_field("Id", Value::text("x")); }), -2147352571);
  EXPECT_EQ(error_number([&] { rows.set_field("Name", Value::text("long")); }), -2147217887);
  EXPECT_EQ(error_number([&] { rows.set_field("Nope", Value::text("x")); }), 3265);
}

TEST(MemoryRows, ARemovedRowIsFollowedByTheNext) {
  MemoryRows rows = two_rows();
  rows.remove();
  EXPECT_EQ(error_number([&] { rows.field(0); }), 3021);
  rows.move_next();
  EXPECT_EQ(to_long(rows.field("Id")), 2);
}

TEST(MemoryRows, TakeOverTheRowsOfAnotherSet) {
  MemoryRows rows = two_rows();
  rows.move_last();
  const auto copy = MemoryRows::of(rows);
  EXPECT_EQ(copy->record_count(), 2);
  EXPECT_EQ(to_long(copy->field("Id")), 1);
  EXPECT_EQ(copy->column(1).type, AdoType::VarWChar);
  EXPECT_EQ(copy->column(1).size, 3);
}

}  // namespace
}  // namespace rk::pagehost
