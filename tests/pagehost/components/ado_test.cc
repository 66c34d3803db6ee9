#include <gtest/gtest.h>

#include "pagehost/components/ado_values.h"
#include "pagehost/components/command_object.h"
#include "pagehost/components/connection_object.h"
#include "pagehost/components/recordset_object.h"
#include "pagehost/components/row_criterion.h"
#include "tests/support/object_calls.h"
#include "tests/support/recording_database.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

class Ado : public ::testing::Test {
 protected:
  Ado() {
    database_->answer("Select * From t", {{"Id", "Name"},
                                          {{tests::number(1), t("one")},
                                           {tests::number(2), Value::null()},
                                           {tests::number(3), t("it's")}}});
    database_->answer("Select * From [t]", database_->rows_of("Select * From t"));
  }
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int32_t number) { return Value::long_integer(number); }
  Value connection() {
    Value made = Value::object(make_ref<ConnectionObject>(database_));
    get(made, "Open", {t("Data Source=a.db")});
    return made;
  }
  Value recordset() { return Value::object(make_ref<RecordsetObject>(database_)); }
  Value opened(std::int32_t cursor = 1, std::int32_t lock = 1) {
    Value rows = recordset();
    get(rows, "Open", {t("Select * From t"), connection(), n(cursor), n(lock)});
    return rows;
  }

  std::shared_ptr<tests::RecordingDatabase> database_ =
      std::make_shared<tests::RecordingDatabase>();
};

TEST_F(Ado, RowsAreReadByNameAndByNumber) {
  const Value rows = get(connection(), "Execute", {t("Select * From t")});
  EXPECT_EQ(text_of(get(rows, "", {t("name")})), "one");
  EXPECT_EQ(text_of(get(rows, "", {n(0)})), "1");
  get(rows, "MoveNext");
  EXPECT_TRUE(plain_value(get(rows, "", {t("Name")})).is_null());
  EXPECT_EQ(error_number([&] { get(rows, "", {t("nope")}); }), 3265);
  EXPECT_EQ(error_number([&] { get(rows, "", {n(2)}); }), 3265);
}

TEST_F(Ado, AFieldShowsTheRowThatIsCurrent) {
  const Value rows = opened();
  const Value field = get(rows, "Fields", {t("Id")});
  EXPECT_EQ(text_of(field), "1");
  get(rows, "MoveNext");
  EXPECT_EQ(text_of(field), "2");
  EXPECT_EQ(text_of(get(field, "Name")), "Id");
  EXPECT_EQ(text_of(get(field, "Type")), "3");
}

TEST_F(Ado, ReadingPastTheEndIsAnError) {
  const Value rows = opened();
  for (int i = 0; i < 3; ++i) get(rows, "MoveNext");
  EXPECT_TRUE(get(rows, "EOF").as_boolean());
  EXPECT_EQ(error_number([&] { text_of(get(rows, "", {t("Id")})); }), 3021);
  EXPECT_EQ(error_number([&] { get(rows, "MoveNext"); }), 3021);
}

TEST_F(Ado, CursorAndLockReachTheDatabase) {
  opened(1, 3);
  const auto& log = database_->log();
  EXPECT_NE(std::find(log.begin(), log.end(), "recordset 1 3 Select * From t"), log.end());
}

TEST_F(Ado, RecordsHeldByTheClientAreStatic) {
  const Value rows = recordset();
  let(rows, "CursorLocation", {n(3)});
  get(rows, "Open", {t("Select * From t"), connection()});
  EXPECT_EQ(text_of(get(rows, "CursorType")), "3");
}

TEST_F(Ado, ATableMayBeNamedInPlaceOfAStatement) {
  const Value rows = recordset();
  get(rows, "Open", {t("t"), connection()});
  EXPECT_EQ(text_of(get(rows, "Source")), "Select * From [t]");
}

