// Insert, Update, Delete.
#include <algorithm>

#include "jetsql/letters.h"
#include "jetsql/writer.h"

namespace rk::jetsql {

namespace {

[[noreturn]] void unknown_column(const std::string& name, std::size_t position) {
  throw SqlError(kNoValueGiven,
                 "The statement names a field that the table does not have: '" + name + "'.",
                 position);
}

// A column is stored once.
template <class Name>
void check_names(std::size_t count, Name name_of, std::size_t position) {
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = i + 1; j < count; ++j) {
      if (name_of(i) != name_of(j)) continue;
      throw SqlError(kSyntaxError, "Duplicate output destination '" + name_of(i)->name + "'.",
                     position);
    }
  }
}

[[noreturn]] void not_updatable(std::size_t position) {
  throw SqlError(kUnspecified, "Operation must use an updateable query.", position);
}

}  // namespace

// Without a list of columns the values of a Select go by its names where the table has them all,
// else, as Values do, by their places.
std::vector<const Column*> Writer::unnamed_columns(const Statement& statement, const Table& table) {
  std::vector<const Column*> columns;
  if (statement.select != nullptr) {
    for (const ResolvedOutput& output : statement.select->scope->outputs) {
      columns.push_back(table.column(output.name));
    }
    if (std::find(columns.begin(), columns.end(), nullptr) == columns.end()) return columns;
    columns.clear();
  }
  for (const Column& column : table.columns) columns.push_back(&column);
  return columns;
}

void Writer::insert(Statement& statement) {
  translation_.kind = Translation::Kind::Insert;
  const Table& table = resolver_.table(statement.target, statement.target_begin);
  translation_.table = table.name;
  std::vector<const Column*> columns;
  for (std::size_t i = 0; i < statement.columns.size(); ++i) {
    columns.push_back(table.column(statement.columns[i]));
    if (columns.back() == nullptr) unknown_column(statement.columns[i], statement.column_begins[i]);
  }
  if (statement.select != nullptr) resolver_.resolve_query(*statement.select, nullptr);
  if (statement.columns.empty()) columns = unnamed_columns(statement, table);
  check_names(
      columns.size(), [&](std::size_t i) { return columns[i]; }, statement.target_begin);
  std::string out = "INSERT INTO ";
  name(table.name, out);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    out += i == 0 ? " (" : ",";
    name(columns[i]->name, out);
  }
  out += ") ";
  if (statement.select != nullptr) {
    insert_select(statement, columns, out);
  } else {
    insert_values(statement, columns, out);
  }
  translation_.statements.push_back(std::move(out));
}

void Writer::insert_values(Statement& statement, const std::vector<const Column*>& columns,
                           std::string& out) {
  check_count(statement.values.size(), columns.size(), statement.target_begin);
  Scope& scope = *resolver_.make_scope(nullptr);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    out += i == 0 ? "VALUES (" : ",";
    resolver_.resolve(*statement.values[i], scope);
    stored(*statement.values[i], *columns[i], out);
  }
  out += ')';
}

void Writer::check_count(std::size_t values, std::size_t columns, std::size_t position) const {
  if (values == columns) return;
  throw SqlError(kSyntaxError, "Number of query values and destination fields are not the same.",
                 position);
}

// Rows out of a select go in as the columns have them where their types differ.
void Writer::insert_select(Statement& statement, const std::vector<const Column*>& columns,
                           std::string& out) {
  const Select& select = *statement.select;
  const std::vector<ResolvedOutput>& outputs = select.scope->outputs;
  check_count(outputs.size(), columns.size(), statement.target_begin);
  bool same = true;
  for (std::size_t i = 0; i < columns.size(); ++i)
    same = same && outputs[i].type == columns[i]->type;
  if (same) {
    out += whole(select, true);
    return;
  }
  Table made_up;
  Binding binding;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    Column column;
    column.name = "v" + std::to_string(i);
    column.type = outputs[i].type;
    // A comparison came out as a number.
    if (column.type == Type::Boolean && outputs[i].column == nullptr) column.type = Type::Integer;
    made_up.columns.push_back(std::move(column));
  }
  binding.table = &made_up;
  out += "SELECT ";
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) out += ',';
    Expression value;
    value.kind = Expression::Kind::Column;
    value.binding = &binding;
    value.column = &made_up.columns[i];
    value.type = value.column->type;
    stored(value, *columns[i], out);
  }
  out += " FROM (SELECT ";
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) out += ',';
    name(outputs[i].name, out);
    out += " AS ";
    name(made_up.columns[i].name, out);
  }
  out += " FROM (" + whole(select, true) + "))";
}

