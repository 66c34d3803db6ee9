// The rules of connections and record sets that hold on every database adapter. An adapter's test
// includes this and names its factory:
//
//   INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseRules, testing::Values(&make_sqlite_world));
#ifndef RK_TESTS_ADAPTERS_DATABASE_RULES_H_
#define RK_TESTS_ADAPTERS_DATABASE_RULES_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/database.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::tests {

// An empty database that lives as long as this.
class DatabaseWorld {
 public:
  virtual ~DatabaseWorld() = default;
  virtual std::unique_ptr<platform::Database> page() = 0;
  virtual std::string connection_string() const = 0;
};

using MakeDatabaseWorld = std::unique_ptr<DatabaseWorld> (*)();

// The number of the error that `work` ends with, 0 where it does not.
template <class Work>
std::int32_t error_of(Work work) {
  try {
    work();
  } catch (const ScriptError& error) {
    return error.number();
  }
  return 0;
}

class DatabaseRules : public testing::TestWithParam<MakeDatabaseWorld> {
 protected:
  using Cursor = platform::CursorType;
  using Lock = platform::LockType;

  void SetUp() override {
    world_ = GetParam()();
    page_ = world_->page();
    connection_ = open();
    run("Create Table [plan] ([Id] AutoIncrement primary key, [Name] Text(50), [Price] Currency, "
        "[Flag] Bit, [Time] DateTime, [Num] Long)");
  }

  std::unique_ptr<platform::Connection> open() {
    auto connection = page_->connection();
    connection->open(world_->connection_string());
    return connection;
  }
  std::int64_t run(const std::string& sql) {
    std::int64_t affected = 0;
    connection_->execute(platform::SqlText(sql), &affected);
    return affected;
  }
  // Rows 1 to `count`, Num ten times the number.
  void fill(int count) {
    connection_->begin_transaction();
    for (int i = 1; i <= count; ++i) {
      run("Insert Into [plan] ([Name],[Num]) Values ('n" + std::to_string(i) + "'," +
          std::to_string(i * 10) + ")");
    }
    connection_->commit_transaction();
  }
  std::unique_ptr<platform::Recordset> keyset(const std::string& sql,
                                              Lock lock = Lock::Optimistic) {
    return connection_->open_recordset(sql, Cursor::Keyset, lock);
  }
  // Plans 1 to 3 in the classes one, two and one.
  void fill_classes() {
    run("Create Table [class] ([ClassId] Counter primary key, [Title] Text(20))");
    run("Insert Into [class] ([Title]) Values ('one')");
    run("Insert Into [class] ([Title]) Values ('two')");
    fill(3);
    run("Update [plan] Set [Num]=IIf([Id]=2,2,1)");
  }
  static constexpr const char* kJoin =
      "Select [plan].*,[class].[Title] From [plan] Inner Join [class] On "
      "[plan].[Num]=[class].[ClassId] Order By [plan].[Id]";
  std::unique_ptr<platform::Recordset> by_id() {
    return keyset("Select [Id],[Name],[Num] From [plan] Order By [Id]");
  }
  static std::string text(platform::Recordset& rows, std::string_view name) {
    return joined_text(rows.field(rows.ordinal(name))).string();
  }
  // What is left, from here to the end, joined by blanks.
  static std::string rest(platform::Recordset& rows, std::string_view name) {
    std::string all;
    for (; !rows.eof(); rows.move_next()) all += (all.empty() ? "" : " ") + text(rows, name);
    return all;
  }
  std::string all(const std::string& sql, std::string_view name) {
    return rest(*connection_->execute(sql), name);
  }

  std::unique_ptr<DatabaseWorld> world_;
  std::unique_ptr<platform::Database> page_;
  std::unique_ptr<platform::Connection> connection_;
};

// ---- Connections

TEST_P(DatabaseRules, OpeningAnOpenConnectionIs3705) {
  EXPECT_EQ(error_of([&] { connection_->open(world_->connection_string()); }), 3705);
}

TEST_P(DatabaseRules, ClosingAClosedConnectionIs3704) {
  connection_->close();
  EXPECT_FALSE(connection_->is_open());
  EXPECT_EQ(error_of([&] { connection_->close(); }), 3704);
}

TEST_P(DatabaseRules, AClosedConnectionRunsNothing) {
  connection_->close();
  EXPECT_EQ(error_of([&] { connection_->execute("Select [Id] From [plan]"); }), 3704);
  EXPECT_EQ(error_of([&] { connection_->begin_transaction(); }), 3704);
  EXPECT_EQ(error_of([&] { connection_->begin_read(); }), 3704);
}

TEST_P(DatabaseRules, AConnectionOpensAgainAfterItsClose) {
  fill(1);
  connection_->close();
  connection_->open(world_->connection_string());
  EXPECT_EQ(all("Select [Name] From [plan]", "Name"), "n1");
}

TEST_P(DatabaseRules, ClosingTheConnectionClosesItsRecordSets) {
  fill(2);
  auto rows = by_id();
  auto once = connection_->execute("Select [Id] From [plan]");
  connection_->close();
  EXPECT_EQ(error_of([&] { rows->eof(); }), 3704);
  EXPECT_EQ(error_of([&] { once->eof(); }), 3704);
  EXPECT_EQ(error_of([&] { rows->close(); }), 3704);
}

TEST_P(DatabaseRules, ARecordSetMayOutliveItsConnection) {
  fill(2);
  auto rows = by_id();
  EXPECT_FALSE(rows->eof());
  connection_.reset();
  EXPECT_EQ(error_of([&] { rows->move_next(); }), 3704);
  EXPECT_EQ(error_of([&] { rows->field_count(); }), 3704);
  EXPECT_EQ(error_of([&] { rows->ordinal("Id"); }), 3704);
  EXPECT_EQ(error_of([&] { rows->field("Id"); }), 3704);
  EXPECT_EQ(error_of([&] { rows->add_new(); }), 3704);
}

TEST_P(DatabaseRules, AConnectionMayOutliveThePagesDatabase) {
  fill(1);
  page_.reset();
  EXPECT_EQ(all("Select [Name] From [plan]", "Name"), "n1");
}

TEST_P(DatabaseRules, ExecuteOfAWriteTellsTheRowsChangedAndGivesNoRecordSet) {
  fill(3);
  std::int64_t affected = -5;
  const auto none =
      connection_->execute(platform::SqlText("Update [plan] Set [Num]=1 Where [Id]>1"), &affected);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(affected, 2);
  EXPECT_EQ(run("Delete From [plan] Where [Id]=99"), 0);
  EXPECT_EQ(run("Insert Into [plan] ([Name]) Values ('x')"), 1);
}

// ---- Errors

TEST_P(DatabaseRules, AMissingTableAndAMissingColumnHaveTheirNumbers) {
  EXPECT_EQ(error_of([&] { connection_->execute("Select * From [nowhere]"); }), -2147217865);
  EXPECT_EQ(error_of([&] { connection_->execute("Select [x] From [plan]"); }), -2147217904);
  EXPECT_EQ(error_of([&] { connection_->execute("Select From Where"); }), -2147217900);
  EXPECT_EQ(error_of([&] { keyset("Select [Id] From [plan] Order By [nix] Desc"); }), -2147217904);
  EXPECT_EQ(error_of([&] { keyset("Select Top  [Id] From [plan]"); }), -2147217900);
}

