#include "pagehost/components/batch_texts.h"

#include <string_view>

#include "value/script_error.h"

namespace rk::pagehost {
namespace {

using Columns = std::span<const platform::ColumnTraits>;
using platform::SqlText;

std::string bracketed(const std::string& name) {
  return "[" + name + "]";
}

std::string stored_table(Columns columns) {
  const std::string table = batch_table(columns);
  if (table.empty()) raise(errors::kFeatureNotAvailable);
  return bracketed(table);
}

bool has_key(Columns columns) {
  for (const auto& column : columns) {
    if (column.writable && column.key) return true;
  }
  return false;
}

// The row as it was read: by its key and what was changed of it, or by all that can be compared.
void add_where(SqlText& sql, Columns columns, const RowValues& values, const RowChange& change) {
  const bool keyed = has_key(columns);
  std::string_view before_next = " Where ";
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto changed = change.before.find(i);
    const bool asked = !keyed || columns[i].key || changed != change.before.end();
    const bool bytes = columns[i].type == platform::ColumnType::Bytes;
    if (!columns[i].writable || !asked || bytes) continue;
    const Value& held = changed == change.before.end() ? values[i] : changed->second;
    sql.add(before_next).add(bracketed(columns[i].base_column));
    before_next = " And ";
    if (held.is_null()) {
      sql.add(" Is Null");
    } else {
      sql.add("=?").bind(held);
    }
  }
}

}  // namespace

std::string batch_table(Columns columns) {
  for (const auto& column : columns) {
    if (column.writable && !column.base_column.empty()) return column.base_table;
  }
  return "";
}

SqlText insert_text(Columns columns, const RowValues& values, const RowChange& change) {
  SqlText sql("Insert Into " + stored_table(columns));
  std::string marks;
  for (const auto& [i, before] : change.before) {
    sql.add(marks.empty() ? " (" : ",").add(bracketed(columns[i].base_column));
    marks += marks.empty() ? "?" : ",?";
    sql.bind(values[i]);
  }
  // A row of defaults: the language has no text for it but to name a column.
  for (std::size_t i = 0; marks.empty() && i < columns.size(); ++i) {
    if (!columns[i].writable || columns[i].counter) continue;
    sql.add(" (").add(bracketed(columns[i].base_column));
    marks = "Null";
  }
  return sql.add(") Values (").add(marks).add(")");
}

SqlText update_text(Columns columns, const RowValues& values, const RowChange& change) {
  SqlText sql("Update " + stored_table(columns));
  std::string_view before_next = " Set ";
  for (const auto& [i, before] : change.before) {
    sql.add(before_next).add(bracketed(columns[i].base_column)).add("=?").bind(values[i]);
    before_next = ",";
  }
  add_where(sql, columns, values, change);
  return sql;
}

SqlText delete_text(Columns columns, const RowValues& values) {
  SqlText sql("Delete From " + stored_table(columns));
  add_where(sql, columns, values, {});
  return sql;
}

}  // namespace rk::pagehost
