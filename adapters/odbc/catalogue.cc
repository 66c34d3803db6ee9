#include "adapters/odbc/catalogue.h"

#include <algorithm>

#include "adapters/odbc/session.h"
#include "value/conversions.h"
#include "value/text.h"

namespace rk::odbc {
namespace {

using platform::ColumnType;

// Tables are changed by hand, if ever: a page soon sees them as they are.
constexpr std::chrono::seconds kKnownFor{60};

// Places in the answer of the driver's list of columns.
constexpr std::size_t kSchemaAt = 1, kTableAt = 2, kNameAt = 3, kTypeAt = 4, kTypeNameAt = 5,
                      kSizeAt = 6, kDecimalsAt = 8, kNullableAt = 10;
// And of its list of primary keys.
constexpr std::size_t kKeyTableAt = 2, kKeyNameAt = 3;

std::vector<std::vector<Value>> rows_of(Session& session, Statement::List list,
                                        std::string_view name) {
  std::vector<std::vector<Value>> rows;
  const auto statement = session.statement();
  statement->list(list, name);
  while (statement->next()) {
    auto& row = rows.emplace_back();
    for (std::size_t i = 0; i < statement->columns().size(); ++i) {
      row.push_back(statement->value(i));
    }
  }
  return rows;
}

std::string text_at(const std::vector<Value>& row, std::size_t place) {
  return place < row.size() ? joined_text(row[place]).string() : std::string();
}

int number_at(const std::vector<Value>& row, std::size_t place) {
  return place < row.size() && !row[place].is_null() ? to_long(row[place]) : 0;
}

jetsql::Column column_of(const std::vector<Value>& row) {
  Column told;
  set_type(told, number_at(row, kTypeAt), text_at(row, kTypeNameAt), number_at(row, kDecimalsAt));
  jetsql::Column column;
  column.name = text_at(row, kNameAt);
  column.type = jet_type(told.type);
  column.required = number_at(row, kNullableAt) == 0;
  if (told.type == ColumnType::Text) column.size = number_at(row, kSizeAt);
  return column;
}

// A list of the driver's takes a name for a pattern: rows of others are left out, and those of a
// table of the same name in another schema.
std::shared_ptr<TableInfo> asked(Session& session, const std::string& name) {
  auto found = std::make_shared<TableInfo>();
  std::string schema;
  for (const auto& row : rows_of(session, Statement::List::Columns, name)) {
    if (text_at(row, kTableAt) != name) continue;
    if (found->table.columns.empty()) schema = text_at(row, kSchemaAt);
    if (text_at(row, kSchemaAt) == schema) found->table.columns.push_back(column_of(row));
  }
  if (found->table.columns.empty()) return nullptr;
  found->table.name = name;
  found->table.row_ids = false;
  for (const auto& row : rows_of(session, Statement::List::PrimaryKeys, name)) {
    if (text_at(row, kKeyTableAt) == name) found->keys.push_back(text_at(row, kKeyNameAt));
  }
  if (found->keys.size() == 1) {
    for (jetsql::Column& column : found->table.columns) {
      column.unique = column.name == found->keys.front();
    }
  }
  return found;
}

std::string raised_ascii(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return out;
}

}  // namespace

std::shared_ptr<const TableInfo> Catalogue::table(Session& session, std::string_view name) {
  const std::string key = lowered_ascii(name);
  const auto now = std::chrono::steady_clock::now();
  {
    const std::lock_guard lock(mutex_);
    const auto known = known_.find(key);
    if (known != known_.end() && now - known->second.since < kKnownFor) return known->second.table;
  }
  std::vector<std::string> spellings{std::string(name), key, raised_ascii(name)};
  spellings.erase(std::unique(spellings.begin(), spellings.end()), spellings.end());
  std::shared_ptr<const TableInfo> found;
  for (const std::string& spelling : spellings) {
    found = asked(session, spelling);
    if (found != nullptr) break;
  }
  // What is not there may be made by the next statement.
  if (found == nullptr) return nullptr;
  const std::lock_guard lock(mutex_);
  known_[key] = {found, now};
  return found;
}

void Catalogue::forget() {
  const std::lock_guard lock(mutex_);
  known_.clear();
}

jetsql::Type jet_type(ColumnType type) noexcept {
  switch (type) {
    case ColumnType::Integer:
      return jetsql::Type::Integer;
    case ColumnType::Double:
      return jetsql::Type::Double;
    case ColumnType::Currency:
      return jetsql::Type::Currency;
    case ColumnType::Boolean:
      return jetsql::Type::Boolean;
    case ColumnType::Date:
      return jetsql::Type::Date;
    case ColumnType::Text:
      return jetsql::Type::Text;
    case ColumnType::Bytes:
      return jetsql::Type::Blob;
    case ColumnType::Unknown:
      break;
  }
  return jetsql::Type::Unknown;
}

ColumnType column_type(jetsql::Type type) noexcept {
  switch (type) {
    case jetsql::Type::Integer:
      return ColumnType::Integer;
    case jetsql::Type::Double:
      return ColumnType::Double;
    case jetsql::Type::Currency:
      return ColumnType::Currency;
    case jetsql::Type::Boolean:
      return ColumnType::Boolean;
    case jetsql::Type::Date:
      return ColumnType::Date;
    case jetsql::Type::Text:
      return ColumnType::Text;
    case jetsql::Type::Blob:
      return ColumnType::Bytes;
    case jetsql::Type::Unknown:
      break;
  }
  return ColumnType::Unknown;
}

}  // namespace rk::odbc
