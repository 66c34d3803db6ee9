#include "pagehost/components/saved_rows.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "pagehost/components/saved_types.h"
#include "value/array.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

using platform::XmlDocument;
using platform::XmlKind;
using platform::XmlNode;

// As much as an XML document is read from.
constexpr std::size_t kMostText = std::size_t{16} << 20;

constexpr std::string_view kHead =
    "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\n"
    " xmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\n"
    " xmlns:rs='urn:schemas-microsoft-com:rowset'\n"
    " xmlns:z='#RowsetSchema'>\n"
    "<s:Schema id='RowsetSchema'>\n"
    "<s:ElementType name='row' content='eltOnly' rs:updatable='true'>\n";
constexpr std::string_view kMiddle =
    "<s:extends type='rs:rowbase'/>\n"
    "</s:ElementType>\n"
    "</s:Schema>\n"
    "<rs:data>\n";
constexpr std::string_view kFoot = "</rs:data>\n</xml>\n";

[[noreturn]] void raise_unreadable(std::string_view why) {
  raise_database_error(errors::kSqlFailure,
                       "The source holds no saved record set: " + std::string(why) + ".");
}

void append_escaped(std::string& out, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '\'':
        out += "&apos;";
        break;
      case '\t':
        out += "&#x9;";
        break;
      case '\r':
        out += "&#xd;";
        break;
      case '\n':
        out += "&#xa;";
        break;
      default:
        out += c;
    }
  }
}

void append_attribute(std::string& out, std::string_view name, std::string_view value) {
  out.append(" ").append(name).append("='");
  append_escaped(out, value);
  out += "'";
}

void append_flag(std::string& out, std::string_view name, bool holds) {
  if (holds) append_attribute(out, name, "true");
}

// ASCII letters, digits and "_", and the Chinese characters that every XML reader takes in names.
bool is_plain_name(std::string_view name) {
  if (name.empty() || (name[0] >= '0' && name[0] <= '9')) return false;
  const std::u16string units = Text(name).units();
  return std::all_of(units.begin(), units.end(), [](char16_t c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           (c >= 0x4E00 && c <= 0x9FA5);
  });
}

