// Save of record sets, and Open of what was saved.
#include <gtest/gtest.h>

#include <algorithm>

#include "adapters/xml/documents.h"
#include "pagehost/components/recordset_object.h"
#include "pagehost/components/stream_object.h"
#include "pagehost/components/xml_document.h"
#include "tests/support/memory_files.h"
#include "tests/support/object_calls.h"
#include "tests/support/recording_database.h"
#include "tests/support/toy_code_pages.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

class RecordsetSaving : public ::testing::Test {
 protected:
  RecordsetSaving() {
    xml::start_xml();
    files_.put("/site/readme.txt", "here");
    database_->answer("Select * From t", {{"Id", "Name"},
                                          {{tests::number(1), t("\xE4\xB8\xAD")},
                                           {tests::number(2), Value::null()},
                                           {tests::number(3), t("it's")}}});
  }
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int32_t number) { return Value::long_integer(number); }
  FileSystem system() { return {&files_, &pages_, platform::kGb2312}; }
  XmlServices xml() { return {&xml_, system(), "/site", nullptr}; }
  Value recordset() {
    return Value::object(make_ref<RecordsetObject>(
        AdoServices(database_, std::make_shared<RowFiles>(RowFiles{xml(), nullptr}))));
  }
  Value opened() {
    const Value connection = Value::object(make_ref<ConnectionObject>(database_));
    get(connection, "Open", {t("Data Source=a.db")});
    const Value rows = recordset();
    get(rows, "Open", {t("Select * From t"), connection, n(1), n(1)});
    return rows;
  }
  Value read(const Value& source) {
    const Value rows = recordset();
    get(rows, "Open", {source});
    return rows;
  }
  static std::string shown(const Value& rows) {
    return text_of(get(rows, "GetString", {n(2), n(-1), t(","), t(";"), t("-")}));
  }
  Value stream(std::int32_t type, std::string_view charset = "") {
    const Value made = Value::object(make_ref<StreamObject>(system()));
    let(made, "Type", {n(type)});
    if (!charset.empty()) let(made, "Charset", {t(charset)});
    return made;
  }

  xml::Documents xml_;
  tests::MemoryFiles files_;
  tests::ToyCodePages pages_;
  std::shared_ptr<tests::RecordingDatabase> database_ =
      std::make_shared<tests::RecordingDatabase>();
};

TEST_F(RecordsetSaving, ASavedSetIsReadBackInBothFormats) {
  for (const int format : {0, 1}) {
    const std::string path = "/site/rows" + std::to_string(format) + ".dat";
    get(opened(), "Save", {t(path), n(format)});
    const Value rows = read(t(path));
    EXPECT_EQ(text_of(get(rows, "RecordCount")), "3");
    EXPECT_EQ(text_of(get(rows, "CursorLocation")), "3");
    EXPECT_EQ(text_of(get(get(rows, "Fields", {t("Id")}), "Type")), "3");
    EXPECT_EQ(shown(rows), "1,\xE4\xB8\xAD;2,-;3,it's;");
  }
  EXPECT_EQ(error_number([&] { get(opened(), "Save", {t("/site/x"), n(2)}); }), 3001);
}

TEST_F(RecordsetSaving, WhatIsReadBackIsFilteredSortedFoundAndChanged) {
  get(opened(), "Save", {t("/site/rows.xml"), n(1)});
  const Value rows = read(t("/site/rows.xml"));
  let(rows, "Sort", {t("Id Desc")});
  let(rows, "Filter", {t("Id <> 2")});
  EXPECT_EQ(shown(rows), "3,it's;1,\xE4\xB8\xAD;");
  let(rows, "Filter", {n(0)});
  get(rows, "Find", {t("Id = 2")});
  let(rows, "", {t("Name"), t("two")});
  get(rows, "Update");
  get(rows, "MoveFirst");
  EXPECT_EQ(shown(rows), "3,it's;2,two;1,\xE4\xB8\xAD;");
}