TEST_F(Ado, WhatIsClosedOrOpenSaysSo) {
  const Value rows = recordset();
  EXPECT_EQ(error_number([&] { get(rows, "EOF"); }), 3704);
  EXPECT_EQ(error_number([&] { get(rows, "Close"); }), 3704);
  EXPECT_EQ(error_number([&] { get(rows, "Open", {t("Select * From t")}); }), 3709);
  const Value other = opened();
  EXPECT_EQ(error_number([&] { get(other, "Open"); }), 3705);
  const Value closed = Value::object(make_ref<ConnectionObject>(database_));
  EXPECT_EQ(error_number([&] { get(closed, "Execute", {t("x")}); }), 3704);
  EXPECT_EQ(error_number([&] { get(closed, "Close"); }), 3704);
}

TEST_F(Ado, APageSizeBelowOneIsRefused) {
  const Value rows = recordset();
  EXPECT_EQ(error_number([&] { let(rows, "PageSize", {n(0)}); }), 3001);
}

TEST_F(Ado, GetRowsGivesFieldsByRows) {
  const Value rows = opened();
  const Value all = get(rows, "GetRows", {n(2)});
  EXPECT_EQ(all.as_array().upper_bound(0), 1);
  EXPECT_EQ(all.as_array().upper_bound(1), 1);
  EXPECT_EQ(text_of(all.as_array().elements()[0]), "1");
  EXPECT_EQ(text_of(all.as_array().elements()[1]), "one");
  EXPECT_EQ(text_of(all.as_array().elements()[2]), "2");
  EXPECT_EQ(text_of(get(rows, "", {t("Id")})), "3");
}

TEST_F(Ado, GetStringJoinsColumnsAndRows) {
  EXPECT_EQ(text_of(get(opened(), "GetString", {n(2), n(-1), t(","), t(";"), t("-")})),
            "1,one;2,-;3,it's;");
}

TEST_F(Ado, FindGoesToTheRowOrToTheEnd) {
  const Value rows = opened();
  get(rows, "Find", {t("Name = 'IT''S'")});
  EXPECT_EQ(text_of(get(rows, "", {t("Id")})), "3");
  get(rows, "Find", {t("[Id] > 7")});
  EXPECT_TRUE(get(rows, "EOF").as_boolean());
}

TEST_F(Ado, ACriterionThatIsNoneIsRefused) {
  EXPECT_EQ(error_number([] { RowCriterion("Name"); }), 3001);
  EXPECT_EQ(error_number([] { RowCriterion("Name = Name"); }), 3001);
  EXPECT_EQ(error_number([] { RowCriterion("[Name"); }), 3001);
}

TEST_F(Ado, TheConnectionRemembersItsLastFailure) {
  const Value cn = connection();
  EXPECT_EQ(error_number([&] { get(cn, "Execute", {t("Selct")}); }), -2147217900);
  EXPECT_EQ(text_of(get(get(cn, "Errors"), "Count")), "1");
  EXPECT_EQ(text_of(get(get(cn, "Errors", {n(0)}), "Number")), "-2147217900");
  get(cn, "Execute", {t("Select * From t")});
  EXPECT_EQ(text_of(get(get(cn, "Errors"), "Count")), "0");
}

TEST_F(Ado, ParametersAreBoundAsValues) {
  const auto parameter = [](std::string name, Value value) {
    auto made = make_ref<ParameterObject>();
    made->name = std::move(name);
    made->value = std::move(value);
    return made;
  };
  const ParameterList list{parameter("@Name", t("O'Neil? @Name")), parameter("n", n(7)),
                           parameter("d", Value::date(45000.0))};
  const auto values_of = [&](std::string_view statement) {
    std::string out;
    const platform::SqlText sql = with_parameters(statement, list);
    for (const Value& each : sql.values()) {
      out += joined_text(each).string() + ";";
    }
    return out;
  };
  const std::string_view marked = "Select '?' From [a?b] Where a=? And b=?";
  EXPECT_EQ(with_parameters(marked, list).text(), marked);
  EXPECT_EQ(values_of(marked), "O'Neil? @Name;7;");
  EXPECT_EQ(with_parameters("Where a=@name And b=@n", list).text(), "Where a=? And b=?");
  EXPECT_EQ(values_of("Where b=@n And a=@name"), "7;O'Neil? @Name;");
  EXPECT_EQ(values_of("Parameters a Text; Select a"), "O'Neil? @Name;7;2023-03-15;");
  EXPECT_EQ(error_number([&] { with_parameters("????", list); }), -2147217904);
}

