#include "pagehost/components/row_changes.h"

#include <gtest/gtest.h>

#include "value/conversions.h"

namespace rk::pagehost {
namespace {

RowValues row(std::int32_t a, std::int32_t b) {
  return {Value::long_integer(a), Value::long_integer(b)};
}

std::string text(const std::vector<RowValues>& rows) {
  std::string out;
  for (const RowValues& each : rows) {
    out += joined_text(each[0]).string() + joined_text(each[1]).string() + " ";
  }
  return out;
}

// Rows with their changes, as record sets in memory keep them.
struct Changed {
  std::vector<RowValues> rows{row(1, 1), row(2, 2), row(3, 3)};
  RowChanges changes{3};

  void set(std::size_t at, std::size_t column, std::int32_t value) {
    changes.note_set(at, column, rows[at][column]);
    rows[at][column] = Value::long_integer(value);
  }
  void remove(std::size_t at) {
    changes.note_removed(at, rows[at]);
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(at));
  }
  void add(const RowValues& values) {
    rows.push_back(values);
    changes.note_added();
  }
};

TEST(RowChanges, AColumnSetTwiceKeepsWhatItHeldFirst) {
  Changed it;
  it.set(1, 0, 7);
  it.set(1, 0, 8);
  EXPECT_EQ(to_long(it.changes.of(1).before.at(0)), 2);
  EXPECT_TRUE(it.changes.of(0).is_none());
}

TEST(RowChanges, ARemovedRowIsKnownAsItWasRead) {
  Changed it;
  it.set(0, 1, 9);
  it.remove(0);
  it.add(row(5, 5));
  it.remove(2);
  EXPECT_EQ(text(it.changes.removed()), "11 ") << "a new row was never in the database";
}

TEST(RowChanges, UndoneRowsStandWhereTheyStood) {
  Changed it;
  it.add(row(4, 4));
  it.remove(1);
  it.set(1, 0, 9);
  it.remove(1);
  it.add(row(5, 5));
  it.remove(0);
  EXPECT_EQ(text(it.rows), "44 55 ");
  it.changes.undo(it.rows);
  EXPECT_EQ(text(it.rows), "11 22 33 ");
  EXPECT_TRUE(it.changes.removed().empty());
}

TEST(RowChanges, WhatWasStoredIsNoLongerPending) {
  Changed it;
  it.set(0, 0, 9);
  it.remove(1);
  it.changes.forget();
  EXPECT_TRUE(it.changes.of(0).is_none());
  EXPECT_TRUE(it.changes.removed().empty());
  it.changes.undo(it.rows);
  EXPECT_EQ(text(it.rows), "91 33 ");
}

TEST(RowChanges, ARowThatWasStoredAloneStaysWhereItIsWhenTheOthersAreUndone) {
  Changed all;
  all.remove(0);
  all.add(row(4, 4));
  all.add(row(5, 5));
  all.remove(0);
  all.set(0, 1, 9);
  EXPECT_EQ(text(all.rows), "39 44 55 ");
  all.changes.forget(1);
  EXPECT_TRUE(all.changes.of(1).is_none());
  all.changes.undo(all.rows);
  EXPECT_EQ(text(all.rows), "11 22 33 44 ");
}

}  // namespace
}  // namespace rk::pagehost