TEST_F(RecordsetSaving, OnlyTheRowsThatTheFilterShowsAreSaved) {
  const Value rows = opened();
  let(rows, "Filter", {t("Id > 1")});
  get(rows, "MoveLast");
  get(rows, "Save", {t("/site/rows.xml"), n(1)});
  EXPECT_EQ(text_of(get(rows, "", {t("Id")})), "2") << "it stands at the first row";
  EXPECT_EQ(shown(read(t("/site/rows.xml"))), "2,-;3,it's;");
}

TEST_F(RecordsetSaving, AFileThatIsThereIsReplacedOnlyByTheSetThatMadeIt) {
  const Value rows = opened();
  EXPECT_EQ(error_number([&] { get(rows, "Save"); }), 3001);
  EXPECT_EQ(error_number([&] { get(rows, "Save", {t("readme.txt"), n(1)}); }), 58);
  EXPECT_EQ(files_.read("/site/readme.txt"), "here");
  get(rows, "Save", {t("rows.xml"), n(1)});
  EXPECT_EQ(error_number([&] { get(rows, "Save", {t("rows.xml"), n(1)}); }), 58);
  let(rows, "Filter", {t("Id = 3")});
  get(rows, "Save");
  const Value again = read(t("rows.xml"));
  EXPECT_EQ(shown(again), "3,it's;");
  let(rows, "Filter", {n(0)});
  get(again, "MoveFirst");
  let(again, "", {t("Name"), t("other")});
  get(again, "Update");
  get(again, "Save");
  EXPECT_EQ(shown(read(t("rows.xml"))), "3,other;");
}

TEST_F(RecordsetSaving, RowsWithoutAConnectionKeepTheTypesOfTheirColumns) {
  const Value rows = recordset();
  EXPECT_EQ(error_number([&] { get(rows, "Save", {t("a.xml")}); }), 3704);
  get(get(rows, "Fields"), "Append", {t("name"), n(200), n(20)});
  get(get(rows, "Fields"), "Append", {t("at"), n(7)});
  get(rows, "Open");
  get(rows, "Save", {t("none.xml"), n(1)});
  get(rows, "AddNew");
  let(rows, "", {t("name"), t("one\r\n\t<'&")});
  let(rows, "", {t("at"), Value::date(45000)});
  get(rows, "Update");
  let(rows, "Sort", {t("name")});
  get(rows, "Save", {t("some.xml"), n(1)});
  const Value back = read(t("some.xml"));
  EXPECT_EQ(text_of(get(get(back, "Fields", {n(0)}), "Type")), "200");
  EXPECT_EQ(text_of(get(get(back, "Fields", {n(0)}), "DefinedSize")), "20");
  EXPECT_EQ(shown(back), "one\r\n\t<'&,2023-03-15;");
  EXPECT_TRUE(get(read(t("none.xml")), "EOF").as_boolean());
}

TEST_F(RecordsetSaving, StreamsOfBytesAndOfTextsTakeItAndGiveItBack) {
  for (const auto& [type, charset] :
       {std::pair{1, ""}, {2, "unicode"}, {2, "utf-8"}, {2, "gb2312"}}) {
    const Value held = stream(type, charset);
    get(opened(), "Save", {held, n(1)});
    EXPECT_EQ(text_of(get(held, "Position")), "0");
    if (type == 2) {
      EXPECT_EQ(text_of(get(held, "ReadText")).substr(0, 5), "<xml ");
      let(held, "Position", {n(0)});
    }
    EXPECT_EQ(shown(read(held)), "1,\xE4\xB8\xAD;2,-;3,it's;") << type << charset;
  }
}

TEST_F(RecordsetSaving, ADocumentTakesItAndGivesItBack) {
  const Value document = Value::object(make_ref<XmlDocumentObject>(xml()));
  get(opened(), "Save", {document, n(1)});
  get(document, "setProperty",
      {t("SelectionNamespaces"),
       t("xmlns:z='#RowsetSchema' xmlns:rs='urn:schemas-microsoft-com:rowset'")});
  EXPECT_EQ(text_of(get(get(document, "selectNodes", {t("//rs:data/z:row")}), "length")), "3");
  EXPECT_EQ(text_of(get(get(document, "selectSingleNode", {t("//z:row[@Id='3']/@Name")}), "text")),
            "it's");
  EXPECT_EQ(shown(read(document)), "1,\xE4\xB8\xAD;2,-;3,it's;");
}

