// The record sets of pages over a database on the disk: batches, and sets parted from their
// connection.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "adapters/codepage/code_pages.h"
#include "adapters/sqlite/engine.h"
#include "adapters/xml/documents.h"
#include "pagehost/components/connection_object.h"
#include "pagehost/components/recordset_object.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/object_calls.h"
#include "value/conversions.h"

namespace rk::app {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

constexpr std::int32_t kKeyset = 1;
constexpr std::int32_t kStatic = 3;
constexpr std::int32_t kBatch = 4;
constexpr std::int32_t kClient = 3;

class Batch : public testing::Test {
 protected:
  Batch() : database_(engine_.page()) {
    connection_ = Value::object(make_ref<pagehost::ConnectionObject>(database_));
    get(connection_, "Open", {t("Data Source=shop.db;Mode=Create")});
    run("Create Table goods (id Counter primary key, name Text(20), price Currency, hot Bit, "
        "class Long, added DateTime)");
    for (const char* name : {"apple", "pear", "plum", "fig"}) {
      run(std::string("Insert Into goods (name,price,hot,class,added) Values ('") + name +
          "',1.5,True,1,#2026-03-05#)");
    }
  }
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int32_t number) { return Value::long_integer(number); }
  void run(const std::string& sql) { get(connection_, "Execute", {t(sql)}); }
  Value opened(const std::string& sql = "Select * From goods Order By id",
               std::int32_t cursor = kKeyset, bool client = false) {
    Value rows = Value::object(make_ref<pagehost::RecordsetObject>(database_));
    if (client) let(rows, "CursorLocation", {n(kClient)});
    get(rows, "Open", {t(sql), connection_, n(cursor), n(kBatch)});
    return rows;
  }
  static void set(const Value& rows, const char* column, const Value& value) {
    let(rows, "", {t(column), value});
  }
  // The names, as everybody else sees them.
  std::string stored() {
    return text_of(get(get(connection_, "Execute", {t("Select name From goods Order By id")}),
                       "GetString", {n(2), n(-1), t(","), t(" ")}));
  }
  static std::string shown(const Value& rows) {
    get(rows, "MoveFirst");
    std::string all;
    for (; !get(rows, "EOF").as_boolean(); get(rows, "MoveNext")) {
      all += text_of(get(rows, "", {t("name")})) + " ";
    }
    return all;
  }

  tests::DiskFolder folder_;
  tests::FixedClock clock_;
  sqlite::Engine engine_{{folder_.path(), {}, std::chrono::seconds(1)}, folder_, clock_};
  std::shared_ptr<platform::Database> database_;
  Value connection_;
};

TEST_F(Batch, NothingIsStoredBeforeTheBatchIs) {
  const Value rows = opened();
  set(rows, "name", t("Apple"));
  get(rows, "Update");
  get(rows, "MoveNext");
  get(rows, "Delete");
  get(rows, "AddNew");
  set(rows, "name", t("grape"));
  get(rows, "Update");
  EXPECT_EQ(stored(), "apple pear plum fig ");
  EXPECT_EQ(shown(rows), "Apple plum fig grape ");
  get(rows, "UpdateBatch");
  EXPECT_EQ(stored(), "Apple plum fig grape ");
  EXPECT_EQ(shown(rows), "Apple plum fig grape ");
}

TEST_F(Batch, ACancelledBatchShowsTheRowsAsTheyWere) {
  const Value rows = opened();
  set(rows, "name", t("x"));
  get(rows, "Update");
  set(rows, "name", t("y"));
  get(rows, "Update");
  for (int i = 0; i < 2; ++i) {
    get(rows, "MoveNext");
    get(rows, "Delete");
  }
  get(rows, "AddNew", {t("name"), t("new")});
  get(rows, "Delete");
  get(rows, "AddNew", {t("name"), t("newer")});
  EXPECT_EQ(shown(rows), "y fig newer ");
  get(rows, "CancelBatch");
  EXPECT_EQ(shown(rows), "apple pear plum fig ");
  get(rows, "UpdateBatch");
  EXPECT_EQ(stored(), "apple pear plum fig ");
}