TEST_P(DatabaseRules, AWriteThatFailsChangesNothing) {
  fill(2);
  EXPECT_NE(error_of([&] { run("Insert Into [plan] ([Id],[Name]) Values (1,'again')"); }), 0);
  EXPECT_EQ(all("Select [Name] From [plan] Order By [Id]", "Name"), "n1 n2");
}

TEST_P(DatabaseRules, WhatCameFromOutsideMustStayOneValue) {
  fill(2);
  platform::SqlText good("Select [Name] From [plan] Where [Id]=");
  good.add_outside("2");
  EXPECT_EQ(rest(*connection_->execute(good), "Name"), "n2");
  platform::SqlText list("Select [Name] From [plan] Where [Id]=");
  list.add_outside("2 Or 1=1");
  EXPECT_EQ(error_of([&] { connection_->execute(list); }), -2147217900);
  EXPECT_EQ(error_of([&] { connection_->open_recordset(list, Cursor::Keyset, Lock::ReadOnly); }),
            -2147217900);
  platform::SqlText word("Select [Name] From [plan] Where [Id]=");
  word.add_outside("abc");
  EXPECT_EQ(error_of([&] { connection_->execute(word); }), -2147217904);
}

TEST_P(DatabaseRules, AHostileWriteIsNotRun) {
  fill(2);
  platform::SqlText sql("Update [plan] Set [Num]=0 Where [Name]='");
  sql.add_outside("' Or ''='").add("'");
  EXPECT_EQ(error_of([&] { connection_->execute(sql); }), -2147217900);
  EXPECT_EQ(all("Select [Num] From [plan] Order By [Id]", "Num"), "10 20");
}

// ---- Fields

TEST_P(DatabaseRules, AQuestionMarkStandsForTheValueThatWasBound) {
  fill(3);
  platform::SqlText sql("Select [Id] From [plan] Where [Name]=? And [Num]>?");
  sql.bind(Value::text("N2")).bind(Value::text("5"));
  const auto rows = connection_->execute(sql);
  EXPECT_EQ(joined_text(rows->field(0)).view(), "2");
  rows->move_next();
  EXPECT_TRUE(rows->eof());
  const auto paged = connection_->open_recordset(sql, Cursor::Keyset, Lock::ReadOnly);
  EXPECT_EQ(paged->record_count(), 1);
}

TEST_P(DatabaseRules, WhatABoundTextHoldsIsNeverReadAsSql) {
  fill(2);
  platform::SqlText sql("Insert Into [plan] ([Name]) Values (?)");
  sql.bind(Value::text("x');Delete From [plan];--? \"'"));
  connection_->execute(sql);
  const auto rows = by_id();
  EXPECT_EQ(rows->record_count(), 3);
  rows->move_last();
  EXPECT_EQ(joined_text(rows->field("Name")).view(), "x');Delete From [plan];--? \"'");
}

TEST_P(DatabaseRules, BoundValuesSuitTheColumnsThatTheyMeet) {
  platform::SqlText sql(
      "Insert Into [plan] ([Name],[Price],[Flag],[Time],[Num]) Values (?,?,?,?,?)");
  sql.bind(Value::long_integer(7)).bind(Value::text("2.5")).bind(Value::boolean(true));
  sql.bind(Value::date(45000.5)).bind(Value::null());
  connection_->execute(sql);
  platform::SqlText asked("Select * From [plan] Where [Time]=? And [Flag]=? And [Price]<=?");
  asked.bind(Value::date(45000.5)).bind(Value::boolean(true)).bind(Value::real(2.5));
  const auto rows = connection_->execute(asked);
  ASSERT_FALSE(rows->eof());
  EXPECT_EQ(joined_text(rows->field("Name")).view(), "7");
  EXPECT_EQ(rows->field("Price").kind(), Value::Kind::Currency);
  EXPECT_TRUE(rows->field("Num").is_null());
  platform::SqlText wrong("Insert Into [plan] ([Num]) Values (?)");
  wrong.bind(Value::text("many"));
  EXPECT_EQ(error_of([&] { connection_->execute(wrong); }), -2147217913);
}

TEST_P(DatabaseRules, BoundBytesAreStoredAsTheyAre) {
  run("Create Table [pic] ([Id] Long, [Data] Image)");
  platform::SqlText sql("Insert Into [pic] ([Id],[Data]) Values (1,?)");
  const std::string bytes("a\0'\xff", 4);
  sql.bind(Value::array(Array::of_bytes(bytes)));
  connection_->execute(sql);
  const auto rows = connection_->execute("Select [Data] From [pic]");
  EXPECT_EQ(rows->field(0).as_array().bytes(), bytes);
}

TEST_P(DatabaseRules, AQuestionMarkWithoutAValueIsNoValueGiven) {
  EXPECT_EQ(error_of([&] { run("Select * From [plan] Where [Id]=?"); }), -2147217904);
  EXPECT_EQ(error_of([&] { run("Insert Into [plan] ([Num]) Values (?)"); }), -2147217904);
}

TEST_P(DatabaseRules, NamesOfAParametersClauseStandForTheValuesInOrder) {
  fill(4);
  platform::SqlText sql(
      "Parameters [low] Long, high Integer, n Text(50);\n"
      "Select [Id] From [plan] Where [Id] Between [Low] And High And [Name]<>n Order By [Id]");
  sql.bind(Value::long_integer(2)).bind(Value::long_integer(4)).bind(Value::text("N3"));
  const auto rows = connection_->open_recordset(sql, Cursor::Static, Lock::ReadOnly);
  ASSERT_EQ(rows->record_count(), 2);
  rows->move_last();
  EXPECT_EQ(joined_text(rows->field(0)).view(), "4");
  EXPECT_EQ(error_of([&] { run("Parameters x Select [Id] From [plan]"); }), -2147217900);
  EXPECT_EQ(error_of([&] { run("Parameters x Long; Select [Id] From [plan] Where [Id]=x"); }),
            -2147217904);
}

TEST_P(DatabaseRules, TheDeclaredTypeDecidesTheValue) {
  run("Insert Into [plan] ([Name],[Price],[Flag],[Time],[Num]) Values "
      "('a',99.5,True,#2024-03-04 05:06:07#,7)");
  const auto rows = connection_->execute("Select * From [plan]");
  EXPECT_EQ(rows->field("Id").kind(), Value::Kind::Long);
  EXPECT_EQ(rows->field("Name").kind(), Value::Kind::String);
  EXPECT_EQ(rows->field("Price").kind(), Value::Kind::Currency);
  EXPECT_EQ(rows->field("Price").as_currency(), 995000);
  EXPECT_EQ(rows->field("Flag").kind(), Value::Kind::Boolean);
  EXPECT_TRUE(rows->field("Flag").as_boolean());
  EXPECT_EQ(rows->field("Time").kind(), Value::Kind::Date);
  EXPECT_EQ(text(*rows, "Time"), "2024-03-04 05:06:07");
  EXPECT_EQ(rows->field("Num").as_long(), 7);
}

