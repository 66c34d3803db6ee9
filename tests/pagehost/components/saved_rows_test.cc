#include "pagehost/components/saved_rows.h"

#include <gtest/gtest.h>

#include <variant>

#include "adapters/xml/documents.h"
#include "tests/support/object_calls.h"
#include "value/array.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::text_of;

constexpr std::string_view kChinese = "\xE4\xB8\xAD\xE6\x96\x87";

class SavedRows : public ::testing::Test {
 protected:
  SavedRows() { xml::start_xml(); }
  static Value t(std::string_view text) { return Value::text(text); }
  std::unique_ptr<MemoryRows> read(const std::string& text) {
    auto parsed = xml_.parse(text, true);
    if (!std::holds_alternative<std::unique_ptr<platform::XmlDocument>>(parsed)) {
      ADD_FAILURE() << text;
      return nullptr;
    }
    return rows_of_saved(*std::get<std::unique_ptr<platform::XmlDocument>>(parsed));
  }
  std::string refusal(const std::string& text) {
    try {
      read(text);
    } catch (const ScriptError& error) {
      return std::to_string(error.number()) + " " + error.description();
    }
    return "";
  }

  xml::Documents xml_;
};

TEST_F(SavedRows, EveryValueComesBackWithItsColumn) {
  std::vector<MemoryColumn> columns = {
      {"Id", AdoType::Integer},     {std::string(kChinese), AdoType::VarWChar, 20},
      {"a b", AdoType::Date},       {"c3", AdoType::LongVarBinary},
      {"price", AdoType::Currency}, {"id", AdoType::Boolean},
      {"", AdoType::Double},        {"7", AdoType::LongVarWChar},
  };
  const std::string odd = "<&>'\" \t\r\n" + std::string(kChinese) + " x ";
  std::vector<std::vector<Value>> rows = {
      {Value::long_integer(1), t(kChinese), Value::date(45000.5),
       Value::array(Array::of_bytes(std::string("\0\x01", 2))), Value::currency(15000),
       Value::boolean(true), Value::real(0.1), t(odd)},
      {Value::null(), t(""), Value::null(), Value::null(), Value::null(), Value::null(),
       Value::null(), Value::null()},
  };
  MemoryRows given(columns, rows);
  const auto back = read(saved_text(given));
  ASSERT_EQ(back->field_count(), columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    EXPECT_EQ(back->field_name(i), columns[i].name);
    EXPECT_EQ(back->column(i).type, columns[i].type);
    EXPECT_EQ(back->column(i).size, columns[i].size);
  }
  ASSERT_EQ(back->record_count(), 2);
  for (const std::size_t i : {0U, 1U, 2U, 4U, 5U, 6U, 7U}) {
    EXPECT_EQ(back->field(i).kind(), rows[0][i].kind()) << i;
    EXPECT_EQ(text_of(back->field(i)), text_of(rows[0][i])) << i;
  }
  EXPECT_EQ(back->field(3).as_array().bytes(), std::string("\0\x01", 2));
  back->move_next();
  EXPECT_TRUE(back->field(0).is_null());
  EXPECT_TRUE(back->field(1).is_text()) << "an empty text is no Null";
  EXPECT_EQ(text_of(back->field(1)), "");
  EXPECT_TRUE(back->field(7).is_null());
}

TEST_F(SavedRows, WhereAColumnIsStoredComesBack) {
  MemoryColumn column{"Id", AdoType::Integer};
  column.origin.base_table = "goods";
  column.origin.base_column = "id";
  column.origin.key = column.origin.counter = column.origin.writable = true;
  MemoryRows given({column, {"n", AdoType::Integer}}, {});
  const auto back = read(saved_text(given));
  EXPECT_EQ(back->column(0).origin.base_table, "goods");
  EXPECT_EQ(back->column(0).origin.base_column, "id");
  EXPECT_TRUE(back->column(0).origin.key && back->column(0).origin.counter);
  EXPECT_TRUE(back->column(0).origin.writable);
  EXPECT_FALSE(back->column(1).origin.writable);
  EXPECT_TRUE(back->eof());
}

TEST_F(SavedRows, AFileOfAnotherServerIsRead) {
  const auto back = read(R"(<xml xmlns:s='uuid:1' xmlns:dt='uuid:2' xmlns:rs='urn:r' xmlns:z='#Z'>
<s:Schema id='RowsetSchema'><s:ElementType name='row' content='eltOnly'>
<s:AttributeType name='ID' rs:number='1'><s:datatype dt:type='i2' dt:maxLength='2'/></s:AttributeType>
<s:AttributeType name='Name' dt:type='string' dt:maxLength='15'/>
<s:extends type='rs:rowbase'/></s:ElementType></s:Schema>
<rs:data>
<rs:update><rs:original><z:row ID='2' Name='old'/></rs:original><z:row Name='new'/></rs:update>
<z:row ID='1' other='x' Name='one'/>
<rs:delete><z:row ID='3'/></rs:delete>
<rs:insert><z:row ID='4'/><z:row ID='5'/></rs:insert>
</rs:data></xml>)");
  std::string shown;
  for (; !back->eof(); back->move_next()) {
    shown += text_of(back->field(0)) + text_of(back->field(1)) + ";";
  }
  EXPECT_EQ(shown, "2new;1one;4;5;");
  EXPECT_EQ(back->column(1).size, 15);
}

TEST_F(SavedRows, ADocumentThatHoldsNoRowsIsRefusedWithItsReason) {
  EXPECT_EQ(refusal("<a><b c='1'/></a>"),
            "-2147467259 The source holds no saved record set: it has no columns.");
  MemoryRows given({{"Id", AdoType::Integer}}, {{Value::long_integer(7)}});
  std::string text = saved_text(given);
  text.replace(text.find("'7'"), 3, "'seven'");
  EXPECT_EQ(refusal(text),
            "-2147467259 The source holds no saved record set: row 1, \"seven\" is no value of the "
            "column Id.");
}

}  // namespace
}  // namespace rk::pagehost
