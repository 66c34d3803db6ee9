#include "adapters/odbc/page_database.h"

#include <gtest/gtest.h>

#include "tests/adapters/odbc/odbc_world.h"
#include "value/array.h"

namespace rk::tests {
namespace {

using platform::CursorType;
using platform::LockType;
using platform::SqlText;

TEST(OdbcConnection, OpensOnceAndClosesOnce) {
  OdbcWorld world;
  EXPECT_EQ(error_number([&] { world.connection->open(world.connection_string()); }), 3705);
  world.connection->close();
  EXPECT_FALSE(world.connection->is_open());
  EXPECT_EQ(error_number([&] { world.connection->close(); }), 3704);
  EXPECT_EQ(error_number([&] { world.connection->execute("select 1"); }), 3704);
  EXPECT_EQ(error_number([&] { world.connection->begin_transaction(); }), 3704);
  EXPECT_EQ(error_number([&] { world.connection->begin_read(); }), 3704);
  world.connection->open(world.connection_string());
  EXPECT_EQ(world.all("select 1 as a", "a"), "1");
}

TEST(OdbcConnection, ADriverThatIsNotThereFailsWithTheManagersWords) {
  OdbcWorld world;
  world.connection->close();
  try {
    world.connection->open("Driver=No such driver;Server=x");
    FAIL() << "opened";
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), -2147467259);
    EXPECT_NE(error.description().find("No such driver"), std::string::npos);
  }
  EXPECT_EQ(error_number([&] { world.connection->open("DSN=nowhere at all"); }), -2147467259);
}

TEST(OdbcConnection, ExecuteOfAWriteTellsTheRowsChangedAndGivesNoRecordSet) {
  OdbcWorld world;
  world.make_plans(3);
  std::int64_t affected = -5;
  EXPECT_EQ(world.connection->execute(SqlText("update plan set Num=1 where Id>1"), &affected),
            nullptr);
  EXPECT_EQ(affected, 2);
  EXPECT_EQ(world.run("delete from plan where Id=99"), 0);
  EXPECT_EQ(world.run("insert into plan (Name) values ('x')"), 1);
}

TEST(OdbcConnection, APagesTextGoesAsItStands) {
  OdbcWorld world;
  world.make_plans(2);
  EXPECT_EQ(
      world.all("select Name || '-' || typeof(Num) as t from plan /* its own */ limit 1", "t"),
      "n1-integer");
}

TEST(OdbcConnection, TheLibrarysTextsAreRefusedWhereTheyCannotBeWritten) {
  OdbcWorld world;
  world.make_plans(1);
  const auto library = world.open_for_library();
  try {
    library->execute("Select [Id] From [plan]");
    FAIL() << "ran";
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), 3251);
    EXPECT_NE(error.description().find("SQLite"), std::string::npos) << error.description();
  }
}

TEST(OdbcConnection, ValuesComeBackAsTheyWereBound) {
  OdbcWorld world;
  world.run(
      "create table v (n integer, d double, c decimal(19,4), b bit, t timestamp, s varchar(20), "
      "l text, x blob)");
  SqlText sql("insert into v values (?,?,?,?,?,?,?,?)");
  const std::string bytes("a\0'\xff", 4);
  const std::string long_text = [] {
    std::string text;
    for (int i = 0; i < 9000; ++i) text += i % 3 == 0 ? "\xF0\x9F\x98\x80" : "\xE4\xB8\xAD";
    return text;
  }();
  sql.bind(Value::long_integer(-7)).bind(Value::real(0.5)).bind(Value::currency(995000));
  sql.bind(Value::boolean(true)).bind(Value::date(45000.5)).bind(Value::text("\xE4\xB8\xAD x'"));
  sql.bind(Value::text(long_text)).bind(Value::array(Array::of_bytes(bytes)));
  world.connection->execute(sql);
  const auto rows = world.connection->execute("select * from v");
  EXPECT_EQ(rows->field("n").as_long(), -7);
  EXPECT_EQ(rows->field("d").as_double(), 0.5);
  EXPECT_EQ(to_currency(rows->field("c")), 995000);
  EXPECT_EQ(rows->field("b").kind(), Value::Kind::Boolean);
  EXPECT_TRUE(rows->field("b").as_boolean());
  EXPECT_EQ(rows->field("t").kind(), Value::Kind::Date);
  EXPECT_EQ(rows->field("t").as_date(), 45000.5);
  EXPECT_EQ(rows->field("s").as_view(), "\xE4\xB8\xAD x'");
  EXPECT_EQ(rows->field("l").as_view(), long_text);
  EXPECT_EQ(rows->field("x").as_array().bytes(), bytes);
}

TEST(OdbcConnection, AFieldWithoutAValueIsNull) {
  OdbcWorld world;
  world.make_plans(0);
  world.run("insert into plan (Id) values (1)");
  const auto rows = world.connection->execute("select Name, Price, Flag, Time, Num from plan");
  std::string out = "kept";
  for (std::size_t i = 0; i < rows->field_count(); ++i) {
    EXPECT_TRUE(rows->field(i).is_null()) << i;
    EXPECT_FALSE(rows->append_field_text(i, out)) << i;
  }
  EXPECT_EQ(out, "kept");
}