// Saved, read back by a set that knows no connection, changed, and stored by a connection at last.
TEST_F(Batch, ASetThatWasSavedIsStoredOnceItHasAConnection) {
  xml::start_xml();
  const xml::Documents documents;
  const codepage::IcuCodePages code_pages;
  const auto files = std::make_shared<pagehost::RowFiles>();
  files->xml.xml = &documents;
  files->xml.system.files = &folder_;
  files->xml.system.code_pages = &code_pages;
  files->xml.site_root = folder_.path();
  const auto recordset = [&] {
    return Value::object(
        make_ref<pagehost::RecordsetObject>(pagehost::AdoServices(database_, files)));
  };
  run("Update goods Set price=Null, hot=False Where name='pear'");
  const Value rows = recordset();
  let(rows, "CursorLocation", {n(kClient)});
  get(rows, "Open", {t("Select * From goods Order By id"), connection_, n(kStatic), n(kBatch)});
  get(rows, "Save", {t("goods.xml"), n(1)});
  get(rows, "Close");

  const Value back = recordset();
  get(back, "Open", {t("goods.xml"), Value::missing(), n(kStatic), n(kBatch)});
  EXPECT_EQ(get(back, "", {t("added")}).as_object()->type_name(), "Field");
  EXPECT_EQ(plain_value(get(back, "", {t("added")})).kind(), Value::Kind::Date);
  EXPECT_EQ(plain_value(get(back, "", {t("price")})).kind(), Value::Kind::Currency);
  EXPECT_EQ(plain_value(get(back, "", {t("hot")})).kind(), Value::Kind::Boolean);
  set(back, "name", t("melon"));
  get(back, "MoveNext");
  EXPECT_TRUE(plain_value(get(back, "", {t("price")})).is_null());
  set(back, "price", n(2));
  get(back, "MoveLast");
  get(back, "Delete");
  get(back, "AddNew");
  set(back, "name", t("kiwi"));
  get(back, "Update");
  EXPECT_EQ(error_number([&] { get(back, "UpdateBatch"); }), 3219);
  EXPECT_EQ(stored(), "apple pear plum fig ");
  tests::call_as(CallKind::Set, back, "ActiveConnection", {connection_});
  get(back, "UpdateBatch");
  EXPECT_EQ(stored(), "melon pear plum kiwi ");
  EXPECT_EQ(text_of(get(get(connection_, "Execute", {t("Select price From goods Where id=2")}), "",
                        {n(0)})),
            "2");
}

TEST_F(Batch, ANewRowGetsItsNumberAndTheTablesDefaults) {
  run("Alter Table goods Add Column note Text(10) Default 'none'");
  const Value rows = opened("Select id,name From goods");
  get(rows, "AddNew");
  set(rows, "name", t("kiwi"));
  get(rows, "Update");
  EXPECT_TRUE(plain_value(get(rows, "", {t("id")})).is_null());
  get(rows, "UpdateBatch");
  EXPECT_EQ(text_of(get(rows, "", {t("id")})), "5");
  EXPECT_EQ(text_of(get(get(connection_, "Execute", {t("Select note From goods Where id=5")}), "",
                        {n(0)})),
            "none");
}

TEST_F(Batch, AFailureStoresNothingAndLeavesTheBatchPending) {
  const Value rows = opened();
  set(rows, "name", t("first"));
  get(rows, "Update");
  get(rows, "MoveNext");
  set(rows, "name", t("second"));
  get(rows, "Update");
  run("Update goods Set name='meanwhile' Where id=2");
  EXPECT_EQ(error_number([&] { get(rows, "UpdateBatch"); }), -2147217864);
  EXPECT_EQ(text_of(get(get(connection_, "Errors"), "Count")), "1");
  EXPECT_EQ(stored(), "apple meanwhile plum fig ");
  run("Update goods Set name='pear' Where id=2");
  get(rows, "UpdateBatch");
  EXPECT_EQ(stored(), "first second plum fig ");
}