// The names of the rows' attributes: the columns' own where they can be, else "c" and a number.
std::vector<std::string> attribute_names(const MemoryRows& rows) {
  std::vector<std::string> names;
  const auto is_taken = [&](const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  for (std::size_t i = 0; i < rows.field_count(); ++i) {
    std::string name = rows.field_name(i);
    if (!is_plain_name(name) || is_taken(name)) {
      std::size_t number = i + 1;
      do {
        name = "c" + std::to_string(number++);
      } while (is_taken(name));
    }
    names.push_back(std::move(name));
  }
  return names;
}

void append_column(std::string& out, const MemoryColumn& column, std::string_view attribute,
                   std::size_t number) {
  const SavedType& type = saved_type(column.type);
  out += "<s:AttributeType";
  append_attribute(out, "name", attribute);
  if (attribute != column.name) append_attribute(out, "rs:name", column.name);
  append_attribute(out, "rs:number", std::to_string(number));
  append_flag(out, "rs:nullable", !column.origin.required);
  append_flag(out, "rs:write", true);
  // Where a batch of changes is stored once the rows have a connection again.
  if (column.origin.writable && !column.origin.base_table.empty()) {
    append_attribute(out, "rs:basetable", column.origin.base_table);
    append_attribute(out, "rs:basecolumn", column.origin.base_column);
    append_flag(out, "rs:keycolumn", column.origin.key);
    append_flag(out, "rs:autoincrement", column.origin.counter);
  }
  out += ">\n<s:datatype";
  append_attribute(out, "dt:type", type.data_type);
  if (!type.database_type.empty()) append_attribute(out, "rs:dbtype", type.database_type);
  const std::int32_t length = type.length > 0 ? type.length : column.size;
  if (length > 0) append_attribute(out, "dt:maxLength", std::to_string(length));
  append_flag(out, "rs:fixedlength", type.fixed);
  append_flag(out, "rs:long", type.is_long);
  out += "/>\n</s:AttributeType>\n";
}

std::string_view local_name(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// Reads the document of a saved record set.
class SavedReader {
 public:
  explicit SavedReader(XmlDocument& document) : document_(document) {}

  std::unique_ptr<MemoryRows> read() {
    XmlNode* top = nullptr;
    for (XmlNode* each : elements(document_.root())) top = each;
    if (top == nullptr) raise_unreadable("it is empty");
    XmlNode* data = nullptr;
    for (XmlNode* each : elements(top)) {
      const std::string name = document_.name(each);
      if (local_name(name) == "Schema") read_schema(each);
      if (local_name(name) == "data") data = each;
    }
    if (columns_.empty()) raise_unreadable("it has no columns");
    if (data != nullptr) read_data(data);
    return std::make_unique<MemoryRows>(std::move(columns_), std::move(rows_));
  }

 private:
  std::vector<XmlNode*> elements(const XmlNode* of) const {
    std::vector<XmlNode*> out;
    for (XmlNode* each : document_.children(of)) {
      if (document_.kind(each) == XmlKind::Element) out.push_back(each);
    }
    return out;
  }

  // Of the first of the two that has it.
  std::string attribute(const XmlNode* element, std::string_view name,
                        const XmlNode* other = nullptr) const {
    const XmlNode* found = document_.attribute(element, name);
    if (found == nullptr && other != nullptr) found = document_.attribute(other, name);
    return found == nullptr ? std::string() : document_.value(found).value_or("");
  }
  bool flag(const XmlNode* element, std::string_view name, const XmlNode* other = nullptr) const {
    return attribute(element, name, other) == "true";
  }

  void read_schema(const XmlNode* schema) {
    for (const XmlNode* row : elements(schema)) {
      if (local_name(document_.name(row)) != "ElementType") continue;
      for (const XmlNode* each : elements(row)) {
        if (local_name(document_.name(each)) == "AttributeType") read_column(each);
      }
    }
  }

  void read_column(const XmlNode* element) {
    const XmlNode* type = nullptr;
    for (const XmlNode* each : elements(element)) {
      if (local_name(document_.name(each)) == "datatype") type = each;
    }
    const std::string attribute_name = attribute(element, "name");
    const XmlNode* own_name = document_.attribute(element, "rs:name");
    MemoryColumn column;
    column.name = own_name == nullptr ? attribute_name : document_.value(own_name).value_or("");
    column.type =
        type_of_saved(attribute(element, "dt:type", type), attribute(element, "rs:dbtype", type),
                      flag(element, "rs:fixedlength", type), flag(element, "rs:long", type));
    if (is_sized(column.type)) column.size = number_of(attribute(element, "dt:maxLength", type));
    column.origin.base_table = attribute(element, "rs:basetable");
    column.origin.base_column = attribute(element, "rs:basecolumn");
    column.origin.type = column_type_of(column.type);
    column.origin.size = column.size;
    column.origin.counter = flag(element, "rs:autoincrement");
    column.origin.key = flag(element, "rs:keycolumn");
    column.origin.writable = !column.origin.base_table.empty();
    ordinals_[attribute_name] = columns_.size();
    columns_.push_back(std::move(column));
  }

  static std::int32_t number_of(std::string_view text) {
    std::int32_t number = 0;
    for (const char c : text) {
      if (c < '0' || c > '9' || number > 100'000'000) return 0;
      number = number * 10 + (c - '0');
    }
    return number;
  }

  // Rows that were added stand in an element of their own, changed ones beside what they were, and
  // of removed ones only what they were.
  void read_data(const XmlNode* data) {
    for (const XmlNode* each : elements(data)) {
      const std::string name = document_.name(each);
      const std::string_view kind = local_name(name);
      if (kind == "row") {
        read_row(each, {});
      } else if (kind == "insert") {
        for (const XmlNode* row : elements(each)) read_row(row, {});
      } else if (kind == "update") {
        read_change(each);
      }
    }
  }

  void read_change(const XmlNode* change) {
    std::vector<Value> before;
    for (const XmlNode* each : elements(change)) {
      const std::string name = document_.name(each);
      if (local_name(name) == "original") {
        for (const XmlNode* row : elements(each)) before = values_of(row, {});
      } else if (local_name(name) == "row") {
        read_row(each, before);
      }
    }
  }

  void read_row(const XmlNode* element, std::vector<Value> before) {
    rows_.push_back(values_of(element, std::move(before)));
    if (rows_.size() * columns_.size() > kMaxArrayElements) raise(errors::kOutOfMemory);
  }

  std::vector<Value> values_of(const XmlNode* element, std::vector<Value> values) const {
    values.resize(columns_.size(), Value::null());
    for (const XmlNode* each : document_.attributes(element)) {
      const auto found = ordinals_.find(document_.name(each));
      if (found == ordinals_.end()) continue;
      const MemoryColumn& column = columns_[found->second];
      const std::string text = document_.value(each).value_or("");
      try {
        values[found->second] = value_of_saved(column.type, text);
      } catch (const ScriptError&) {  // raised anew, with the place
        raise_unreadable("row " + std::to_string(rows_.size() + 1) + ", \"" + text +
                         "\" is no value of the column " + column.name);
      }
    }
    return values;
  }

  XmlDocument& document_;
  std::vector<MemoryColumn> columns_;
  std::vector<std::vector<Value>> rows_;
  std::unordered_map<std::string, std::size_t> ordinals_;  // by the rows' attributes
};

}  // namespace

std::string saved_text(MemoryRows& rows) {
  const std::vector<std::string> names = attribute_names(rows);
  std::string out(kHead);
  for (std::size_t i = 0; i < names.size(); ++i) {
    append_column(out, rows.column(i), names[i], i + 1);
  }
  out += kMiddle;
  if (rows.record_count() > 0) rows.move_first();
  for (; !rows.eof(); rows.move_next()) {
    out += "<z:row";
    for (std::size_t i = 0; i < names.size(); ++i) {
      const Value value = rows.field(i);
      if (value.is_null() || value.is_empty()) continue;
      append_attribute(out, names[i], saved_value(rows.column(i).type, value));
    }
    out += "/>\n";
    if (out.size() > kMostText) raise(errors::kOutOfMemory);
  }
  return out += kFoot;
}

std::unique_ptr<MemoryRows> rows_of_saved(XmlDocument& document) {
  return SavedReader(document).read();
}

}  // namespace rk::pagehost