TEST(OdbcConnection, WhatABoundTextHoldsIsNeverReadAsSql) {
  OdbcWorld world;
  world.make_plans(2);
  SqlText sql("insert into plan (Name) values (?)");
  sql.bind(Value::text("x');delete from plan;--? \"'"));
  world.connection->execute(sql);
  EXPECT_EQ(world.all("select count(*) as n from plan", "n"), "3");
  EXPECT_EQ(world.all("select Name from plan where Id=3", "Name"), "x');delete from plan;--? \"'");
}

TEST(OdbcConnection, WhatCameFromOutsideMustStayOneValue) {
  OdbcWorld world;
  world.make_plans(2);
  SqlText good("select Name from plan where Id=");
  good.add_outside("2");
  EXPECT_EQ(OdbcWorld::rest(*world.connection->execute(good), "Name"), "n2");
  SqlText list("select Name from plan where Id=");
  list.add_outside("2 or 1=1");
  EXPECT_EQ(error_number([&] { world.connection->execute(list); }), -2147217900);
  EXPECT_EQ(error_number([&] {
              world.connection->open_recordset(list, CursorType::Keyset, LockType::ReadOnly);
            }),
            -2147217900);
}

// ---- Transactions

TEST(OdbcConnection, ATransactionIsKeptOrUndone) {
  OdbcWorld world;
  world.make_plans(1);
  world.connection->begin_transaction();
  world.run("update plan set Num=1");
  world.connection->roll_back_transaction();
  EXPECT_EQ(world.all("select Num from plan", "Num"), "10");
  world.connection->begin_transaction();
  world.run("update plan set Num=2");
  world.connection->commit_transaction();
  EXPECT_EQ(world.all("select Num from plan", "Num"), "2");
  EXPECT_EQ(error_number([&] { world.connection->commit_transaction(); }), -2147168242);
  EXPECT_EQ(error_number([&] { world.connection->roll_back_transaction(); }), -2147168242);
}

TEST(OdbcConnection, ASecondTransactionWithinOneIsRefused) {
  OdbcWorld world;
  world.connection->begin_transaction();
  EXPECT_EQ(error_number([&] { world.connection->begin_transaction(); }), -2147168237);
  world.connection->roll_back_transaction();
}

TEST(OdbcConnection, AClosedConnectionUndoesItsTransaction) {
  OdbcWorld world;
  world.make_plans(1);
  const auto other = world.open();
  other->begin_transaction();
  other->execute("update plan set Num=1");
  other->close();
  EXPECT_EQ(world.all("select Num from plan", "Num"), "10");
}

TEST(OdbcConnection, ALinkThatWasGivenBackWithATransactionStartsAfresh) {
  OdbcWorld world;
  world.make_plans(1);
  world.connection->begin_transaction();
  world.run("update plan set Num=1");
  world.connection.reset();
  world.connection = world.open();
  EXPECT_EQ(world.all("select Num from plan", "Num"), "10");
  world.run("update plan set Num=3");
  world.connection->close();
  world.connection = world.open();
  EXPECT_EQ(world.all("select Num from plan", "Num"), "3");
}

TEST(OdbcConnection, APagesConnectionsShareOneTransaction) {
  OdbcWorld world;
  world.make_plans(1);
  const auto other = world.open();
  world.connection->begin_transaction();
  world.run("update plan set Num=5");
  EXPECT_EQ(OdbcWorld::rest(*other->execute("select Num from plan"), "Num"), "5");
  world.connection->roll_back_transaction();
}

// ---- The page's end

TEST(OdbcConnection, APageWhoseTimeIsOverRunsNothingMore) {
  OdbcWorld world;
  world.make_plans(1);
  odbc::PageHooks hooks;
  hooks.expired = [] { return true; };
  const auto page = world.engine.page(hooks);
  const auto late = page->page_connection();
  late->open(world.connection_string());
  EXPECT_EQ(error_number([&] { late->execute("select Num from plan"); }), -2147217871);
}

TEST(OdbcConnection, WhatIsTracedIsToldWithItsRows) {
  OdbcWorld world;
  world.make_plans(3);
  std::vector<std::string> told;
  odbc::PageHooks hooks;
  hooks.trace = [&](const platform::TracedStatement& traced) {
    told.push_back(std::string(traced.sql) + " " + std::to_string(traced.rows) + " " +
                   std::string(traced.place));
  };
  hooks.place = [] { return std::string("/a.asp:7"); };
  const auto page = world.engine.page(hooks);
  const auto traced = page->page_connection();
  traced->open(world.connection_string());
  {
    const auto rows = traced->execute("select Id from plan");
    rows->move_next();
    EXPECT_TRUE(told.empty());
  }
  traced->execute("update plan set Num=1");
  EXPECT_NE(error_number([&] { traced->execute("select nothing from nowhere"); }), 0);
  ASSERT_EQ(told.size(), 3u);
  EXPECT_EQ(told[0], "select Id from plan 2 /a.asp:7");
  EXPECT_EQ(told[1], "update plan set Num=1 3 /a.asp:7");
  EXPECT_EQ(told[2], "select nothing from nowhere 0 /a.asp:7");
}

}  // namespace
}  // namespace rk::tests
