#include "adapters/sqlite/row_edit.h"

#include <sqlite3.h>

#include <utility>

#include "adapters/sqlite/field_values.h"
#include "adapters/sqlite/statement_values.h"
#include "value/script_error.h"

namespace rk::sqlite {
namespace {

std::string quoted(const std::string& name) {
  std::string text = "\"";
  for (const char c : name) {
    if (c == '"') text += c;
    text += c;
  }
  return text + '"';
}

jetsql::Parameter stored_in(jetsql::Type type) {
  jetsql::Parameter parameter;
  parameter.conversion = stored_conversion(type);
  return parameter;
}

}  // namespace

const std::string& EditedTable::base_column(std::size_t ordinal) const {
  const std::string& name = translation_.columns[ordinal].base_column;
  if (name.empty()) raise(errors::kFeatureNotAvailable);
  return name;
}

std::string EditedTable::row_id_name() const {
  const jetsql::Table* table = session_.handle().table(translation_.table);
  for (const char* name : {"rowid", "_rowid_", "oid"}) {
    if (table == nullptr || table->column(name) == nullptr) return name;
  }
  raise(errors::kFeatureNotAvailable);
}

Lease EditedTable::prepared(const std::string& text) {
  Handle& handle = session_.handle();
  return handle.lease(handle.own_plan(text), 0);
}

int EditedTable::bind_edit(sqlite3_stmt* statement, const RowEdit& edit) const {
  int place = 0;
  for (std::size_t i = 0; i < edit.values.size(); ++i) {
    if (!edit.values[i]) continue;
    bind_value(statement, ++place, stored_in(translation_.columns[i].type), *edit.values[i]);
  }
  return place;
}

Ref<Plan> EditedTable::insert_plan(const RowEdit& edit) {
  std::vector<bool> columns;
  for (const auto& value : edit.values) columns.push_back(value.has_value());
  if (insert_plan_ && columns == inserted_columns_) return insert_plan_;
  std::string names, marks;
  for (std::size_t i = 0; i < edit.values.size(); ++i) {
    if (!edit.values[i]) continue;
    names += (names.empty() ? "" : ", ") + quoted(base_column(i));
    marks += marks.empty() ? "?" : ", ?";
  }
  std::string text = "insert into " + quoted(translation_.table);
  text += names.empty() ? " default values" : " (" + names + ") values (" + marks + ")";
  insert_plan_ = session_.handle().own_plan(text);
  inserted_columns_ = std::move(columns);
  return insert_plan_;
}

std::int64_t EditedTable::insert(const RowEdit& edit) {
  const Lease lease = session_.handle().lease(insert_plan(edit), 0);
  bind_edit(lease.statement(), edit);
  session_.handle().step(lease.statement());
  return session_.handle().last_row_id();
}

bool EditedTable::update(const RowEdit& edit, std::int64_t row_id) {
  std::string assignments;
  for (std::size_t i = 0; i < edit.values.size(); ++i) {
    if (!edit.values[i]) continue;
    assignments += (assignments.empty() ? "" : ", ") + quoted(base_column(i)) + " = ?";
  }
  const Lease lease = prepared("update " + quoted(translation_.table) + " set " + assignments +
                               " where " + row_id_name() + " = ?");
  const int last = bind_edit(lease.statement(), edit);
  sqlite3_bind_int64(lease.statement(), last + 1, row_id);
  session_.handle().step(lease.statement());
  return session_.handle().changes() > 0;
}

bool EditedTable::remove(std::int64_t row_id) {
  const Lease lease =
      prepared("delete from " + quoted(translation_.table) + " where " + row_id_name() + " = ?");
  sqlite3_bind_int64(lease.statement(), 1, row_id);
  session_.handle().step(lease.statement());
  return session_.handle().changes() > 0;
}

bool EditedTable::read(std::int64_t row_id, RowBuffer& row) {
  const std::string key = row_id_name();
  std::string names;
  for (const jetsql::OutputColumn& column : translation_.columns) {
    names += (column.base_column.empty() ? "null" : quoted(column.base_column)) + ", ";
  }
  const Reading reading(session_);
  const Lease lease = prepared("select " + names + key + " from " + quoted(translation_.table) +
                               " where " + key + " = ?");
  sqlite3_bind_int64(lease.statement(), 1, row_id);
  row.begin(translation_.columns.size() + 1);
  if (!session_.handle().step(lease.statement())) return false;
  row.add(lease.statement());
  return true;
}

}  // namespace rk::sqlite
