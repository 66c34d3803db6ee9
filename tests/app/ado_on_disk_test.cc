// What pages do with connections, commands and fields, over a database on the disk.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "adapters/sqlite/engine.h"
#include "pagehost/components/command_object.h"
#include "pagehost/components/connection_object.h"
#include "pagehost/components/recordset_object.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/object_calls.h"
#include "value/array.h"

namespace rk::app {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

class AdoOnDisk : public testing::Test {
 protected:
  AdoOnDisk() : database_(engine_.page()) {
    connection_ = connection();
    get(connection_, "Open", {t("Data Source=shop.db;Mode=Create")});
    run("Create Table goods (id Counter primary key, name Text(20), price Currency, hot Bit, "
        "class Long, added DateTime, picture Image)");
    for (const char* name : {"apple", "pear", "plum"}) {
      run(std::string("Insert Into goods (name,price,hot,class,added) Values ('") + name +
          "',1.5,True,1,#2026-03-05#)");
    }
  }
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int32_t number) { return Value::long_integer(number); }
  Value connection() { return Value::object(make_ref<pagehost::ConnectionObject>(database_)); }
  Value run(std::string_view sql) { return get(connection_, "Execute", {t(sql)}); }
  Value opened(std::string_view sql) {
    Value rows = Value::object(make_ref<pagehost::RecordsetObject>(database_));
    get(rows, "Open", {t(sql), connection_, n(1), n(3)});
    return rows;
  }
  std::string shown(const Value& rows) {
    return text_of(get(rows, "GetString", {n(2), n(-1), t(","), t(" ")}));
  }

  tests::DiskFolder folder_;
  tests::FixedClock clock_;
  sqlite::Engine engine_{{folder_.path(), {}, std::chrono::seconds(1)}, folder_, clock_};
  std::shared_ptr<platform::Database> database_;
  Value connection_;
};

TEST_F(AdoOnDisk, SetsOfAClientsConnectionKnowTheirRows) {
  let(connection_, "CursorLocation", {n(3)});
  const Value rows = run("Select * From goods Order By id");
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "3");
  get(rows, "MoveLast");
  EXPECT_EQ(text_of(get(rows, "", {t("name")})), "plum");
  tests::call_as(CallKind::Set, rows, "ActiveConnection", {Value::nothing()});
  get(connection_, "Close");
  EXPECT_EQ(text_of(get(rows, "", {t("name")})), "plum");
}

TEST_F(AdoOnDisk, AClientsConnectionStillTellsTheRowsThatAStatementChanged) {
  let(connection_, "CursorLocation", {n(3)});
  Value affected;
  Value sql = t("Update goods Set class=2 Where id<3");
  Value* const arguments[] = {&sql, &affected};
  const Value done = connection_.as_object()->invoke(connection_.as_object()->member("Execute"),
                                                     CallKind::Get, arguments);
  EXPECT_EQ(text_of(affected), "2");
  EXPECT_EQ(text_of(get(done, "State")), "0");
}

TEST_F(AdoOnDisk, NamesThatNoTableKnowsStandForParameters) {
  const Value command = Value::object(make_ref<pagehost::CommandObject>(database_));
  let(command, "ActiveConnection", {connection_});
  let(command, "CommandText", {t("Select id From goods Where id=[pid] And name=pname")});
  EXPECT_EQ(
      text_of(get(get(command, "Execute", {Value(), Value::array(Array::of({n(2), t("pear")}))}),
                  "", {n(0)})),
      "2");
  EXPECT_EQ(error_number([&] {
              get(command, "Execute", {Value(), Value::array(Array::of({n(2)}))});
            }),
            -2147217904);
  let(command, "CommandText", {t("Insert Into goods (name,class) Values (pn,pc)")});
  get(command, "Execute", {Value(), Value::array(Array::of({t("fig"), n(5)}))});
  EXPECT_EQ(shown(run("Select name,class From goods Where class=5")), "fig,5 ");
}

TEST_F(AdoOnDisk, TooFewValuesAreRefused) {
  const Value command = Value::object(make_ref<pagehost::CommandObject>(database_));
  let(command, "ActiveConnection", {connection_});
  let(command, "CommandText", {t("Insert Into goods (name,class) Values (?,?)")});
  EXPECT_EQ(error_number([&] { get(command, "Execute"); }), -2147217904);
  EXPECT_EQ(error_number([&] {
              get(command, "Execute", {Value(), Value::array(Array::of({t("only one")}))});
            }),
            -2147217904);
}

TEST_F(AdoOnDisk, AValueIsOfItsColumnsTypeAsSoonAsItIsSet) {
  const Value rows = opened("Select * From goods Order By id");
  let(rows, "", {t("class"), Value::real(2.5)});
  EXPECT_EQ(text_of(get(rows, "", {t("class")})), "2");
  for (const char* name : {"class", "added", "hot", "price"}) {
    EXPECT_EQ(error_number([&] { let(rows, "", {t(name), t("abc")}); }), -2147352571) << name;
  }
  let(rows, "", {t("name"), n(12)});
  get(rows, "Update");
  EXPECT_EQ(shown(run("Select name,class,price From goods Where id=1")), "12,2,1.5 ");
}