TEST_P(DatabaseRules, AFieldWithoutAValueIsNull) {
  run("Insert Into [plan] ([Id]) Values (1)");
  const auto rows = connection_->execute("Select [Name],[Price],[Time],[Num] From [plan]");
  std::string out = "kept";
  for (std::size_t i = 0; i < rows->field_count(); ++i) {
    EXPECT_TRUE(rows->field(i).is_null()) << i;
    EXPECT_FALSE(rows->append_field_text(i, out)) << i;
  }
  EXPECT_EQ(out, "kept");
}

TEST_P(DatabaseRules, FieldsAreFoundInAnyLetterCase) {
  fill(1);
  const auto rows = connection_->execute("select id, NAME from PLAN");
  EXPECT_EQ(rows->ordinal("ID"), 0u);
  EXPECT_EQ(rows->ordinal("name"), 1u);
  EXPECT_EQ(rows->field_count(), 2u);
  EXPECT_EQ(rows->field("Name").as_view(), "n1");
}

TEST_P(DatabaseRules, AFieldThatIsNotThereIs3265) {
  fill(1);
  const auto rows = connection_->execute("Select [Id] From [plan]");
  EXPECT_EQ(error_of([&] { rows->field("Name"); }), 3265);
  EXPECT_EQ(error_of([&] { rows->field(1); }), 3265);
  std::string out;
  EXPECT_EQ(error_of([&] { rows->append_field_text(7, out); }), 3265);
  EXPECT_EQ(error_of([&] { rows->field_name(1); }), 3265);
}

TEST_P(DatabaseRules, AFieldPastTheEndIs3021) {
  const auto none = connection_->execute("Select [Id] From [plan]");
  EXPECT_EQ(error_of([&] { none->field("Id"); }), 3021);
  EXPECT_EQ(error_of([&] { none->move_next(); }), 3021);
  fill(1);
  const auto rows = by_id();
  rows->move_next();
  EXPECT_TRUE(rows->eof());
  EXPECT_EQ(error_of([&] { rows->field("Id"); }), 3021);
}

TEST_P(DatabaseRules, AFieldsTextIsTheTextOfItsValue) {
  run("Insert Into [plan] ([Name],[Price],[Flag],[Time],[Num]) Values "
      "('\xE4\xB8\xAD x',1.25,False,#2024-03-04#,-12)");
  run("Insert Into [plan] ([Name],[Price],[Flag],[Time],[Num]) Values "
      "('',100,True,#12:30:00#,2147483647)");
  const auto rows = connection_->execute(
      "Select *, [Price]*2 As a, [Num]/4 As b, [Name]&'!' As c From [plan] Order By [Id]");
  for (; !rows->eof(); rows->move_next()) {
    for (std::size_t i = 0; i < rows->field_count(); ++i) {
      std::string out;
      EXPECT_TRUE(rows->append_field_text(i, out)) << rows->field_name(i);
      EXPECT_EQ(out, joined_text(rows->field(i)).string()) << rows->field_name(i);
    }
  }
}

TEST_P(DatabaseRules, FunctionsAndAggregatesOfTheDialectAnswer) {
  fill(4);
  EXPECT_EQ(all("Select UCase([Name]) As u From [plan] Where [Id]=2", "u"), "N2");
  EXPECT_EQ(all("Select First([Name])&Last([Name]) As f From [plan]", "f"), "n1n4");
  EXPECT_EQ(all("Select StDev([Num]) As s From [plan] Where [Id]<1", "s"), "");
  EXPECT_EQ(all("Select StDev([Num]) As s From [plan] Where [Id]<3", "s"), "7.07106781186548");
}

TEST_P(DatabaseRules, AFunctionsErrorReachesThePageWithItsNumber) {
  fill(1);
  EXPECT_EQ(error_of([&] { connection_->execute("Select CLng([Name]) As n From [plan]"); }),
            -2147217913);
  EXPECT_EQ(all("Select CLng([Num]) As n From [plan]", "n"), "10");
}

TEST_P(DatabaseRules, NowIsTheClockOfTheRun) {
  run("Insert Into [plan] ([Time]) Values (Now())");
  EXPECT_EQ(all("Select [Time] From [plan] Where [Time]=Now()", "Time"), "2023-03-15 12:00:00");
  EXPECT_EQ(keyset("Select [Time] From [plan] Where [Time]>=Date()")->record_count(), 1);
}

// ---- Forward-only record sets

TEST_P(DatabaseRules, ExecuteGivesAForwardOnlyRecordSet) {
  fill(3);
  const auto rows = connection_->execute("Select [Id] From [plan] Order By [Id]");
  EXPECT_EQ(rows->record_count(), -1);
  EXPECT_EQ(error_of([&] { rows->move_previous(); }), 3251);
  EXPECT_EQ(error_of([&] { rows->move_last(); }), 3251);
  EXPECT_EQ(error_of([&] { rows->set_absolute_page(1); }), 3251);
  EXPECT_EQ(error_of([&] { rows->add_new(); }), 3251);
  EXPECT_EQ(rest(*rows, "Id"), "1 2 3");
}

TEST_P(DatabaseRules, AnEmptyRecordSetIsAtBothEnds) {
  const auto once = connection_->execute("Select [Id] From [plan]");
  EXPECT_TRUE(once->bof() && once->eof());
  const auto rows = by_id();
  EXPECT_TRUE(rows->bof() && rows->eof());
  EXPECT_EQ(rows->record_count(), 0);
  EXPECT_EQ(rows->page_count(), 0);
  EXPECT_EQ(error_of([&] { rows->set_absolute_page(1); }), 3021);
  EXPECT_EQ(error_of([&] { rows->set_absolute_page(0); }), 3021);
  EXPECT_EQ(error_of([&] { rows->set_absolute_position(1); }), 3021);
  EXPECT_EQ(error_of([&] { rows->move_first(); }), 3021);
  EXPECT_EQ(error_of([&] { rows->move_last(); }), 3021);
  EXPECT_EQ(error_of([&] { rows->move_previous(); }), 3021);
  EXPECT_EQ(rows->absolute_position(), -1);
}

TEST_P(DatabaseRules, ALongForwardOnlyWalkGivesEachRowOnce) {
  fill(1000);
  const auto rows = connection_->execute("Select [Id] From [plan] Order By [Id]");
  int expected = 0;
  for (; !rows->eof(); rows->move_next()) {
    ASSERT_EQ(rows->field("Id").as_long(), ++expected);
  }
  EXPECT_EQ(expected, 1000);
}

TEST_P(DatabaseRules, MoveFirstRunsALongForwardOnlyWalkAgain) {
  fill(1000);
  const auto rows = connection_->execute("Select [Id] From [plan] Where [Num]>=20 Order By [Id]");
  for (int i = 0; i < 700; ++i) rows->move_next();
  EXPECT_EQ(text(*rows, "Id"), "702");
  rows->move_first();
  EXPECT_EQ(text(*rows, "Id"), "2");
  EXPECT_EQ(error_of([&] { rows->move(998, platform::Recordset::Origin::Current); }), 0);
  EXPECT_EQ(text(*rows, "Id"), "1000");
}