TEST_F(Ado, ACommandRunsWithItsParameters) {
  database_->answer("Select * From t Where Id=?", {{"Id"}, {{tests::number(2)}}});
  const Value command = Value::object(make_ref<CommandObject>(database_));
  let(command, "ActiveConnection", {connection()});
  let(command, "CommandText", {t("Select * From t Where Id=?")});
  const Value parameter = get(command, "CreateParameter", {t("id"), n(3), n(1), n(4), n(2)});
  get(get(command, "Parameters"), "Append", {parameter});
  EXPECT_EQ(text_of(get(get(command, "Execute"), "", {n(0)})), "2");
  const Value rows = recordset();
  get(rows, "Open", {command, Value::missing(), n(1), n(1)});
  EXPECT_EQ(text_of(get(rows, "", {n(0)})), "2");
  EXPECT_EQ(database_->bound(), (std::vector<std::string>{"2", "2"}));
}

TEST_F(Ado, ParametersThatOnlyGiveBackAreNotBound) {
  database_->answer("Select * From t Where Id=?", {{"Id"}, {{tests::number(2)}}});
  const Value command = Value::object(make_ref<CommandObject>(database_));
  let(command, "ActiveConnection", {connection()});
  let(command, "CommandText", {t("Select * From t Where Id=?")});
  const auto append = [&](const char* name, int direction, std::vector<Value> value) {
    std::vector<Value> all{t(name), n(3), n(direction), n(4)};
    all.insert(all.end(), value.begin(), value.end());
    get(get(command, "Parameters"), "Append", {get(command, "CreateParameter", all)});
  };
  append("RETURN_VALUE", 4, {});
  append("id", 1, {n(2)});
  append("found", 2, {});
  EXPECT_EQ(text_of(get(get(command, "Execute"), "", {n(0)})), "2");
  EXPECT_EQ(database_->bound(), std::vector<std::string>{"2"});
  EXPECT_TRUE(get(get(command, "Parameters", {t("found")}), "Value").is_empty());
  get(get(command, "Parameters"), "Delete", {t("id")});
  EXPECT_EQ(error_number([&] { get(command, "Execute"); }), -2147217904);
}

TEST_F(Ado, AfterTheRowsOfAStatementComeNoOthers) {
  const Value rows = opened();
  EXPECT_EQ(get(rows, "NextRecordset").as_object(), nullptr);
  EXPECT_EQ(text_of(get(rows, "State")), "0");
}

TEST_F(Ado, FilterAndSortChooseAndOrderTheRows) {
  const Value rows = opened();
  let(rows, "Filter", {t("Id >= 2")});
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "2");
  let(rows, "Sort", {t("Id Desc")});
  EXPECT_EQ(text_of(get(rows, "", {t("Id")})), "3");
  EXPECT_EQ(error_number([&] { let(rows, "Filter", {t("nonsense")}); }), 3001);
  EXPECT_EQ(text_of(get(rows, "Filter")), "Id >= 2");
  let(rows, "Filter", {n(0)});
  EXPECT_EQ(text_of(get(rows, "GetString", {n(2), n(-1), t(","), t(";"), t("-")})),
            "3,it's;2,-;1,one;");
}

TEST_F(Ado, WithoutAFilterItReadsAsZero) {
  const Value rows = opened();
  EXPECT_TRUE(get(rows, "Filter").kind() == Value::Kind::Long);
  for (const Value& none : {t(""), n(0)}) {
    let(rows, "Filter", {t("Id=1")});
    let(rows, "Filter", {none});
    EXPECT_EQ(text_of(get(rows, "Filter")), "0");
    EXPECT_EQ(text_of(get(rows, "RecordCount")), "3");
  }
}