TEST_F(Batch, AFieldTellsWhatItHeldBeforeItsChange) {
  const Value rows = opened();
  const auto told = [&](const char* member) {
    return text_of(get(rows, "", {t("name")})) + "," +
           text_of(get(get(get(rows, "Fields"), "Item", {t("name")}), member));
  };
  set(rows, "name", t("x"));
  EXPECT_EQ(told("OriginalValue"), "x,apple");
  get(rows, "Update");
  set(rows, "name", t("y"));
  get(rows, "Update");
  EXPECT_EQ(told("OriginalValue"), "y,apple");
  EXPECT_EQ(told("UnderlyingValue"), "y,apple");
  get(rows, "UpdateBatch");
  EXPECT_EQ(told("OriginalValue"), "y,y");
}

TEST_F(Batch, OneRowAloneMayBeStored) {
  const Value rows = opened();
  set(rows, "name", t("first"));
  get(rows, "MoveNext");
  set(rows, "name", t("second"));
  get(rows, "UpdateBatch", {n(1)});
  EXPECT_EQ(stored(), "apple second plum fig ");
  EXPECT_EQ(text_of(get(rows, "Status")), "8");
  get(rows, "AddNew", {t("name"), t("kiwi")});
  get(rows, "UpdateBatch", {n(1)});
  EXPECT_EQ(text_of(get(rows, "", {t("id")})), "5");
  EXPECT_EQ(stored(), "apple second plum fig kiwi ");
  get(rows, "CancelBatch");
  EXPECT_EQ(shown(rows), "apple second plum fig kiwi ");
  get(rows, "UpdateBatch");
  EXPECT_EQ(stored(), "apple second plum fig kiwi ");
}

TEST_F(Batch, OneRowOfAFilterMayBeStored) {
  const Value rows = opened();
  get(rows, "MoveNext");
  set(rows, "name", t("second"));
  get(rows, "MoveNext");
  set(rows, "name", t("third"));
  get(rows, "Update");
  let(rows, "Filter", {n(1)});
  get(rows, "MoveNext");
  get(rows, "UpdateBatch", {n(1)});
  EXPECT_EQ(stored(), "apple pear third fig ");
  get(rows, "Delete");
  EXPECT_EQ(error_number([&] { get(rows, "UpdateBatch", {n(1)}); }), -2147217885);
  EXPECT_EQ(error_number([&] { get(rows, "UpdateBatch", {n(2)}); }), 3251);
}

TEST_F(Batch, AFilterShowsTheRowsThatCouldNotBeStored) {
  const Value rows = opened();
  for (const char* name : {"1st", "2nd", "3rd", "4th"}) {
    set(rows, "name", t(name));
    get(rows, "MoveNext");
  }
  run("Update goods Set name='meanwhile' Where id=2");
  run("Delete From goods Where id=4");
  EXPECT_EQ(error_number([&] { get(rows, "UpdateBatch"); }), -2147217864);
  let(rows, "Filter", {n(5)});
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "2");
  EXPECT_EQ(shown(rows), "2nd 4th ");
  let(rows, "Filter", {n(0)});
  get(rows, "CancelBatch");
  let(rows, "Filter", {n(5)});
  EXPECT_EQ(text_of(get(rows, "EOF")), "True");
}

TEST_F(Batch, ARowThatTheDatabaseRefusesIsInConflict) {
  run("Create Unique Index name_once On goods (name)");
  const Value rows = opened();
  get(rows, "MoveNext");
  set(rows, "name", t("fig"));
  EXPECT_NE(error_number([&] { get(rows, "UpdateBatch"); }), 0);
  EXPECT_EQ(stored(), "apple pear plum fig ");
  let(rows, "Filter", {n(5)});
  EXPECT_EQ(shown(rows), "fig ");
}