TEST_P(DatabaseRules, TheSameTextMayBeWalkedInsideItsOwnWalk) {
  fill(300);
  const std::string sql = "Select [Id] From [plan] Where [Id]<=299 Order By [Id]";
  const auto outer = connection_->execute(sql);
  outer->move_next();
  int inner_rows = 0;
  for (const auto inner = connection_->execute(sql); !inner->eof(); inner->move_next()) {
    ++inner_rows;
  }
  EXPECT_EQ(inner_rows, 299);
  EXPECT_EQ(text(*outer, "Id"), "2");
}

TEST_P(DatabaseRules, AForwardOnlyWalkGoesOnThroughThePagesOwnWrites) {
  fill(600);
  const auto rows = connection_->execute("Select [Id] From [plan] Order By [Id]");
  int seen = 0;
  for (; !rows->eof(); rows->move_next()) {
    ++seen;
    if (seen % 100 == 0) run("Delete From [plan] Where [Id]=" + text(*rows, "Id"));
  }
  EXPECT_EQ(seen, 600);
  EXPECT_EQ(all("Select Count(*) As n From [plan]", "n"), "594");
}

// ---- Pages

TEST_P(DatabaseRules, PagesCountFromOneAndTheLastIsShort) {
  fill(45);
  const auto rows = by_id();
  EXPECT_EQ(rows->page_size(), 10);
  rows->set_page_size(20);
  EXPECT_EQ(rows->record_count(), 45);
  EXPECT_EQ(rows->page_count(), 3);
  EXPECT_EQ(rows->absolute_page(), 1);
  rows->set_absolute_page(3);
  EXPECT_EQ(rows->absolute_page(), 3);
  EXPECT_EQ(rows->absolute_position(), 41);
  EXPECT_EQ(rest(*rows, "Id"), "41 42 43 44 45");
}

TEST_P(DatabaseRules, APageSizeBelowOneIs3001) {
  fill(1);
  const auto rows = by_id();
  EXPECT_EQ(error_of([&] { rows->set_page_size(0); }), 3001);
  EXPECT_EQ(error_of([&] { rows->set_page_size(-3); }), 3001);
  EXPECT_EQ(rows->page_size(), 10);
}

TEST_P(DatabaseRules, APageBelowOneIs3001AndOnePastTheLastIsTheEnd) {
  fill(25);
  const auto rows = by_id();
  EXPECT_EQ(error_of([&] { rows->set_absolute_page(0); }), 3001);
  EXPECT_EQ(error_of([&] { rows->set_absolute_page(-1); }), 3001);
  rows->set_absolute_page(4);
  EXPECT_TRUE(rows->eof());
  EXPECT_FALSE(rows->bof());
  EXPECT_EQ(rows->absolute_page(), -3);
  rows->set_absolute_page(2);
  EXPECT_EQ(text(*rows, "Id"), "11");
  rows->set_absolute_page(2147483647);
  EXPECT_TRUE(rows->eof());
}

TEST_P(DatabaseRules, APositionBelowOneIs3001AndOnePastTheLastIsTheEnd) {
  fill(5);
  const auto rows = by_id();
  EXPECT_EQ(error_of([&] { rows->set_absolute_position(0); }), 3001);
  rows->set_absolute_position(6);
  EXPECT_TRUE(rows->eof());
  rows->set_absolute_position(5);
  EXPECT_EQ(text(*rows, "Id"), "5");
}

TEST_P(DatabaseRules, APageIsWalkedBackwardsFromAPosition) {
  fill(45);
  const auto rows = keyset("select * From plan order by Id");
  rows->set_page_size(20);
  for (const int page : {1, 2, 3}) {
    rows->set_absolute_position(rows->record_count() - 20 * (page - 1));
    std::vector<int> seen;
    for (int i = 0; i < 20; ++i) {
      seen.push_back(rows->field("id").as_long());
      rows->move_previous();
      if (rows->bof()) break;
    }
    EXPECT_EQ(seen.front(), 45 - 20 * (page - 1));
    EXPECT_EQ(seen.size(), page == 3 ? 5u : 20u);
    EXPECT_EQ(seen.back(), seen.front() - static_cast<int>(seen.size()) + 1);
    rows->set_absolute_page(page + 1);
    EXPECT_EQ(rows->eof(), page == 3);
  }
}

TEST_P(DatabaseRules, MovesBeyondTheEndsStandAtThem) {
  fill(3);
  using Origin = platform::Recordset::Origin;
  const auto rows = by_id();
  rows->move(7, Origin::Current);
  EXPECT_TRUE(rows->eof());
  EXPECT_EQ(error_of([&] { rows->move(1, Origin::Current); }), 3021);
  rows->move(-1, Origin::Current);
  EXPECT_EQ(text(*rows, "Id"), "3");
  rows->move(-9, Origin::Current);
  EXPECT_TRUE(rows->bof());
  EXPECT_FALSE(rows->eof());
  EXPECT_EQ(rows->absolute_position(), -2);
  EXPECT_EQ(error_of([&] { rows->move_previous(); }), 3021);
  EXPECT_EQ(error_of([&] { rows->field("Id"); }), 3021);
  rows->move_next();
  EXPECT_EQ(text(*rows, "Id"), "1");
  rows->move(1, Origin::First);
  EXPECT_EQ(text(*rows, "Id"), "2");
  rows->move(-2, Origin::Last);
  EXPECT_EQ(text(*rows, "Id"), "1");
  rows->move_last();
  EXPECT_EQ(text(*rows, "Id"), "3");
  rows->move_next();
  EXPECT_EQ(rows->absolute_position(), -3);
  EXPECT_EQ(error_of([&] { rows->move_next(); }), 3021);
  rows->move_first();
  EXPECT_EQ(rest(*rows, "Id"), "1 2 3");
}

TEST_P(DatabaseRules, EveryWalkOfEveryPageSizeShowsTheSameRows) {
  fill(333);
  constexpr int kNotSet = 0;
  for (const int size : {kNotSet, 1, 7, 20, 111, 333, 5000}) {
    for (const bool scope : {false, true}) {
      if (scope) connection_->begin_read();
      const auto rows = by_id();
      if (size != kNotSet) rows->set_page_size(size);
      int expected = 0;
      for (; !rows->eof(); rows->move_next()) ASSERT_EQ(rows->field("Id").as_long(), ++expected);
      EXPECT_EQ(expected, 333) << size;
      for (rows->move_last(); !rows->bof(); rows->move_previous()) {
        ASSERT_EQ(rows->field("Id").as_long(), expected--) << size;
      }
      EXPECT_EQ(expected, 0) << size;
      if (scope) connection_->end_read();
    }
  }
}

TEST_P(DatabaseRules, JumpsAnywhereFindTheRowOfThatNumber) {
  fill(333);
  run("Update [plan] Set [Num]=[Id]-Int([Id]/7)*7");
  const std::string sql = "Select [Id],[Name] From [plan] Where [Id]>3 Order By [Num] Desc";
  std::vector<std::string> in_order;
  for (const auto rows = connection_->execute(sql); !rows->eof(); rows->move_next()) {
    in_order.push_back(text(*rows, "Id"));
  }
  for (const bool scope : {false, true}) {
    if (scope) connection_->begin_read();
    for (const Lock lock : {Lock::ReadOnly, Lock::Optimistic}) {
      const auto rows = keyset(sql, lock);
      rows->set_page_size(20);
      ASSERT_EQ(rows->record_count(), 330);
      for (const int start : {330, 1, 311, 166, 167, 310, 200, 300, 17, 329}) {
        rows->set_absolute_position(start);
        for (int at = start; at <= 330; ++at, rows->move_next()) {
          ASSERT_EQ(text(*rows, "Id"), in_order[static_cast<std::size_t>(at - 1)]) << start;
        }
        EXPECT_TRUE(rows->eof());
        rows->set_absolute_position(start);
        for (int at = start; at > start - 50 && at > 0; --at, rows->move_previous()) {
          ASSERT_EQ(text(*rows, "Id"), in_order[static_cast<std::size_t>(at - 1)]) << start;
        }
      }
    }
    if (scope) connection_->end_read();
  }
}

