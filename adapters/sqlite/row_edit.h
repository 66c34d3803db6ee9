// What a page changes in a row before Update, and the statements that store it: rows are named by
// their number in the table. The page's thread.
#ifndef RK_ADAPTERS_SQLITE_ROW_EDIT_H_
#define RK_ADAPTERS_SQLITE_ROW_EDIT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "adapters/sqlite/row_buffer.h"
#include "adapters/sqlite/session.h"
#include "jetsql/translate.h"
#include "value/value.h"

namespace rk::sqlite {

struct RowEdit {
  bool adding = false;
  std::vector<std::optional<Value>> values;  // by ordinal
};

// The table that a Select shows, written to by the numbers of its rows.
class EditedTable {
 public:
  // `translation` has a table and outlives this.
  EditedTable(Session& session, const jetsql::Translation& translation)
      : session_(session), translation_(translation) {}

  // Lets go of what belongs to the engine connection.
  void release() noexcept { insert_plan_ = nullptr; }

  // All three run inside a Change. insert() answers the new row's number; false where update()
  // or remove() found no such row any more. Raise the engine's errors and -2147217913.
  std::int64_t insert(const RowEdit& edit);
  bool update(const RowEdit& edit, std::int64_t row_id);
  bool remove(std::int64_t row_id);

  // Reads a row as the Select shows it, its number as one more column; columns that are no plain
  // columns of the table are Null. False where there is no such row.
  bool read(std::int64_t row_id, RowBuffer& row);

 private:
  const std::string& base_column(std::size_t ordinal) const;
  std::string row_id_name() const;
  int bind_edit(sqlite3_stmt* statement, const RowEdit& edit) const;
  Lease prepared(const std::string& text);

  Ref<Plan> insert_plan(const RowEdit& edit);

  Session& session_;
  const jetsql::Translation& translation_;
  // The statement of the last insert() and the columns that it sets, for rows that are added one
  // after the other.
  Ref<Plan> insert_plan_;
  std::vector<bool> inserted_columns_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_ROW_EDIT_H_
