// The table that a record set writes to, by the primary key of its rows. The page's thread.
#ifndef RK_ADAPTERS_ODBC_EDITED_TABLE_H_
#define RK_ADAPTERS_ODBC_EDITED_TABLE_H_

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/odbc/catalogue.h"
#include "adapters/odbc/columns.h"
#include "adapters/odbc/query.h"
#include "adapters/odbc/session.h"

namespace rk::odbc {

// What a page sets before Update, by ordinal.
using RowEdit = std::vector<std::optional<Value>>;

class EditedTable {
 public:
  // Of a record set's rows. Raises 3251 with a text that says why it cannot be written to.
  EditedTable(Session& session, const Query& query, const std::vector<Column>& columns);

  // Whether a column of the record set is one of the table's.
  bool has(std::size_t ordinal) const { return places_[ordinal] != nullptr; }

  // Answers the new row's key; none where the engine does not tell it.
  std::optional<std::vector<Value>> insert(const RowEdit& edit);
  // By the key of a row. False where there is no such row any more.
  bool update(const RowEdit& edit, const std::vector<Value>& key);
  bool remove(const std::vector<Value>& key);
  // The table's own columns of a row as it is stored; those of others are Null.
  std::optional<std::vector<Value>> read(const std::vector<Value>& key);
  // Raises 3251 where the record set does not show the whole key.
  std::vector<Value> key_of(const std::vector<Value>& row) const;

 private:
  std::string quoted(const std::string& name) const { return session_.link().quoted(name); }
  std::string where_key() const;
  void add_edit(const RowEdit& edit, std::vector<std::string>& names, std::vector<Value>& values);
  std::vector<Value> key_values(const std::vector<Value>& key) const;
  std::optional<std::vector<Value>> set_key(const RowEdit& edit) const;
  std::optional<std::vector<Value>> numbered_key();

  Session& session_;
  std::shared_ptr<const TableInfo> table_;
  // The table's column behind each of the record set's, or null.
  std::vector<const jetsql::Column*> places_;
  std::vector<std::optional<std::size_t>> key_places_;  // ordinals, by column of the key
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_EDITED_TABLE_H_
