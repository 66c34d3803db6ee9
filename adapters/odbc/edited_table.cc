#include "adapters/odbc/edited_table.h"

#include <utility>

#include "adapters/odbc/engine.h"
#include "adapters/odbc/failure.h"
#include "value/text.h"

namespace rk::odbc {
namespace {

std::string joined(const std::vector<std::string>& parts, std::string_view between) {
  std::string out;
  for (const std::string& part : parts) {
    if (!out.empty()) out += between;
    out += part;
  }
  return out;
}

// The one table that the driver names behind all columns that have one.
std::string told_table(const std::vector<Column>& columns) {
  std::string table;
  for (const Column& column : columns) {
    if (column.base_table.empty()) continue;
    if (!table.empty() && table != column.base_table) return {};
    table = column.base_table;
  }
  return table;
}

std::string table_of(const Query& query, const std::vector<Column>& columns) {
  if (query.translated) return query.table;
  // A grouping has a table behind its columns too, and rows that are none of it.
  const std::string named = table_of_text(query.sql);
  if (named.empty()) return {};
  const std::string told = told_table(columns);
  return told.empty() ? named : told;
}

}  // namespace

EditedTable::EditedTable(Session& session, const Query& query, const std::vector<Column>& columns)
    : session_(session) {
  const std::string name = table_of(query, columns);
  if (name.empty()) {
    raise_unsupported(
        "This record set cannot be written to: its rows are not those of one table "
        "(Select ... From table [Where ...] [Order By ...])");
  }
  table_ = session_.catalogue().table(session_, name);
  if (table_ == nullptr) {
    raise_unsupported("This record set cannot be written to: the data source does not list table " +
                      name);
  }
  key_places_.resize(table_->keys.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const std::string& base = columns[i].base_column;
    places_.push_back(table_->table.column(base.empty() ? columns[i].name : base));
    for (std::size_t k = 0; k < table_->keys.size(); ++k) {
      if (places_[i] != nullptr && places_[i]->name == table_->keys[k]) key_places_[k] = i;
    }
  }
}

std::vector<Value> EditedTable::key_of(const std::vector<Value>& row) const {
  if (key_places_.empty()) {
    raise_unsupported("Rows of table " + table_->table.name +
                      " cannot be changed: it has no primary key");
  }
  std::vector<Value> key;
  for (std::size_t k = 0; k < key_places_.size(); ++k) {
    if (!key_places_[k]) {
      raise_unsupported("Rows of this record set cannot be changed: it does not show column " +
                        table_->keys[k] + " of the primary key");
    }
    key.push_back(row[*key_places_[k]]);
  }
  return key;
}

std::string EditedTable::where_key() const {
  std::vector<std::string> tests;
  for (const std::string& name : table_->keys) tests.push_back(quoted(name) + " = ?");
  return " WHERE " + joined(tests, " AND ");
}

std::vector<Value> EditedTable::key_values(const std::vector<Value>& key) const {
  std::vector<Value> values;
  for (std::size_t k = 0; k < key.size(); ++k) {
    const jetsql::Column* column = table_->table.column(table_->keys[k]);
    values.push_back(column == nullptr ? key[k] : stored_value(key[k], column_type(column->type)));
  }
  return values;
}

void EditedTable::add_edit(const RowEdit& edit, std::vector<std::string>& names,
                           std::vector<Value>& values) {
  for (std::size_t i = 0; i < edit.size(); ++i) {
    if (!edit[i]) continue;
    names.push_back(quoted(places_[i]->name));
    values.push_back(stored_value(*edit[i], column_type(places_[i]->type)));
  }
}

// What the page set, where it set the whole key.
std::optional<std::vector<Value>> EditedTable::set_key(const RowEdit& edit) const {
  std::vector<Value> key;
  for (const std::optional<std::size_t>& place : key_places_) {
    if (!place || !edit[*place]) return std::nullopt;
    key.push_back(*edit[*place]);
  }
  if (key.empty()) return std::nullopt;
  return key;
}

std::optional<std::vector<Value>> EditedTable::numbered_key() {
  if (table_->keys.size() != 1) return std::nullopt;
  std::string_view text;
  switch (session_.link().dialect()) {
    case Dialect::MySql:
      text = "SELECT LAST_INSERT_ID()";
      break;
    case Dialect::SqlServer:
      text = "SELECT @@IDENTITY";
      break;
    case Dialect::Sqlite:
      text = "SELECT last_insert_rowid()";
      break;
    case Dialect::PostgreSql:
    case Dialect::Other:
      return std::nullopt;
  }
  const auto statement = session_.statement();
  statement->run(text, {});
  if (!statement->next()) return std::nullopt;
  return std::vector<Value>{statement->value(0)};
}

std::optional<std::vector<Value>> EditedTable::insert(const RowEdit& edit) {
  std::vector<std::string> names;
  std::vector<Value> values;
  add_edit(edit, names, values);
  std::string text = "INSERT INTO " + quoted(table_->table.name);
  if (names.empty()) {
    text += session_.link().dialect() == Dialect::MySql ? " () VALUES ()" : " DEFAULT VALUES";
  } else {
    const std::vector<std::string> marks(names.size(), "?");
    text += " (" + joined(names, ", ") + ") VALUES (" + joined(marks, ", ") + ")";
  }
  const bool tells = session_.link().dialect() == Dialect::PostgreSql && !table_->keys.empty();
  if (tells) {
    std::vector<std::string> keys;
    for (const std::string& key : table_->keys) keys.push_back(quoted(key));
    text += " RETURNING " + joined(keys, ", ");
  }
  const auto statement = session_.statement();
  statement->run(text, values);
  if (!tells) {
    auto set = set_key(edit);
    return set ? set : numbered_key();
  }
  if (!statement->next()) return std::nullopt;
  std::vector<Value> key;
  for (std::size_t k = 0; k < table_->keys.size(); ++k) key.push_back(statement->value(k));
  return key;
}

bool EditedTable::update(const RowEdit& edit, const std::vector<Value>& key) {
  std::vector<std::string> names;
  std::vector<Value> values;
  add_edit(edit, names, values);
  const std::string text = "UPDATE " + quoted(table_->table.name) + " SET " +
                           joined(names, " = ?, ") + " = ?" + where_key();
  for (Value& value : key_values(key)) values.push_back(std::move(value));
  const auto statement = session_.statement();
  statement->run(text, values);
  return statement->changed() != 0;
}

bool EditedTable::remove(const std::vector<Value>& key) {
  const auto statement = session_.statement();
  statement->run("DELETE FROM " + quoted(table_->table.name) + where_key(), key_values(key));
  return statement->changed() != 0;
}

std::optional<std::vector<Value>> EditedTable::read(const std::vector<Value>& key) {
  std::vector<std::string> names;
  for (const jetsql::Column* place : places_) {
    names.push_back(place == nullptr ? "NULL" : quoted(place->name));
  }
  const auto statement = session_.statement();
  statement->run(
      "SELECT " + joined(names, ", ") + " FROM " + quoted(table_->table.name) + where_key(),
      key_values(key));
  if (!statement->next()) return std::nullopt;
  std::vector<Value> row;
  for (std::size_t i = 0; i < names.size(); ++i) row.push_back(statement->value(i));
  return row;
}

}  // namespace rk::odbc