TEST_P(DatabaseRules, AJumpAfterAnotherPageAddedRowsCountsFromTheFirst) {
  fill(50);
  const auto rows = by_id();
  rows->set_page_size(5);
  EXPECT_EQ(rows->record_count(), 50);
  const auto other_page = world_->page();
  const auto other = other_page->connection();
  other->open(world_->connection_string());
  other->execute("Insert Into [plan] ([Name]) Values ('x')");
  rows->set_absolute_position(48);
  EXPECT_EQ(text(*rows, "Id"), "48");
}

TEST_P(DatabaseRules, TopBoundsTheCountAndTheRows) {
  fill(9);
  const auto rows = keyset("Select Top 4 [Id] From [plan] Order By [Id] Desc");
  EXPECT_EQ(rows->record_count(), 4);
  rows->set_page_size(3);
  EXPECT_EQ(rows->page_count(), 2);
  rows->set_absolute_page(2);
  EXPECT_EQ(rest(*rows, "Id"), "6");
}

TEST_P(DatabaseRules, AForwardOnlyCursorThatMayWriteStillDoesNotCount) {
  fill(3);
  const auto rows = connection_->open_recordset("Select * From [plan] Order By [Id]",
                                                Cursor::ForwardOnly, Lock::Optimistic);
  EXPECT_EQ(rows->record_count(), -1);
  EXPECT_EQ(error_of([&] { rows->move_previous(); }), 3251);
  rows->set_field("Num", Value::integer(5));
  rows->update();
  EXPECT_EQ(rest(*rows, "Num"), "5 20 30");
}

// ---- Counts

TEST_P(DatabaseRules, TheCountFollowsWritesOfThePageAndOfOthers) {
  fill(3);
  EXPECT_EQ(by_id()->record_count(), 3);
  EXPECT_EQ(by_id()->record_count(), 3);
  run("Insert Into [plan] ([Name]) Values ('x')");
  EXPECT_EQ(by_id()->record_count(), 4);
  const auto other_page = world_->page();
  const auto other = other_page->connection();
  other->open(world_->connection_string());
  other->execute("Delete From [plan] Where [Id]<3");
  EXPECT_EQ(by_id()->record_count(), 2);
  other->execute("Insert Into [plan] ([Name]) Values ('y')");
  EXPECT_EQ(by_id()->record_count(), 3);
}

TEST_P(DatabaseRules, TheCountInsideATransactionSeesThePagesOwnRows) {
  fill(3);
  EXPECT_EQ(by_id()->record_count(), 3);
  connection_->begin_transaction();
  run("Insert Into [plan] ([Name]) Values ('x')");
  EXPECT_EQ(by_id()->record_count(), 4);
  connection_->roll_back_transaction();
  EXPECT_EQ(by_id()->record_count(), 3);
}

TEST_P(DatabaseRules, CountsOfOneTextWithOtherValuesAreApart) {
  fill(9);
  for (int round = 0; round < 2; ++round) {
    for (int least = 1; least <= 9; ++least) {
      const auto rows =
          keyset("Select [Id] From [plan] Where [Num]>=" + std::to_string(least * 10) +
                 " And [Name]<>'zz'");
      EXPECT_EQ(rows->record_count(), 10 - least);
    }
  }
}

// ---- Views and transactions

TEST_P(DatabaseRules, OneScopeSeesOneStateOfTheDatabase) {
  fill(2);
  const auto other_page = world_->page();
  const auto other = other_page->connection();
  other->open(world_->connection_string());
  {
    const platform::ReadScope scope(*connection_);
    EXPECT_EQ(all("Select Count(*) As n From [plan]", "n"), "2");
    other->execute("Insert Into [plan] ([Name]) Values ('x')");
    EXPECT_EQ(all("Select Count(*) As n From [plan]", "n"), "2");
    {
      const platform::ReadScope inner(*connection_);
      EXPECT_EQ(by_id()->record_count(), 2);
    }
    EXPECT_EQ(by_id()->record_count(), 2);
  }
  EXPECT_EQ(all("Select Count(*) As n From [plan]", "n"), "3");
  EXPECT_EQ(by_id()->record_count(), 3);
}

TEST_P(DatabaseRules, AWriteInsideAScopeIsSeenByTheScopesLaterReads) {
  fill(2);
  const platform::ReadScope scope(*connection_);
  EXPECT_EQ(by_id()->record_count(), 2);
  run("Insert Into [plan] ([Name]) Values ('x')");
  EXPECT_EQ(by_id()->record_count(), 3);
}

TEST_P(DatabaseRules, AnOpenRecordSetLetsOthersWriteAndThePageWriteAfterThem) {
  fill(500);
  const auto rows = by_id();
  EXPECT_EQ(text(*rows, "Id"), "1");
  const auto once = connection_->execute("Select [Id] From [plan] Order By [Id]");
  const auto other_page = world_->page();
  const auto other = other_page->connection();
  other->open(world_->connection_string());
  other->execute("Update [plan] Set [Num]=0 Where [Id]=500");
  run("Update [plan] Set [Num]=1 Where [Id]=499");
  EXPECT_EQ(all("Select [Num] From [plan] Where [Id]>498 Order By [Id]", "Num"), "1 0");
}

TEST_P(DatabaseRules, AWalkShowsTheRowsThatWereThereWhenThePageChangesThem) {
  fill(200);
  const auto rows = keyset("Select [Id] From [plan] Where [Num]>0 Order By [Id]", Lock::ReadOnly);
  int seen = 0;
  for (; !rows->eof(); rows->move_next()) {
    ++seen;
    run("Update [plan] Set [Num]=0 Where [Id]=" + text(*rows, "Id"));
  }
  EXPECT_EQ(seen, 200);
}

TEST_P(DatabaseRules, CommitKeepsAndRollBackUndoes) {
  connection_->begin_transaction();
  run("Insert Into [plan] ([Name]) Values ('kept')");
  connection_->commit_transaction();
  connection_->begin_transaction();
  run("Insert Into [plan] ([Name]) Values ('undone')");
  connection_->roll_back_transaction();
  EXPECT_EQ(all("Select [Name] From [plan]", "Name"), "kept");
}

TEST_P(DatabaseRules, AWalkGoesOnThroughARollBack) {
  fill(600);
  connection_->begin_transaction();
  run("Update [plan] Set [Num]=0");
  const auto rows = connection_->execute("Select [Id] From [plan] Order By [Id]");
  run("Create Table [extra] ([a] Long)");
  connection_->roll_back_transaction();
  int seen = 0;
  for (; !rows->eof(); rows->move_next()) ++seen;
  EXPECT_EQ(seen, 600);
}