TEST_F(Batch, WhatSomebodyElseChangedInAnotherColumnStays) {
  const Value rows = opened();
  set(rows, "name", t("mine"));
  get(rows, "Update");
  run("Update goods Set class=7 Where id=1");
  get(rows, "UpdateBatch");
  EXPECT_EQ(
      text_of(get(get(connection_, "Execute", {t("Select class From goods Where name='mine'")}), "",
                  {n(0)})),
      "7");
}

TEST_F(Batch, EveryTypeOfColumnComesBackAsItWasSet) {
  const Value rows = opened();
  set(rows, "price", t("2.25"));
  set(rows, "hot", Value::boolean(false));
  set(rows, "class", Value::null());
  set(rows, "added", t("2026-04-01"));
  get(rows, "Update");
  get(rows, "UpdateBatch");
  set(rows, "class", n(3));
  set(rows, "hot", Value::boolean(true));
  set(rows, "added", Value::null());
  get(rows, "Update");
  get(rows, "UpdateBatch");
  EXPECT_EQ(text_of(get(get(connection_, "Execute", {t("Select * From goods Where id=1")}),
                        "GetString", {n(2), n(-1), t(","), t(""), t("-")})),
            "1,apple,2.25,True,3,-");
}

TEST_F(Batch, ASetWithoutAConnectionIsStoredWhenItHasOneAgain) {
  const Value rows = opened("Select * From goods Order By id", kStatic, true);
  let(rows, "ActiveConnection", {Value::nothing()});
  set(rows, "name", t("changed"));
  get(rows, "Update");
  EXPECT_EQ(error_number([&] { get(rows, "UpdateBatch"); }), 3219);
  let(rows, "ActiveConnection", {connection_});
  get(rows, "UpdateBatch");
  EXPECT_EQ(stored(), "changed pear plum fig ");
}

TEST_F(Batch, StatusAndFilterTellWhatIsPending) {
  const Value rows = opened();
  EXPECT_EQ(text_of(get(rows, "Status")), "0");
  get(rows, "MoveNext");
  set(rows, "name", t("x"));
  get(rows, "Update");
  EXPECT_EQ(text_of(get(rows, "Status")), "2");
  get(rows, "AddNew", {t("name"), t("y")});
  EXPECT_EQ(text_of(get(rows, "Status")), "1");
  get(rows, "MoveFirst");
  EXPECT_EQ(text_of(get(rows, "Status")), "8");
  let(rows, "Filter", {n(1)});
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "2");
  EXPECT_EQ(shown(rows), "x y ");
  let(rows, "Filter", {n(0)});
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "5");
}

TEST_F(Batch, FilteredAndSortedRowsAreCancelledToo) {
  const Value rows = opened();
  let(rows, "Sort", {t("name Desc")});
  EXPECT_EQ(shown(rows), "plum pear fig apple ");
  get(rows, "MoveFirst");
  get(rows, "Delete");
  get(rows, "MoveNext");
  set(rows, "name", t("zz"));
  get(rows, "Update");
  get(rows, "CancelBatch");
  EXPECT_EQ(shown(rows), "plum pear fig apple ");
  let(rows, "Filter", {t("name = 'fig'")});
  set(rows, "name", t("date"));
  get(rows, "UpdateBatch");
  EXPECT_EQ(stored(), "apple pear plum date ");
}

TEST_F(Batch, AReadingPageHoldsItsPlaceWhenTheFirstChangeComes) {
  const Value rows = opened();
  let(rows, "AbsolutePosition", {n(3)});
  set(rows, "name", t("third"));
  get(rows, "Update");
  EXPECT_EQ(text_of(get(rows, "AbsolutePosition")), "3");
  get(rows, "UpdateBatch");
  EXPECT_EQ(stored(), "apple pear third fig ");
}