TEST_F(AdoOnDisk, NumbersPastALongAreStored) {
  const Value rows = opened("Select * From goods Order By id");
  let(rows, "", {t("class"), Value::real(3e9)});
  get(rows, "Update");
  EXPECT_EQ(shown(run("Select class From goods Where id=1")), "3000000000 ");
}

TEST_F(AdoOnDisk, BytesOfAnyNumberAreStored) {
  const Value rows = opened("Select * From goods Order By id");
  const Value part = Value::text(Text::from_bytes("\x01\x02\xFF"));
  get(get(rows, "", {t("picture")}), "AppendChunk", {part});
  get(get(rows, "", {t("picture")}), "AppendChunk", {part});
  get(rows, "Update");
  const Value stored = get(run("Select picture From goods Where id=1"), "", {n(0)});
  EXPECT_EQ(plain_value(stored).as_array().bytes(), "\x01\x02\xFF\x01\x02\xFF");
  EXPECT_EQ(text_of(get(stored, "ActualSize")), "6");
}

TEST_F(AdoOnDisk, AClosedConnectionClosesItsRecordSets) {
  const Value walked = run("Select * From goods");
  const Value rows = opened("Select * From goods");
  let(rows, "", {t("name"), t("lost")});
  get(connection_, "Close");
  EXPECT_EQ(text_of(get(walked, "State")) + text_of(get(rows, "State")), "00");
  get(connection_, "Open");
  EXPECT_EQ(shown(run("Select name From goods Where id=1")), "apple ");
}

TEST_F(AdoOnDisk, AConnectionOfModeReadDoesNotWrite) {
  const Value reader = connection();
  let(reader, "Mode", {n(1)});
  get(reader, "Open", {t("Data Source=shop.db")});
  EXPECT_EQ(shown(get(reader, "Execute", {t("Select Count(*) From goods")})), "3 ");
  EXPECT_NE(error_number([&] { get(reader, "Execute", {t("Delete From goods")}); }), 0);
  EXPECT_EQ(shown(run("Select Count(*) From goods")), "3 ");
}

TEST_F(AdoOnDisk, TablesAreOpenedByTheirNames) {
  run("Create Table [my tab] (a Long)");
  run("Insert Into [my tab] Values (7)");
  EXPECT_EQ(shown(get(connection_, "Execute", {t("my tab"), Value::missing(), n(2)})), "7 ");
  EXPECT_EQ(shown(run("[my tab]")), "7 ");
  EXPECT_EQ(shown(opened("[my tab]")), "7 ");
}

TEST_F(AdoOnDisk, TheKeyOfACounterIsAmongTheIndexes) {
  const Value none = Value();
  const Value rows = get(connection_, "OpenSchema",
                         {n(12), Value::array(Array::of({none, none, none, none, t("goods")}))});
  EXPECT_EQ(text_of(get(rows, "", {t("INDEX_NAME")})), "PrimaryKey");
  EXPECT_EQ(text_of(get(rows, "", {t("PRIMARY_KEY")})), "True");
  EXPECT_EQ(text_of(get(rows, "", {t("COLUMN_NAME")})), "id");
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "1");
}

TEST_F(AdoOnDisk, TheListOfTablesHasTheColumnsThatPagesAskFor) {
  const Value rows = get(connection_, "OpenSchema", {n(20)});
  EXPECT_EQ(text_of(get(rows, "", {t("TABLE_NAME")})), "goods");
  EXPECT_TRUE(plain_value(get(rows, "", {t("DATE_CREATED")})).is_null());
}

TEST_F(AdoOnDisk, TheListOfColumnsHasWhatPagesShowOfThem) {
  const Value rows = get(connection_, "OpenSchema", {n(4)});
  EXPECT_EQ(text_of(get(rows, "", {t("TABLE_NAME")})), "goods");
  for (const char* name : {"COLUMN_FLAGS", "NUMERIC_PRECISION", "NUMERIC_SCALE",
                           "DATETIME_PRECISION", "DESCRIPTION"}) {
    EXPECT_TRUE(plain_value(get(rows, "", {t(name)})).is_null()) << name;
  }
}

TEST_F(AdoOnDisk, FieldsTellTheirTable) {
  const Value rows = opened("Select id, name From goods");
  const auto told = [&](const char* field, const char* property) {
    return text_of(get(get(rows, "", {t(field)}), "Properties", {t(property)}));
  };
  EXPECT_EQ(told("id", "BASETABLENAME") + "." + told("name", "BASECOLUMNNAME"), "goods.name");
  EXPECT_EQ(told("id", "ISAUTOINCREMENT") + told("name", "ISAUTOINCREMENT"), "TrueFalse");
}

}  // namespace
}  // namespace rk::app