TEST_F(RecordsetSaving, TheProviderOrAnOptionNamesAFileToo) {
  get(opened(), "Save", {t("rows"), n(1)});
  const Value rows = recordset();
  get(rows, "Open", {t("rows"), t("Provider=MSPersist;")});
  EXPECT_EQ(text_of(get(rows, "RecordCount")), "3");
  const Value other = recordset();
  get(other, "Open", {t("rows"), Value::missing(), n(3), n(4), n(256)});
  EXPECT_EQ(text_of(get(other, "LockType")), "4");
  get(other, "MoveFirst");
  EXPECT_EQ(error_number([&] {
              let(other, "", {t("Name"), t("x")});
            }),
            3251)
      << "no table is behind it";
}

TEST_F(RecordsetSaving, AConnectionToFilesTakesTheirNamesForStatements) {
  get(opened(), "Save", {t("rows.xml"), n(1)});
  for (const bool by_provider : {true, false}) {
    const Value connection = Value::object(make_ref<ConnectionObject>(
        AdoServices(database_, std::make_shared<RowFiles>(RowFiles{xml(), nullptr}))));
    if (by_provider) let(connection, "Provider", {t("mspersist")});
    get(connection, "Open", {t(by_provider ? "" : "Provider=MSPersist;")});
    EXPECT_EQ(text_of(get(connection, "State")), "1");
    EXPECT_EQ(error_number([&] { get(connection, "Open", {t("Data Source=a.db")}); }), 3705);
    EXPECT_EQ(shown(get(connection, "Execute", {t("rows.xml")})), "1,\xE4\xB8\xAD;2,-;3,it's;");
    EXPECT_EQ(error_number([&] { get(connection, "Execute", {t("none.xml")}); }), 53);
    const Value rows = recordset();
    get(rows, "Open", {t("rows.xml"), connection, n(3), n(3)});
    EXPECT_EQ(text_of(get(rows, "RecordCount")), "3");
    EXPECT_EQ(error_number([&] { get(connection, "BeginTrans"); }), 3704);
    get(connection, "Close");
    EXPECT_EQ(text_of(get(rows, "RecordCount")), "3");
    EXPECT_EQ(text_of(get(connection, "State")), "0");
    EXPECT_EQ(error_number([&] { get(connection, "Close"); }), 3704);
  }
}

TEST_F(RecordsetSaving, WhatHoldsNoRowsIsRefusedAndLeavesTheSetClosed) {
  files_.put("/site/old.dat", std::string("\x01TG!\x02\0\0", 7));
  files_.put("/site/page.xml", "<a/>");
  const auto refused = [&](const char* path) {
    const Value rows = recordset();
    const int number = error_number([&] { get(rows, "Open", {t(path)}); });
    EXPECT_EQ(text_of(get(rows, "State")), "0");
    return number;
  };
  EXPECT_EQ(refused("old.dat"), -2147467259);
  EXPECT_EQ(refused("page.xml"), -2147467259);
  EXPECT_EQ(refused("/site/none.xml"), 53);
  EXPECT_EQ(refused("../../etc/passwd"), 53);
  EXPECT_EQ(refused("Select * From t"), 3709);
  EXPECT_EQ(refused("Select * From t Where d='1/2'"), 3709);
  EXPECT_EQ(refused("t"), 3709);
}

TEST_F(RecordsetSaving, ATextThatNoDocumentCanHoldIsNotSaved) {
  const Value rows = recordset();
  get(get(rows, "Fields"), "Append", {t("name"), n(200), n(20)});
  get(rows, "Open");
  get(rows, "AddNew");
  let(rows, "", {t("name"), t(std::string("a\x01", 2))});
  get(rows, "Update");
  EXPECT_EQ(error_number([&] { get(rows, "Save", {t("bad.xml"), n(1)}); }), -2147467259);
  EXPECT_FALSE(files_.find("/site/bad.xml"));
}

}  // namespace
}  // namespace rk::pagehost