TEST_F(Batch, OfAJoinOneTableIsStored) {
  run("Create Table class (cid Counter primary key, title Text(20))");
  run("Insert Into class (title) Values ('fruit')");
  const Value rows = opened(
      "Select goods.*,class.title From goods Inner Join class On goods.class=class.cid "
      "Order By goods.id");
  EXPECT_EQ(error_number([&] { set(rows, "title", t("x")); }), 3251);
  set(rows, "name", t("joined"));
  get(rows, "UpdateBatch");
  EXPECT_EQ(stored(), "joined pear plum fig ");
}

TEST_F(Batch, ATableWithoutAKeyIsFoundByAllItsColumns) {
  run("Create Table word (a Text(10), b Long)");
  run("Insert Into word Values ('one', Null)");
  run("Insert Into word Values ('two', 2)");
  const Value rows = opened("Select * From word");
  set(rows, "b", n(1));
  get(rows, "UpdateBatch");
  get(rows, "MoveNext");
  get(rows, "Delete");
  get(rows, "UpdateBatch");
  EXPECT_EQ(text_of(get(get(connection_, "Execute", {t("Select * From word")}), "GetString",
                        {n(2), n(-1), t(","), t(";")})),
            "one,1;");
}

TEST_F(Batch, WhatCannotBeStoredCannotBeSet) {
  const Value rows = opened("Select Count(*) As n From goods");
  EXPECT_EQ(error_number([&] { set(rows, "n", n(1)); }), 3251);
  EXPECT_EQ(error_number([&] {
              const Value one = opened();
              set(one, "name", t("x"));
              get(one, "UpdateBatch", {n(2)});
            }),
            3251);
}

// ---- Other record sets of pages

class RecordSets : public Batch {
 protected:
  Value plain(const std::string& sql, std::int32_t cursor = kKeyset, std::int32_t lock = 3) {
    Value rows = Value::object(make_ref<pagehost::RecordsetObject>(database_));
    get(rows, "Open", {t(sql), connection_, n(cursor), n(lock)});
    return rows;
  }
};

TEST_F(RecordSets, AConnectionThatKeepsItsRecordsWithTheClientCountsThem) {
  let(connection_, "CursorLocation", {n(kClient)});
  const Value rows = get(connection_, "Execute", {t("Select * From goods Order By id")});
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "4");
  EXPECT_EQ(text_of(get(rows, "CursorLocation")), "3");
  EXPECT_EQ(text_of(get(rows, "CursorType")), "3");
  get(rows, "MoveLast");
  EXPECT_EQ(text_of(get(rows, "", {t("name")})), "fig");
  const Value opened = plain("Select * From goods", 0, 1);
  EXPECT_EQ(text_of(get(opened, "RecordCount")), "4");
  EXPECT_EQ(text_of(get(opened, "CursorLocation")), "3");
}

TEST_F(RecordSets, ExecuteTakesATablesName) {
  EXPECT_EQ(text_of(get(get(connection_, "Execute", {t("goods")}), "", {t("name")})), "apple");
  EXPECT_EQ(text_of(get(get(connection_, "Execute", {t("goods"), Value(), n(2)}), "", {n(0)})),
            "1");
  run("Create Table [my tab] (a Long)");
  EXPECT_TRUE(get(plain("[my tab]"), "EOF").as_boolean());
}

TEST_F(RecordSets, TransactionsTellHowDeepTheyAre) {
  EXPECT_EQ(text_of(get(connection_, "BeginTrans")), "1");
  EXPECT_EQ(text_of(get(connection_, "BeginTrans")), "2");
  get(connection_, "RollbackTrans");
  EXPECT_EQ(text_of(get(connection_, "BeginTrans")), "2");
  get(connection_, "CommitTrans");
  get(connection_, "CommitTrans");
  EXPECT_EQ(text_of(get(connection_, "BeginTrans")), "1");
}

TEST_F(RecordSets, AClosedConnectionTakesItsRecordSetsAlong) {
  const Value rows = plain("Select * From goods");
  get(connection_, "Close");
  EXPECT_EQ(text_of(get(rows, "State")), "0");
  EXPECT_EQ(error_number([&] { get(rows, "EOF"); }), 3704);
  get(connection_, "Open");
  get(rows, "Open", {t("Select * From goods"), connection_});
  EXPECT_EQ(text_of(get(rows, "State")), "1");
}