TEST_F(Ado, ARowThatWasRemovedSaysSoUntilAnotherIsCurrent) {
  const Value rows = recordset();
  get(get(rows, "Fields"), "Append", {t("Id"), n(3)});
  get(rows, "Open");
  for (const int id : {1, 2}) {
    get(rows, "AddNew");
    let(rows, "", {t("Id"), n(id)});
  }
  get(rows, "Update");
  get(rows, "MoveFirst");
  const Value field = get(rows, "Fields", {t("Id")});
  get(rows, "Delete");
  EXPECT_EQ(text_of(get(rows, "EditMode")), "4");
  EXPECT_EQ(error_number([&] { text_of(field); }), -2147217885);
  EXPECT_EQ(error_number([&] { get(rows, "Collect", {t("Id")}); }), -2147217885);
  EXPECT_EQ(error_number([&] { let(rows, "", {t("Id"), n(5)}); }), -2147217885);
  EXPECT_EQ(error_number([&] { get(rows, "Delete"); }), -2147217885);
  get(rows, "MoveNext");
  EXPECT_EQ(text_of(field), "2");
  get(rows, "Delete");
  get(rows, "Close");
}

TEST_F(Ado, AFilterOfRowsReadForwardOnlyReadsThemAsAStaticSet) {
  const Value rows = opened(0, 1);
  EXPECT_EQ(error_number([&] { get(rows, "Bookmark"); }), 3251);
  let(rows, "Filter", {t("Name='one'")});
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "1");
}

TEST_F(Ado, ACloneStandsApartAndBookmarksHoldInBoth) {
  const Value rows = opened();
  get(rows, "MoveLast");
  const Value mark = get(rows, "Bookmark");
  const Value clone = get(rows, "Clone");
  EXPECT_EQ(text_of(get(clone, "", {t("Id")})), "1");
  let(clone, "Bookmark", {mark});
  EXPECT_EQ(text_of(get(clone, "", {t("Id")})), "3");
  get(rows, "Close");
  EXPECT_EQ(text_of(get(clone, "", {t("Id")})), "3");
  let(clone, "Filter", {Value::array(Array::of({mark}))});
  EXPECT_EQ(text_of(get(clone, "RecordCount")), "1");
}

TEST_F(Ado, RowsOfTheClientOutliveTheirConnection) {
  const Value rows = recordset();
  let(rows, "CursorLocation", {n(3)});
  const Value cn = connection();
  get(rows, "Open", {t("Select * From t"), cn});
  tests::call_as(CallKind::Set, rows, "ActiveConnection", {Value::nothing()});
  get(cn, "Close");
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "3");
  EXPECT_EQ(text_of(get(rows, "", {t("Name")})), "one");
  const Value other = opened();
  EXPECT_EQ(error_number([&] {
              tests::call_as(CallKind::Set, other, "ActiveConnection", {Value::nothing()});
            }),
            3705);
}

TEST_F(Ado, APageMakesRowsOfItsOwn) {
  const Value rows = recordset();
  get(get(rows, "Fields"), "Append", {t("Id"), n(3)});
  get(get(rows, "Fields"), "Append", {t("Name"), n(200), n(20)});
  EXPECT_EQ(text_of(get(get(rows, "Fields"), "Count")), "2");
  get(rows, "Open");
  EXPECT_EQ(error_number([&] { get(get(rows, "Fields"), "Append", {t("x"), n(3)}); }), 3219);
  for (const int id : {2, 1}) {
    get(rows, "AddNew");
    let(rows, "", {t("Id"), n(id)});
    let(rows, "", {t("Name"), t("n" + std::to_string(id))});
    get(rows, "Update");
  }
  let(rows, "Sort", {t("Id")});
  EXPECT_EQ(text_of(get(rows, "GetString")), "1\tn1\r2\tn2\r");
  get(rows, "MoveFirst");
  EXPECT_EQ(text_of(get(get(rows, "Fields", {n(1)}), "Type")), "200");
  EXPECT_EQ(text_of(get(get(rows, "Fields", {n(1)}), "DefinedSize")), "20");
}

