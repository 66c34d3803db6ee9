#include "adapters/sqlite/catalogue.h"

#include <sqlite3.h>

#include <charconv>

#include "adapters/sqlite/failure.h"
#include "value/text.h"

namespace rk::sqlite {
namespace {

constexpr std::string_view kTableText =
    "select name from sqlite_schema where type in ('table', 'view') and name = ?1 collate nocase";
// Hidden columns of virtual tables are not shown by "*" and not to pages.
constexpr std::string_view kColumnsText =
    "select name, type, pk, \"notnull\" from pragma_table_xinfo(?1) where hidden <> 1";
// Columns that are a key by themselves. An index over a part of the rows says nothing of the
// others.
constexpr std::string_view kUniqueText =
    "select max(c.name) from pragma_index_list(?1) i join pragma_index_info(i.name) c where "
    "i.\"unique\" and not i.partial group by i.name having count(*) = 1";

// One statement with a name bound to it, finalized by scope.
class Query {
 public:
  Query(sqlite3* database, const std::string& path, std::string_view text, std::string_view name)
      : database_(database), path_(path) {
    check(sqlite3_prepare_v2(database, text.data(), static_cast<int>(text.size()), &statement_,
                             nullptr));
    check(sqlite3_bind_text(statement_, 1, name.data(), static_cast<int>(name.size()),
                            SQLITE_TRANSIENT));
  }
  ~Query() { sqlite3_finalize(statement_); }
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  bool next() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) raise_failure(database_, code, path_);
    return false;
  }
  std::string text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return text == nullptr ? std::string() : std::string(text);
  }
  int number(int column) const { return sqlite3_column_int(statement_, column); }

 private:
  void check(int code) {
    if (code != SQLITE_OK) raise_failure(database_, code, path_);
  }

  sqlite3* database_;
  const std::string& path_;
  sqlite3_stmt* statement_ = nullptr;
};

bool is_column(sqlite3* database, const std::string& table, const char* column,
               const char** collation) {
  const char* type = nullptr;
  return sqlite3_table_column_metadata(database, "main", table.c_str(), column, &type, collation,
                                       nullptr, nullptr, nullptr) == SQLITE_OK;
}

}  // namespace

int declared_size(std::string_view declaration) {
  const std::size_t bracket = declaration.find('(');
  if (bracket == std::string_view::npos) return 0;
  int size = 0;
  std::from_chars(declaration.data() + bracket + 1, declaration.data() + declaration.size(), size);
  return size;
}

const jetsql::Table* Catalogue::table(std::string_view name) const {
  std::string key = lowered_ascii(name);
  const auto found = tables_.find(key);
  if (found != tables_.end()) return found->second.get();
  return tables_.emplace(std::move(key), read_table(name)).first->second.get();
}

std::unique_ptr<jetsql::Table> Catalogue::read_table(std::string_view name) const {
  auto table = std::make_unique<jetsql::Table>();
  {
    Query query(database_, path_, kTableText, name);
    if (!query.next()) return nullptr;
    table->name = query.text(0);
  }
  read_columns(*table);
  read_column_traits(*table);
  read_unique_columns(*table);
  read_indexes(*table);
  return table;
}

void Catalogue::read_columns(jetsql::Table& table) const {
  Query query(database_, path_, kColumnsText, table.name);
  std::size_t key_columns = 0;
  std::size_t key = 0;
  while (query.next()) {
    jetsql::Column column;
    column.name = query.text(0);
    const std::string declaration = query.text(1);
    column.type = jetsql::type_of_declaration(declaration);
    column.required = query.number(3) != 0;
    if (column.type == jetsql::Type::Text) column.size = declared_size(declaration);
    if (query.number(2) > 0) {
      ++key_columns;
      key = table.columns.size();
      column.row_id = equal_ignoring_case(declaration, "integer");
    }
    table.columns.push_back(std::move(column));
  }
  // Of a key of several columns none is the row's number.
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (key_columns != 1 || i != key) table.columns[i].row_id = false;
  }
}

void Catalogue::read_column_traits(jetsql::Table& table) const {
  const char* collation = nullptr;
  table.row_ids = is_column(database_, table.name, "rowid", &collation) ||
                  is_column(database_, table.name, "_rowid_", &collation);
  for (jetsql::Column& column : table.columns) {
    collation = nullptr;
    if (!is_column(database_, table.name, column.name.c_str(), &collation)) continue;
    column.no_case = collation != nullptr && equal_ignoring_case(collation, "nocase");
    if (!table.row_ids) column.row_id = false;
  }
}

void Catalogue::read_indexes(jetsql::Table& table) const {
  Query query(database_, path_, "select name from pragma_index_list(?1)", table.name);
  while (query.next()) table.indexes.push_back(query.text(0));
}

void Catalogue::read_unique_columns(jetsql::Table& table) const {
  for (jetsql::Column& column : table.columns) column.unique = column.row_id;
  Query query(database_, path_, kUniqueText, table.name);
  while (query.next()) {
    const std::string name = query.text(0);
    for (jetsql::Column& column : table.columns) {
      if (column.name == name) column.unique = true;
    }
  }
}

}  // namespace rk::sqlite