TEST_P(DatabaseRules, ATransactionInsideAnotherIsUndoneAlone) {
  connection_->begin_transaction();
  run("Insert Into [plan] ([Name]) Values ('outer')");
  connection_->begin_transaction();
  run("Insert Into [plan] ([Name]) Values ('inner')");
  connection_->roll_back_transaction();
  run("Insert Into [plan] ([Name]) Values ('after')");
  connection_->commit_transaction();
  EXPECT_EQ(all("Select [Name] From [plan] Order By [Id]", "Name"), "outer after");
}

TEST_P(DatabaseRules, EndingATransactionThatWasNotBegunIsAnError) {
  EXPECT_NE(error_of([&] { connection_->commit_transaction(); }), 0);
  EXPECT_NE(error_of([&] { connection_->roll_back_transaction(); }), 0);
}

TEST_P(DatabaseRules, ClosingAConnectionUndoesItsOpenTransaction) {
  connection_->begin_transaction();
  run("Insert Into [plan] ([Name]) Values ('x')");
  connection_->close();
  connection_->open(world_->connection_string());
  EXPECT_EQ(by_id()->record_count(), 0);
}

TEST_P(DatabaseRules, ASecondConnectionOfThePageTakesPartInItsTransaction) {
  connection_->begin_transaction();
  run("Insert Into [plan] ([Name]) Values ('first')");
  const auto second = open();
  second->execute("Insert Into [plan] ([Name]) Values ('second')");
  const auto rows =
      second->open_recordset("Select * From [plan]", Cursor::Keyset, Lock::Optimistic);
  rows->add_new();
  rows->set_field("Name", Value::text("third"));
  rows->update();
  EXPECT_EQ(rest(*second->execute("Select [Name] From [plan] Order By [Id]"), "Name"),
            "first second third");
  connection_->roll_back_transaction();
  EXPECT_EQ(by_id()->record_count(), 0);
}

TEST_P(DatabaseRules, ATableMadeByThePageIsThereAtOnceAndGoneAfterRollBack) {
  connection_->begin_transaction();
  run("Create Table [extra] ([a] Long)");
  run("Insert Into [extra] ([a]) Values (4)");
  EXPECT_EQ(all("Select * From [extra]", "a"), "4");
  connection_->roll_back_transaction();
  EXPECT_EQ(error_of([&] { connection_->execute("Select * From [extra]"); }), -2147217865);
  run("Create Table [extra] ([b] Text(9))");
  run("Insert Into [extra] ([b]) Values ('x')");
  EXPECT_EQ(all("Select * From [extra]", "b"), "x");
}

TEST_P(DatabaseRules, AColumnAddedByAnotherConnectionIsShown) {
  fill(1);
  EXPECT_EQ(connection_->execute("Select * From [plan]")->field_count(), 6u);
  const auto other_page = world_->page();
  const auto other = other_page->connection();
  other->open(world_->connection_string());
  other->execute("Alter Table [plan] Add Column [More] Text(9)");
  EXPECT_EQ(connection_->execute("Select * From [plan]")->field_count(), 7u);
}

// ---- AddNew, Update, Delete

TEST_P(DatabaseRules, AddNewStoresARowAndShowsItWithItsNumber) {
  const auto rows = keyset("Select * From [plan]");
  rows->add_new();
  rows->set_field("name", Value::text("a'b"));
  rows->set_field("Price", Value::currency(-15000));
  rows->set_field("Flag", Value::boolean(true));
  rows->set_field("Time", Value::date(45000.25));
  rows->set_field("Num", Value::text("12"));
  rows->update();
  EXPECT_EQ(rows->field("Id").as_long(), 1);
  EXPECT_EQ(text(*rows, "Name"), "a'b");
  const auto stored = connection_->execute("Select * From [plan]");
  EXPECT_EQ(stored->field("Price").as_currency(), -15000);
  EXPECT_TRUE(stored->field("Flag").as_boolean());
  EXPECT_EQ(text(*stored, "Time"), "2023-03-15 06:00:00");
  EXPECT_EQ(stored->field("Num").as_long(), 12);
}

TEST_P(DatabaseRules, AnAmountPastACurrencyIsAnErrorAndStoresNothing) {
  for (const Value& amount : {Value::real(1e20), Value::text("-1E+15")}) {
    const auto rows = keyset("Select * From [plan]");
    rows->add_new();
    rows->set_field("Price", amount);
    EXPECT_EQ(error_of([&] { rows->update(); }), -2147217833);
  }
  EXPECT_EQ(error_of([&] { run("Insert Into [plan] ([Price]) Values (1E+20)"); }), -2147217833);
  EXPECT_EQ(error_of([&] { run("Insert Into [plan] ([Price]) Values (1E+10*1E+10)"); }),
            -2147217833);
  EXPECT_EQ(all("Select Count(*) As n From [plan]", "n"), "0");
}

TEST_P(DatabaseRules, AnAmountIsStoredWithFourDecimals) {
  const auto rows = keyset("Select * From [plan]");
  rows->add_new();
  rows->set_field("Price", Value::real(33.333333));
  rows->update();
  EXPECT_EQ(all("Select [Price]*3 As n From [plan]", "n"), "99.9999");
}

TEST_P(DatabaseRules, ABooleanInATextColumnIsItsText) {
  const auto rows = keyset("Select * From [plan]");
  for (const bool flag : {true, false}) {
    rows->add_new();
    rows->set_field("Name", Value::boolean(flag));
    rows->update();
  }
  EXPECT_EQ(all("Select [Name] From [plan] Order By [Id]", "Name"), "True False");
}

TEST_P(DatabaseRules, FieldsNotSetTakeTheTablesDefaults) {
  run("Create Table [d] ([Id] Counter primary key, [a] Long default 7, [b] Text(9) default 'q', "
      "[c] Text(9))");
  const auto rows = keyset("Select * From [d]");
  rows->add_new();
  rows->update();
  EXPECT_EQ(text(*rows, "a"), "7");
  EXPECT_EQ(text(*rows, "b"), "q");
  EXPECT_TRUE(rows->field("c").is_null());
}

TEST_P(DatabaseRules, SeveralRowsAreAddedOverOneRecordSet) {
  const auto rows = keyset("Select * From [plan]");
  for (int i = 1; i <= 3; ++i) {
    rows->add_new();
    rows->set_field("Num", Value::integer(static_cast<std::int16_t>(i)));
    rows->update();
    EXPECT_EQ(rows->field("Id").as_long(), i);
  }
  EXPECT_EQ(rows->record_count(), 3);
  rows->move_first();
  EXPECT_EQ(rest(*rows, "Num"), "1 2 3");
}

TEST_P(DatabaseRules, AnAddedRowStandsBehindTheRowsAlreadyShown) {
  fill(2);
  const auto rows = by_id();
  EXPECT_EQ(text(*rows, "Id"), "1");
  rows->add_new();
  rows->set_field("Name", Value::text("new"));
  EXPECT_EQ(text(*rows, "Name"), "new");
  EXPECT_TRUE(rows->field("Num").is_null());
  rows->update();
  EXPECT_EQ(rows->record_count(), 3);
  EXPECT_EQ(rows->absolute_position(), 3);
  rows->move_next();
  EXPECT_TRUE(rows->eof());
  rows->move_first();
  EXPECT_EQ(rest(*rows, "Name"), "n1 n2 new");
}

