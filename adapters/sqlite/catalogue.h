// Tables and columns of an open database, as the translator asks for them. What was read is kept
// until forget(), which the owner calls when the schema changed. One page's thread at a time.
#ifndef RK_ADAPTERS_SQLITE_CATALOGUE_H_
#define RK_ADAPTERS_SQLITE_CATALOGUE_H_

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "jetsql/schema.h"

struct sqlite3;

namespace rk::sqlite {

// 50 of TEXT(50); 0 where a declaration names no length.
int declared_size(std::string_view declaration);

class Catalogue final : public jetsql::Schema {
 public:
  Catalogue(sqlite3* database, std::string path) : database_(database), path_(std::move(path)) {}

  // Raises an error of the file that cannot be read.
  const jetsql::Table* table(std::string_view name) const override;
  void forget() { tables_.clear(); }

 private:
  std::unique_ptr<jetsql::Table> read_table(std::string_view name) const;
  void read_columns(jetsql::Table& table) const;
  void read_column_traits(jetsql::Table& table) const;
  void read_unique_columns(jetsql::Table& table) const;
  void read_indexes(jetsql::Table& table) const;

  sqlite3* database_;
  std::string path_;
  // By lower-case name; null where there is no such table.
  mutable std::unordered_map<std::string, std::unique_ptr<jetsql::Table>> tables_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_CATALOGUE_H_