TEST_F(RecordSets, CollectIsAFieldsValue) {
  const Value rows = plain("Select * From goods");
  EXPECT_EQ(text_of(get(rows, "Collect", {t("name")})), "apple");
  let(rows, "Collect", {n(1), t("orange")});
  get(rows, "Update");
  EXPECT_EQ(stored(), "orange pear plum fig ");
}

TEST_F(RecordSets, ChunksAreAppendedAndReadOneAfterTheOther) {
  run("Create Table file (id Counter primary key, body Memo, raw Image)");
  const Value rows = plain("Select * From file");
  get(rows, "AddNew");
  const auto field = [&](const char* name) { return get(rows, "Fields", {t(name)}); };
  get(field("body"), "AppendChunk", {t("abc")});
  get(field("body"), "AppendChunk", {t("def")});
  get(field("raw"), "AppendChunk", {Value::text(Text::from_bytes("\x01\x02\xFF"))});
  get(field("raw"), "AppendChunk", {Value::text(Text::from_bytes("\x03"))});
  get(rows, "Update");
  EXPECT_EQ(text_of(get(field("body"), "GetChunk", {n(4)})), "abcd");
  EXPECT_EQ(text_of(get(field("body"), "GetChunk", {n(4)})), "ef");
  EXPECT_TRUE(get(field("body"), "GetChunk", {n(4)}).is_null());
  EXPECT_EQ(text_of(get(field("raw"), "ActualSize")), "4");
  get(field("body"), "AppendChunk", {t("new")});
  EXPECT_EQ(text_of(get(rows, "", {t("body")})), "new");
}

TEST_F(RecordSets, FindAndGetStringNeedARow) {
  const Value rows = plain("Select * From goods Where id>99");
  EXPECT_EQ(error_number([&] { get(rows, "Find", {t("id=1")}); }), 3021);
  EXPECT_EQ(error_number([&] { get(rows, "GetString"); }), 3021);
}

TEST_F(RecordSets, AValueThatIsNoneOfItsColumnIsRefusedAsItIsSet) {
  const Value rows = plain("Select * From goods");
  constexpr std::int32_t kMismatch = -2147352571;
  EXPECT_EQ(error_number([&] { set(rows, "class", t("many")); }), kMismatch);
  EXPECT_EQ(error_number([&] { set(rows, "class", t("")); }), kMismatch);
  EXPECT_EQ(error_number([&] { set(rows, "added", t("some day")); }), kMismatch);
  EXPECT_EQ(error_number([&] { set(rows, "hot", t("maybe")); }), kMismatch);
  set(rows, "class", Value::real(2.5));
  EXPECT_EQ(text_of(get(rows, "", {t("class")})), "2");
  set(rows, "name", t("kept"));
  get(rows, "Update");
  EXPECT_EQ(text_of(get(get(connection_, "Execute", {t("Select name,class From goods")}),
                        "GetString", {n(2), n(1), t(","), t("")})),
            "kept,2");
}

TEST_F(RecordSets, AWholeNumberPastALongIsKept) {
  const Value rows = plain("Select * From goods");
  set(rows, "class", Value::real(3e9));
  get(rows, "Update");
  EXPECT_EQ(text_of(get(rows, "", {t("class")})), "3000000000");
}

TEST_F(RecordSets, TheProviderIsTheOneNamed) {
  EXPECT_EQ(text_of(get(connection_, "Provider")), "MSDASQL");
  const Value other = Value::object(make_ref<pagehost::ConnectionObject>(database_));
  get(other, "Open", {t("Provider=Microsoft.Jet.OLEDB.4.0; Data Source=shop.db")});
  EXPECT_EQ(text_of(get(other, "Provider")), "Microsoft.Jet.OLEDB.4.0");
}

}  // namespace
}  // namespace rk::app