TEST_P(DatabaseRules, MovingOnStoresThePendingRow) {
  fill(1);
  const auto rows = keyset("Select * From [plan]");
  rows->add_new();
  rows->set_field("Name", Value::text("pending"));
  rows->move_first();
  EXPECT_EQ(all("Select [Name] From [plan] Order By [Id]", "Name"), "n1 pending");
}

TEST_P(DatabaseRules, CancelUpdateForgetsThePendingRow) {
  fill(1);
  const auto rows = keyset("Select * From [plan]");
  rows->add_new();
  rows->set_field("Name", Value::text("never"));
  rows->cancel_update();
  EXPECT_EQ(text(*rows, "Name"), "n1");
  rows->close();
  EXPECT_EQ(by_id()->record_count(), 1);
}

TEST_P(DatabaseRules, ClosingWithAPendingRowIs3219) {
  const auto rows = keyset("Select * From [plan]");
  rows->add_new();
  EXPECT_EQ(error_of([&] { rows->close(); }), 3219);
  rows->cancel_update();
  rows->close();
  EXPECT_EQ(error_of([&] { rows->close(); }), 3704);
}

TEST_P(DatabaseRules, AReadOnlyLockRefusesChangesBy3251) {
  fill(1);
  const auto rows = keyset("Select * From [plan]", Lock::ReadOnly);
  EXPECT_EQ(error_of([&] { rows->add_new(); }), 3251);
  EXPECT_EQ(error_of([&] { rows->set_field("Name", Value::text("x")); }), 3251);
  EXPECT_EQ(error_of([&] { rows->update(); }), 3251);
  EXPECT_EQ(error_of([&] { rows->remove(); }), 3251);
}

TEST_P(DatabaseRules, ARecordSetOfNoTableRefusesChangesBy3251) {
  fill(1);
  const auto rows = keyset("Select Count(*) As n From [plan]");
  EXPECT_EQ(error_of([&] { rows->add_new(); }), 3251);
}

// ---- Joins: [plan] with the class of each

TEST_P(DatabaseRules, ARecordSetOverAJoinWritesToTheTableOfItsRows) {
  fill_classes();
  const auto rows = keyset(kJoin);
  EXPECT_EQ(rest(*rows, "Title"), "one two one");
  rows->move_first();
  rows->set_field("Name", Value::text("changed"));
  rows->update();
  EXPECT_EQ(text(*rows, "Name"), "changed");
  EXPECT_EQ(text(*rows, "Title"), "one");
  rows->move_next();
  rows->remove();
  EXPECT_EQ(all("Select [Name] From [plan] Order By [Id]", "Name"), "changed n3");
  EXPECT_EQ(all("Select [Title] From [class] Order By [ClassId]", "Title"), "one two");
}

TEST_P(DatabaseRules, AKeyThatIsChangedBringsTheOtherTablesValues) {
  fill_classes();
  const auto rows = keyset(kJoin);
  rows->set_field("Num", Value::long_integer(2));
  rows->update();
  EXPECT_EQ(text(*rows, "Title"), "two");
  // A class that is not there: the row shows what it showed of it.
  rows->set_field("Num", Value::long_integer(9));
  rows->update();
  EXPECT_EQ(text(*rows, "Num"), "9");
  EXPECT_EQ(text(*rows, "Title"), "two");
}

TEST_P(DatabaseRules, ARowAddedToAJoinShowsItsPartner) {
  fill_classes();
  const auto rows = keyset(kJoin);
  rows->add_new();
  rows->set_field("Name", Value::text("fresh"));
  rows->set_field("Num", Value::long_integer(2));
  rows->update();
  EXPECT_EQ(text(*rows, "Id"), "4");
  EXPECT_EQ(text(*rows, "Title"), "two");
  rows->add_new();
  rows->set_field("Name", Value::text("alone"));
  rows->update();
  EXPECT_TRUE(rows->field("Title").is_null());
  EXPECT_EQ(all("Select [Name] From [plan] Order By [Id]", "Name"), "n1 n2 n3 fresh alone");
}

TEST_P(DatabaseRules, TheOtherTableOfAJoinIsShownOnly) {
  fill_classes();
  const auto rows = keyset(kJoin);
  EXPECT_EQ(error_of([&] { rows->set_field("Title", Value::text("x")); }), 3251);
  EXPECT_FALSE(rows->traits(rows->ordinal("Title")).writable);
  EXPECT_TRUE(rows->traits(rows->ordinal("Name")).writable);
  EXPECT_EQ(rows->traits(rows->ordinal("Title")).size, 20);
}

TEST_P(DatabaseRules, AnOuterJoinsRowWithoutItsTableCannotBeChanged) {
  fill_classes();
  run("Insert Into [class] ([Title]) Values ('empty')");
  const auto rows = keyset(
      "Select [plan].[Name],[class].[Title] From [class] Left Join [plan] On "
      "[plan].[Num]=[class].[ClassId] Where [class].[ClassId]=3");
  EXPECT_TRUE(rows->field("Name").is_null());
  EXPECT_EQ(error_of([&] { rows->set_field("Name", Value::text("x")); }), 3251);
  EXPECT_EQ(error_of([&] { rows->remove(); }), 3251);
}

TEST_P(DatabaseRules, AJoinWithoutAKeyRefusesChangesBy3251) {
  fill_classes();
  const auto rows = keyset("Select [plan].[Name],[class].[Title] From [plan],[class]");
  EXPECT_EQ(error_of([&] { rows->set_field("Name", Value::text("x")); }), 3251);
  EXPECT_EQ(error_of([&] { rows->add_new(); }), 3251);
}

TEST_P(DatabaseRules, AUniqueIndexMakesAColumnAKeyOfItsTable) {
  run("Create Table [word] ([Word] Text(20), [Means] Text(20))");
  run("Insert Into [word] Values ('n1','first')");
  fill(1);
  const std::string sql =
      "Select [plan].[Num],[word].[Means] From [plan],[word] Where [plan].[Name]=[word].[Word]";
  EXPECT_EQ(error_of([&] { keyset(sql)->set_field("Num", Value::long_integer(1)); }), 3251);
  run("Create Unique Index [w] On [word] ([Word])");
  const auto rows = keyset(sql);
  rows->set_field("Num", Value::long_integer(77));
  rows->update();
  EXPECT_EQ(all("Select [Num] From [plan]", "Num"), "77");
}

TEST_P(DatabaseRules, SetFieldOfAColumnThatIsNotThereIs3265) {
  const auto rows = keyset("Select * From [plan]");
  rows->add_new();
  EXPECT_EQ(error_of([&] { rows->set_field("nix", Value::text("x")); }), 3265);
  rows->cancel_update();
}

TEST_P(DatabaseRules, AValueThatTheColumnCannotTakeStoresNoRow) {
  const auto rows = keyset("Select * From [plan]");
  rows->add_new();
  rows->set_field("Num", Value::text("word"));
  EXPECT_EQ(error_of([&] { rows->update(); }), -2147217913);
  rows->cancel_update();
  EXPECT_EQ(by_id()->record_count(), 0);
}