TEST_F(Ado, ClearedErrorsAreGoneFromTheConnection) {
  const Value cn = connection();
  EXPECT_EQ(error_number([&] { get(cn, "Execute", {t("Selct")}); }), -2147217900);
  get(get(cn, "Errors"), "Clear");
  EXPECT_EQ(text_of(get(get(cn, "Errors"), "Count")), "0");
}

TEST_F(Ado, GetRowsBeginsAtABookmark) {
  const Value rows = opened();
  get(rows, "MoveNext");
  const Value second = get(rows, "Bookmark");
  get(rows, "MoveLast");
  const Value all = get(rows, "GetRows", {n(-1), second, t("Id")});
  EXPECT_EQ(all.as_array().upper_bound(1), 1);
  EXPECT_EQ(text_of(all.as_array().elements()[0]), "2");
}

TEST_F(Ado, AConnectionHandsItsCursorLocationOn) {
  const Value cn = connection();
  let(cn, "CursorLocation", {n(3)});
  const Value executed = get(cn, "Execute", {t("Select * From t")});
  EXPECT_EQ(text_of(get(executed, "CursorLocation")), "3");
  EXPECT_EQ(text_of(get(executed, "CursorType")), "3");
  EXPECT_EQ(text_of(get(executed, "RecordCount")), "3");
  get(executed, "MoveLast");
  EXPECT_EQ(text_of(get(executed, "", {t("Id")})), "3");
  const Value rows = recordset();
  get(rows, "Open", {t("Select * From t"), cn});
  EXPECT_EQ(text_of(get(rows, "CursorLocation")), "3");
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "3");
}

TEST_F(Ado, ARecordSetsOwnCursorLocationGoesBeforeItsConnections) {
  const Value cn = connection();
  let(cn, "CursorLocation", {n(3)});
  const Value rows = recordset();
  let(rows, "CursorLocation", {n(2)});
  get(rows, "Open", {t("Select * From t"), cn});
  EXPECT_EQ(text_of(get(rows, "CursorType")), "0");
}

TEST_F(Ado, NothingIsLockedForAClient) {
  const Value rows = recordset();
  let(rows, "CursorLocation", {n(3)});
  get(rows, "Open", {t("Select * From t"), connection(), n(3), n(2)});
  EXPECT_EQ(text_of(get(rows, "LockType")), "3");
}

TEST_F(Ado, ExecuteTakesATablesName) {
  const Value cn = connection();
  const Value rows = get(cn, "Execute", {t("t"), Value::missing(), n(2)});
  EXPECT_EQ(text_of(get(rows, "", {t("Id")})), "1");
  EXPECT_EQ(text_of(get(get(cn, "Execute", {t("[t]")}), "", {t("Id")})), "1");
}

TEST_F(Ado, ExecuteGivesNoRowsWhereNoneAreWanted) {
  const Value rows = get(connection(), "Execute", {t("Select * From t"), Value::missing(), n(129)});
  EXPECT_EQ(text_of(get(rows, "State")), "0");
}

TEST_F(Ado, AConnectionClosesItsRecordSets) {
  const Value cn = connection();
  const Value executed = get(cn, "Execute", {t("Select * From t")});
  const Value rows = recordset();
  get(rows, "Open", {t("Select * From t"), cn, n(1), n(3)});
  const Value clone = get(rows, "Clone");
  const Value parted = recordset();
  let(parted, "CursorLocation", {n(3)});
  get(parted, "Open", {t("Select * From t"), cn});
  tests::call_as(CallKind::Set, parted, "ActiveConnection", {Value::nothing()});
  let(rows, "", {t("Name"), t("x")});
  get(cn, "Close");
  for (const Value& each : {executed, rows, clone}) {
    EXPECT_EQ(text_of(get(each, "State")), "0");
    EXPECT_EQ(error_number([&] { get(each, "EOF"); }), 3704);
  }
  EXPECT_EQ(text_of(get(parted, "RecordCount")), "3");
}