void Writer::update(Statement& statement) {
  translation_.kind = Translation::Kind::Update;
  Scope& scope = *resolver_.make_scope(nullptr);
  resolver_.resolve_sources(statement.from, scope);
  for (const Assignment& made : statement.assignments) {
    resolver_.resolve(*made.column, scope);
    resolver_.resolve(*made.value, scope);
    if (made.column->kind != Expression::Kind::Column || made.column->column == nullptr) {
      unknown_column(made.column->name, made.column->begin);
    }
    const Binding* target = statement.assignments.front().column->binding;
    if (made.column->binding != target || target->derived) not_updatable(made.column->begin);
  }
  check_names(
      statement.assignments.size(),
      [&](std::size_t i) { return statement.assignments[i].column->column; },
      statement.target_begin);
  if (statement.where != nullptr) resolver_.resolve(*statement.where, scope);
  scope_ = &scope;
  if (scope.bindings.size() == 1) {
    update_one(statement, scope);
  } else {
    update_joined(statement);
  }
}

void Writer::update_one(Statement& statement, Scope& scope) {
  translation_.table = scope.bindings.front().table->name;
  std::string out = "UPDATE ";
  source(*statement.from.front(), out);
  bool first = true;
  for (const Assignment& made : statement.assignments) {
    out += first ? " SET " : ",";
    first = false;
    name(made.column->column->name, out);
    out += '=';
    stored(*made.value, *made.column->column, out);
  }
  where(statement.where, out);
  translation_.statements.push_back(std::move(out));
}

// The join is a select of the rows' numbers and new values, which the update then takes.
void Writer::update_joined(Statement& statement) {
  const Binding& target = *statement.assignments.front().column->binding;
  if (target.row_id.empty()) not_updatable(statement.target_begin);
  translation_.table = target.table->name;
  std::string rows = "SELECT ";
  name(target.name, rows);
  rows += "." + target.row_id + " AS [k]";
  std::string out = "UPDATE ";
  name(target.table->name, out);
  out += " SET ";
  for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
    const Assignment& made = statement.assignments[i];
    const std::string value = "[v" + std::to_string(i) + "]";
    if (i > 0) out += ',';
    name(made.column->column->name, out);
    out += "=[s]." + value;
    rows += ',';
    stored(*made.value, *made.column->column, rows);
    rows += " AS " + value;
  }
  from(statement.from, rows);
  where(statement.where, rows);
  out += " FROM (" + rows + ") AS [s] WHERE ";
  name(target.table->name, out);
  out += "." + target.row_id + "=[s].[k]";
  translation_.statements.push_back(std::move(out));
}

void Writer::delete_rows(Statement& statement) {
  translation_.kind = Translation::Kind::Delete;
  Scope& scope = *resolver_.make_scope(nullptr);
  resolver_.resolve_sources(statement.from, scope);
  if (statement.where != nullptr) resolver_.resolve(*statement.where, scope);
  scope_ = &scope;
  if (scope.bindings.size() > 1) return delete_joined(statement, scope);
  const Binding& target = scope.bindings.front();
  if (target.derived) not_updatable(statement.target_begin);
  if (!statement.target.empty() && !same_letters(statement.target, target.name)) {
    throw SqlError(kNoValueGiven,
                   "Could not find table '" + statement.target + "' in the FROM clause.",
                   statement.target_begin);
  }
  translation_.table = target.table->name;
  std::string out = "DELETE FROM ";
  source(*statement.from.front(), out);
  where(statement.where, out);
  translation_.statements.push_back(std::move(out));
}

void Writer::delete_joined(Statement& statement, Scope& scope) {
  const Binding* target = nullptr;
  for (const Binding& binding : scope.bindings) {
    if (same_letters(binding.name, statement.target)) target = &binding;
  }
  if (target == nullptr) {
    throw SqlError(kUnspecified, "Specify the table containing the records you want to delete.",
                   statement.target_begin);
  }
  if (target->row_id.empty()) not_updatable(statement.target_begin);
  translation_.table = target->table->name;
  std::string out = "DELETE FROM ";
  name(target->table->name, out);
  out += " WHERE " + target->row_id + " IN (SELECT ";
  name(target->name, out);
  out += "." + target->row_id;
  from(statement.from, out);
  where(statement.where, out);
  translation_.statements.push_back(out + ")");
}

}  // namespace rk::jetsql