TEST_P(DatabaseRules, UpdateChangesTheCurrentRowOnly) {
  fill(3);
  const auto rows = by_id();
  rows->move_next();
  rows->set_field("Name", Value::text("changed"));
  rows->set_field("Num", Value::null());
  rows->update();
  EXPECT_EQ(text(*rows, "Name"), "changed");
  rows->move_next();
  EXPECT_EQ(text(*rows, "Name"), "n3");
  EXPECT_EQ(all("Select [Name] From [plan] Order By [Id]", "Name"), "n1 changed n3");
  EXPECT_EQ(all("Select [Name] From [plan] Where [Num] Is Null", "Name"), "changed");
}

TEST_P(DatabaseRules, UpdatesInAWalkReachEveryRow) {
  fill(150);
  const auto rows = keyset("Select * From [plan] Where [Num]>0 Order By [Num]");
  for (; !rows->eof(); rows->move_next()) {
    rows->set_field("Num", Value::integer(-1));
    rows->update();
  }
  EXPECT_EQ(all("Select Count(*) As n From [plan] Where [Num]=-1", "n"), "150");
}

TEST_P(DatabaseRules, ARemovedRowIsGoneAndTheNextOneFollows) {
  fill(4);
  const auto rows = by_id();
  rows->move_next();
  rows->remove();
  EXPECT_FALSE(rows->eof());
  EXPECT_EQ(error_of([&] { rows->field("Id"); }), 3021);
  EXPECT_EQ(rows->record_count(), 3);
  rows->move_next();
  EXPECT_EQ(text(*rows, "Id"), "3");
  rows->move_previous();
  EXPECT_EQ(text(*rows, "Id"), "1");
  EXPECT_EQ(all("Select [Id] From [plan] Order By [Id]", "Id"), "1 3 4");
}

TEST_P(DatabaseRules, EveryRowOfAWalkCanBeRemoved) {
  fill(100);
  const auto rows = by_id();
  while (!rows->eof()) {
    rows->remove();
    rows->move_next();
  }
  EXPECT_EQ(by_id()->record_count(), 0);
}

TEST_P(DatabaseRules, ARowThatAnotherPageRemovedCannotBeChanged) {
  fill(1);
  const auto rows = by_id();
  EXPECT_EQ(text(*rows, "Id"), "1");
  const auto other_page = world_->page();
  const auto other = other_page->connection();
  other->open(world_->connection_string());
  other->execute("Delete From [plan]");
  rows->set_field("Name", Value::text("x"));
  EXPECT_NE(error_of([&] { rows->update(); }), 0);
  rows->cancel_update();
}

TEST_P(DatabaseRules, AColumnTellsHowItWasDeclared) {
  const auto rows = keyset("Select *,[Num]+1 From [plan]");
  using platform::ColumnType;
  EXPECT_TRUE(rows->traits(0).counter);
  EXPECT_EQ(rows->traits(1).type, ColumnType::Text);
  EXPECT_EQ(rows->traits(1).size, 50);
  EXPECT_TRUE(rows->traits(1).writable);
  EXPECT_FALSE(rows->traits(1).required);
  EXPECT_EQ(rows->traits(2).type, ColumnType::Currency);
  EXPECT_EQ(rows->traits(4).type, ColumnType::Date);
  EXPECT_FALSE(rows->traits(6).writable);
  EXPECT_FALSE(keyset("Select * From [plan]", Lock::ReadOnly)->traits(1).writable);
}

TEST_P(DatabaseRules, TheOriginalValueStaysUntilTheUpdate) {
  fill(1);
  const auto rows = by_id();
  rows->set_field("Name", Value::text("new"));
  EXPECT_EQ(joined_text(rows->original(1)).view(), "n1");
  EXPECT_EQ(joined_text(rows->field("Name")).view(), "new");
  rows->update();
  EXPECT_EQ(joined_text(rows->original(1)).view(), "new");
}

TEST_P(DatabaseRules, TheSchemaListsTablesColumnsIndexesAndKeys) {
  run("Create Table [item] ([Code] Text(10) Not Null, [Plan] Long References [plan] ([Id]), "
      "Constraint pk Primary Key ([Code]))");
  run("Create Unique Index [byName] On [plan] ([Name],[Num])");
  const auto listed = [&](platform::SchemaList list, const std::vector<std::string>& names) {
    const platform::SchemaRows rows = connection_->schema(list);
    std::string out;
    for (const auto& row : rows.rows) {
      for (const std::string& name : names) {
        const auto place = std::find(rows.columns.begin(), rows.columns.end(), name);
        if (place == rows.columns.end()) return "no " + name;
        const Value& value = row[static_cast<std::size_t>(place - rows.columns.begin())];
        out += joined_text(value).string() + (&name == &names.back() ? ";" : ",");
      }
    }
    return out;
  };
  using platform::SchemaList;
  EXPECT_EQ(listed(SchemaList::Tables, {"TABLE_NAME", "TABLE_TYPE"}), "item,TABLE;plan,TABLE;");
  EXPECT_EQ(listed(SchemaList::Columns, {"TABLE_NAME", "COLUMN_NAME", "ORDINAL_POSITION",
                                         "DATA_TYPE", "IS_NULLABLE", "CHARACTER_MAXIMUM_LENGTH"}),
            "item,Code,1,130,False,10;item,Plan,2,3,True,;plan,Id,1,3,False,;"
            "plan,Name,2,130,True,50;plan,Price,3,6,True,;plan,Flag,4,11,True,;"
            "plan,Time,5,7,True,;plan,Num,6,3,True,;");
  const std::string indexes =
      listed(SchemaList::Indexes, {"TABLE_NAME", "INDEX_NAME", "UNIQUE", "COLUMN_NAME"});
  EXPECT_EQ(indexes,
            "item,PrimaryKey,True,Code;plan,byName,True,Name;plan,byName,True,Num;"
            "plan,PrimaryKey,True,Id;");
  EXPECT_EQ(listed(SchemaList::PrimaryKeys, {"TABLE_NAME", "COLUMN_NAME", "ORDINAL"}),
            "item,Code,1;plan,Id,1;");
  EXPECT_EQ(listed(SchemaList::ForeignKeys,
                   {"FK_TABLE_NAME", "FK_COLUMN_NAME", "PK_TABLE_NAME", "PK_COLUMN_NAME"}),
            "item,Plan,plan,Id;");
}

TEST_P(DatabaseRules, EightThreadsAddEveryRowOnce) {
  constexpr int kThreads = 8;
  constexpr int kRows = 25;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kRows; ++i) {
        const auto page = world_->page();
        const auto connection = page->connection();
        connection->open(world_->connection_string());
        const auto rows =
            connection->open_recordset("Select * From plan", Cursor::Keyset, Lock::Optimistic);
        rows->add_new();
        rows->set_field("Num", Value::long_integer(t * kRows + i));
        rows->update();
        rows->close();
        connection->close();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  const auto rows = keyset("Select Distinct [Num] From [plan]");
  EXPECT_EQ(rows->record_count(), kThreads * kRows);
  EXPECT_EQ(by_id()->record_count(), kThreads * kRows);
}

}  // namespace rk::tests

#endif  // RK_TESTS_ADAPTERS_DATABASE_RULES_H_