TEST_F(Ado, ARowThatIsBeingChangedKeepsItsRecordSetOpen) {
  const Value rows = opened(1, 3);
  let(rows, "", {t("Name"), t("x")});
  EXPECT_EQ(error_number([&] { get(rows, "Close"); }), 3219);
  EXPECT_EQ(text_of(get(rows, "State")), "1");
  get(rows, "CancelUpdate");
  get(rows, "Close");
}

TEST_F(Ado, BeginTransTellsItsLevel) {
  const Value cn = connection();
  EXPECT_EQ(text_of(get(cn, "BeginTrans")), "1");
  EXPECT_EQ(text_of(get(cn, "BeginTrans")), "2");
  get(cn, "RollbackTrans");
  EXPECT_EQ(text_of(get(cn, "BeginTrans")), "2");
  get(cn, "CommitTrans");
  get(cn, "CommitTrans");
  EXPECT_EQ(text_of(get(cn, "BeginTrans")), "1");
}

TEST_F(Ado, AConnectionTellsItsProvider) {
  const Value cn = Value::object(make_ref<ConnectionObject>(database_));
  EXPECT_EQ(text_of(get(cn, "Provider")), "MSDASQL");
  let(cn, "Provider", {t("Microsoft.Jet.OLEDB.4.0")});
  EXPECT_EQ(text_of(get(cn, "Provider")), "Microsoft.Jet.OLEDB.4.0");
  get(cn, "Open", {t("Provider=Other.One;Data Source=a.db")});
  EXPECT_EQ(text_of(get(cn, "Provider")), "Other.One");
  EXPECT_EQ(error_number([&] { let(cn, "Provider", {t("x")}); }), 3705);
}

TEST_F(Ado, AFileIsOpenedByItsNameWhereTheProviderWasSet) {
  const Value cn = Value::object(make_ref<ConnectionObject>(database_));
  let(cn, "Provider", {t("Microsoft.Jet.OLEDB.4.0")});
  get(cn, "Open", {t("/site/data/a.mdb")});
  EXPECT_EQ(database_->log().front(), "open Data Source=\"/site/data/a.mdb\"");
  EXPECT_EQ(text_of(get(cn, "State")), "1");
}

TEST_F(Ado, AConnectionThatOnlyReadsSaysSoToTheDatabase) {
  const Value cn = Value::object(make_ref<ConnectionObject>(database_));
  let(cn, "Mode", {n(1)});
  get(cn, "Open", {t("Data Source=a.db")});
  EXPECT_EQ(database_->log().front(), "open Data Source=a.db;Mode=Read");
  EXPECT_EQ(text_of(get(cn, "ConnectionString")), "Data Source=a.db");
  EXPECT_EQ(error_number([&] { let(cn, "Mode", {n(3)}); }), 3705);
}

TEST_F(Ado, ACommandWithoutAValueIsRefused) {
  const Value command = Value::object(make_ref<CommandObject>(database_));
  let(command, "ActiveConnection", {connection()});
  let(command, "CommandText", {t("Select * From t Where Id=? And Name=?")});
  EXPECT_EQ(error_number([&] { get(command, "Execute"); }), -2147217904);
  EXPECT_EQ(error_number([&] {
              get(command, "Execute", {Value(), Value::array(Array::of({t("only one")}))});
            }),
            -2147217904);
}

TEST_F(Ado, ValuesOfOneExecuteAreNotThoseOfTheNext) {
  database_->answer("Select * From t Where Id=?", {{"Id"}, {{tests::number(2)}}});
  const Value command = Value::object(make_ref<CommandObject>(database_));
  let(command, "ActiveConnection", {connection()});
  let(command, "CommandText", {t("Select * From t Where Id=?")});
  get(get(command, "Parameters"), "Append",
      {get(command, "CreateParameter", {t("id"), n(3), n(1), n(4), n(2)})});
  get(command, "Execute", {Value(), Value::array(Array::of({t("7")}))});
  get(command, "Execute");
  EXPECT_EQ(database_->bound(), (std::vector<std::string>{"7", "2"}));
}

TEST_F(Ado, AParameterHoldsWhatItsTypeAllows) {
  const Value command = Value::object(make_ref<CommandObject>(database_));
  const auto made = [&](std::int32_t type, std::int32_t size, Value value) {
    return get(command, "CreateParameter", {t("p"), n(type), n(1), n(size), std::move(value)});
  };
  EXPECT_EQ(get(made(3, 0, t("12")), "Value").kind(), Value::Kind::Long);
  EXPECT_EQ(text_of(get(made(200, 5, n(12)), "Value")), "12");
  EXPECT_TRUE(get(made(3, 0, Value::null()), "Value").is_null());
  EXPECT_EQ(error_number([&] { made(3, 0, t("abc")); }), 3421);
  EXPECT_EQ(error_number([&] { made(7, 0, t("no day")); }), 3421);
  EXPECT_EQ(error_number([&] { made(200, 3, t("abcd")); }), 3421);
  const Value parameter = made(3, 0, n(1));
  EXPECT_EQ(error_number([&] { let(parameter, "Value", {t("x")}); }), 3421);
}

TEST_F(Ado, AParameterTakesALongValueInParts) {
  const Value command = Value::object(make_ref<CommandObject>(database_));
  const auto made = [&](std::int32_t type) {
    return get(command, "CreateParameter", {t("p"), n(type), n(1), n(5)});
  };
  const auto part = [](const char* bytes) { return Value::array(Array::of_bytes(bytes)); };
  const Value bytes = made(205);
  get(bytes, "AppendChunk", {part("ab")});
  get(bytes, "AppendChunk", {part("cde")});
  EXPECT_EQ(plain_value(get(bytes, "Value")).as_array().bytes(), "abcde");
  const Value text = made(202);
  let(text, "Value", {t("old")});
  get(text, "AppendChunk", {t("ab")});
  get(text, "AppendChunk", {t("cde")});
  EXPECT_EQ(text_of(get(text, "Value")), "abcde");
  EXPECT_EQ(error_number([&] { get(text, "AppendChunk", {t("f")}); }), 3421);
  let(text, "Value", {t("new")});
  get(text, "AppendChunk", {t("x")});
  EXPECT_EQ(text_of(get(text, "Value")), "x");
  EXPECT_EQ(error_number([&] { get(text, "AppendChunk", {n(1)}); }), 3421);
}

TEST_F(Ado, AParameterOfManyLengthsNamesOne) {
  const Value command = Value::object(make_ref<CommandObject>(database_));
  const Value all = get(command, "Parameters");
  EXPECT_EQ(error_number([&] {
              get(all, "Append", {get(command, "CreateParameter", {t("k"), n(200), n(1)})});
            }),
            3708);
  get(all, "Append", {get(command, "CreateParameter", {t("k"), n(200), n(1), n(5)})});
  get(all, "Append", {get(command, "CreateParameter", {t("n"), n(3), n(1)})});
  EXPECT_EQ(text_of(get(all, "Count")), "2");
}

TEST_F(Ado, ARecordSetTellsItsCommand) {
  const Value rows = opened();
  EXPECT_EQ(text_of(get(get(rows, "ActiveCommand"), "CommandText")), "Select * From t");
  EXPECT_TRUE(get(recordset(), "ActiveCommand").as_object() == nullptr);
}

TEST_F(Ado, BookmarksAreComparedByTheirRows) {
  const Value rows = opened();
  const Value first = get(rows, "Bookmark");
  get(rows, "MoveNext");
  const Value second = get(rows, "Bookmark");
  EXPECT_EQ(text_of(get(rows, "CompareBookmarks", {first, second})), "0");
  EXPECT_EQ(text_of(get(rows, "CompareBookmarks", {second, second})), "1");
  EXPECT_EQ(text_of(get(rows, "CompareBookmarks", {second, first})), "2");
}

TEST_F(Ado, ACloneMayBeReadOnly) {
  const Value rows = opened(1, 3);
  EXPECT_EQ(text_of(get(get(rows, "Clone", {n(1)}), "LockType")), "1");
  EXPECT_EQ(text_of(get(get(rows, "Clone"), "LockType")), "3");
}

}  // namespace
}  // namespace rk::pagehost
