// Create, Alter and Drop of tables and indexes, with Jet's types.
#include "jetsql/letters.h"
#include "jetsql/writer.h"

namespace rk::jetsql {

namespace {

struct JetType {
  std::string_view name;
  Type type;
};

constexpr JetType kTypes[] = {
    {"autoincrement", Type::Integer},
    {"counter", Type::Integer},
    {"integer", Type::Integer},
    {"int", Type::Integer},
    {"long", Type::Integer},
    {"smallint", Type::Integer},
    {"short", Type::Integer},
    {"byte", Type::Integer},
    {"tinyint", Type::Integer},
    {"bigint", Type::Integer},
    {"real", Type::Double},
    {"single", Type::Double},
    {"double", Type::Double},
    {"float", Type::Double},
    {"number", Type::Double},
    {"numeric", Type::Double},
    {"decimal", Type::Double},
    {"dec", Type::Double},
    {"currency", Type::Currency},
    {"money", Type::Currency},
    {"yesno", Type::Boolean},
    {"bit", Type::Boolean},
    {"boolean", Type::Boolean},
    {"logical", Type::Boolean},
    {"datetime", Type::Date},
    {"date", Type::Date},
    {"time", Type::Date},
    {"timestamp", Type::Date},
    {"text", Type::Text},
    {"char", Type::Text},
    {"varchar", Type::Text},
    {"character", Type::Text},
    {"string", Type::Text},
    {"alphanumeric", Type::Text},
    {"nchar", Type::Text},
    {"nvarchar", Type::Text},
    {"memo", Type::Text},
    {"longtext", Type::Text},
    {"longchar", Type::Text},
    {"note", Type::Text},
    {"ntext", Type::Text},
    {"guid", Type::Text},
    {"hyperlink", Type::Text},
    {"image", Type::Blob},
    {"binary", Type::Blob},
    {"varbinary", Type::Blob},
    {"longbinary", Type::Blob},
    {"oleobject", Type::Blob},
    {"general", Type::Blob},
};

Type type_of(const ColumnDefinition& column) {
  for (const JetType& known : kTypes) {
    if (known.name == column.type) return known.type;
  }
  throw SqlError(kSyntaxError,
                 "Syntax error in field definition: '" + column.type + "' is no type.",
                 column.begin);
}

bool is_counter(const ColumnDefinition& column) {
  return column.type == "counter" || column.type == "autoincrement";
}

// Jet names an index within its table, the engine within the database.
std::string index_name(const std::string& table, const std::string& index) {
  return table + "." + index;
}

// The name in the file of an index that the table has, whether it was named by Jet's rule or the
// file's own; empty where it has none of that name.
std::string index_in_file(const Table& table, const std::string& index) {
  for (const std::string& name : {index_name(table.name, index), index}) {
    for (const std::string& each : table.indexes) {
      if (same_letters(each, name)) return each;
    }
  }
  return "";
}

[[noreturn]] void no_such_column(const std::string& name, std::size_t position) {
  throw SqlError(kNoValueGiven, "The table has no field '" + name + "'.", position);
}

void check_columns(const KeyDefinition& key, const Table& table, std::size_t position) {
  for (const std::string& column : key.columns) {
    if (table.column(column) == nullptr) no_such_column(column, position);
  }
}

}  // namespace

std::string declaration_of(Type type) {
  switch (type) {
    case Type::Integer:
      return " INTEGER";
    case Type::Double:
      return " REAL";
    case Type::Currency:
      return " CURRENCY";
    case Type::Boolean:
      return " BOOLEAN";
    case Type::Date:
      return " DATETIME";
    case Type::Text:
      return " TEXT COLLATE NOCASE";
    case Type::Blob:
      return " BLOB";
    default:
      return "";
  }
}

void Writer::define(Statement& statement) {
  translation_.kind = Translation::Kind::Define;
  if (statement.kind == Statement::Kind::CreateTable) return create_table(statement);
  const Table& table = resolver_.table(statement.target, statement.target_begin);
  translation_.table = table.name;
  switch (statement.kind) {
    case Statement::Kind::CreateIndex:
      check_columns(statement.keys.front(), table, statement.target_begin);
      if (!index_in_file(table, statement.index).empty()) {
        throw SqlError(
            kSyntaxError,
            "Table '" + table.name + "' already has an index named '" + statement.index + "'.",
            statement.target_begin);
      }
      return create_index(statement);
    case Statement::Kind::AddColumn:
      return add_columns(statement);
    case Statement::Kind::DropColumn:
      return drop_columns(statement, table);
    case Statement::Kind::AlterColumn:
      return alter_column(statement, table);
    case Statement::Kind::AddKey:
      return add_key(statement, table);
    case Statement::Kind::DropTable: {
      std::string out = "DROP TABLE ";
      name(table.name, out);
      translation_.statements.push_back(std::move(out));
      return;
    }
    default: {  // DropIndex, DropKey
      const std::string found = index_in_file(table, statement.index);
      if (found.empty()) {
        throw SqlError(kSyntaxError,
                       "No such index '" + statement.index + "' on table '" + table.name + "'.",
                       statement.target_begin);
      }
      std::string out = "DROP INDEX ";
      name(found, out);
      translation_.statements.push_back(std::move(out));
    }
  }
}

void Writer::create_table(Statement& statement) {
  if (schema_.table(statement.target) != nullptr) {
    throw SqlError(kTableExists, "Table '" + statement.target + "' already exists.",
                   statement.target_begin);
  }
  translation_.table = statement.target;
  // Only the engine's own key counts up by itself; another primary key beside it becomes unique.
  bool counted = false;
  for (const ColumnDefinition& column : statement.definitions)
    counted = counted || is_counter(column);
  std::string out = "CREATE TABLE ";
  name(statement.target, out);
  bool first = true;
  for (ColumnDefinition& column : statement.definitions) {
    out += first ? " (" : ", ";
    first = false;
    if (counted && column.primary_key && !is_counter(column)) {
      column.primary_key = false;
      column.unique = true;
    }
    definition(column, true, out);
  }
  if (first) {
    throw SqlError(kSyntaxError, "Syntax error in CREATE TABLE statement: no field.",
                   statement.target_begin);
  }
  for (const KeyDefinition& key : statement.keys) {
    const bool counter_alone = counted && key.primary && key.columns.size() == 1 &&
                               is_counter_named(statement, key.columns.front());
    if (!counter_alone) table_key(key, counted, out);
  }
  translation_.statements.push_back(out + ")");
}

bool Writer::is_counter_named(const Statement& statement, const std::string& column) {
  for (const ColumnDefinition& candidate : statement.definitions) {
    if (same_letters(candidate.name, column)) return is_counter(candidate);
  }
  return false;
}

void Writer::key_columns(const KeyDefinition& key, std::string& out) const {
  for (std::size_t i = 0; i < key.columns.size(); ++i) {
    out += i == 0 ? " (" : ",";
    name(key.columns[i], out);
    if (i < key.descending.size() && key.descending[i]) out += " DESC";
  }
  out += ')';
}

void Writer::table_key(const KeyDefinition& key, bool counted, std::string& out) {
  out += ", ";
  if (!key.name.empty()) {
    out += "CONSTRAINT ";
    name(key.name, out);
    out += ' ';
  }
  if (key.references_table.empty()) {
    out += key.primary && !counted ? "PRIMARY KEY" : "UNIQUE";
    return key_columns(key, out);
  }
  out += "FOREIGN KEY";
  key_columns(key, out);
  out += " REFERENCES ";
  name(key.references_table, out);
  KeyDefinition there;
  there.columns = key.references_columns;
  if (!there.columns.empty()) key_columns(there, out);
}

void Writer::definition(ColumnDefinition& column, bool own_key, std::string& out) {
  const Type type = type_of(column);
  name(column.name, out);
  if (is_counter(column)) {
    if (!own_key) {
      throw SqlError(kUnspecified, "A counter field can only be made with its table.",
                     column.begin);
    }
    out += " INTEGER PRIMARY KEY AUTOINCREMENT";
    return;
  }
  std::string declared = declaration_of(type);
  if (type == Type::Text && column.sizes.size() == 1) {
    declared.assign(" TEXT(").append(std::to_string(column.sizes[0])).append(") COLLATE NOCASE");
  }
  if (type == Type::Double && column.type.substr(0, 3) == "dec" && column.sizes.size() == 2) {
    declared =
        " DECIMAL(" + std::to_string(column.sizes[0]) + "," + std::to_string(column.sizes[1]) + ")";
  }
  out += declared;
  if (column.primary_key && own_key) out += " PRIMARY KEY";
  if (column.unique && own_key) out += " UNIQUE";
  if (column.not_null && own_key) out += " NOT NULL";
  if (column.default_value != nullptr) {
    out += " DEFAULT ";
    default_value(*column.default_value, type, out);
  } else if (type == Type::Boolean) {
    out += " DEFAULT 0";
  }
  if (!column.references_table.empty()) {
    out += " REFERENCES ";
    name(column.references_table, out);
    if (!column.references_column.empty()) {
      out += '(';
      name(column.references_column, out);
      out += ')';
    }
  }
}

// The clock of a default is the engine's, in the zone of the process.
void Writer::default_value(Expression& value, Type type, std::string& out) {
  const bool call = value.kind == Expression::Kind::Call && value.operands.empty();
  const std::string word =
      call || value.kind == Expression::Kind::Column ? lower_letters(value.name) : "";
  if (word == "now") {
    out += "(datetime('now','localtime'))";
  } else if (word == "date") {
    out += "(date('now','localtime'))";
  } else if (word == "time") {
    out += "('1899-12-30 '||time('now','localtime'))";
  } else {
    Column column;
    column.type = type;
    resolver_.resolve(value, *resolver_.make_scope(nullptr));
    out += '(';
    stored(value, column, out);
    out += ')';
  }
}

void Writer::create_index(const Statement& statement) {
  const KeyDefinition& key = statement.keys.front();
  std::string out = statement.unique || key.primary ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
  name(index_name(translation_.table, statement.index), out);
  out += " ON ";
  name(translation_.table, out);
  key_columns(key, out);
  translation_.statements.push_back(std::move(out));
}

void Writer::add_columns(Statement& statement) {
  for (ColumnDefinition& column : statement.definitions) {
    std::string out = "ALTER TABLE ";
    name(translation_.table, out);
    out += " ADD COLUMN ";
    definition(column, false, out);
    translation_.statements.push_back(std::move(out));
  }
}

void Writer::drop_columns(const Statement& statement, const Table& table) {
  for (const ColumnDefinition& column : statement.definitions) {
    if (table.column(column.name) == nullptr) no_such_column(column.name, column.begin);
    std::string out = "ALTER TABLE ";
    name(table.name, out);
    out += " DROP COLUMN ";
    name(column.name, out);
    translation_.statements.push_back(std::move(out));
  }
}

// The engine cannot change a column's type: a new column takes the old one's values and its name.
void Writer::alter_column(Statement& statement, const Table& table) {
  ColumnDefinition& column = statement.definitions.front();
  const Column* before = table.column(column.name);
  if (before == nullptr) no_such_column(column.name, column.begin);
  std::string whole_table = "ALTER TABLE ";
  name(table.name, whole_table);
  ColumnDefinition made = column;
  made.name = before->name + " (new)";
  std::string add = whole_table + " ADD COLUMN ";
  definition(made, false, add);
  std::string fill = "UPDATE ";
  name(table.name, fill);
  fill += " SET ";
  name(made.name, fill);
  fill += '=';
  Binding binding;
  binding.table = &table;
  Expression value;
  value.kind = Expression::Kind::Column;
  value.binding = &binding;
  value.column = before;
  value.type = before->type;
  Column target;
  target.type = type_of(column);
  stored(value, target, fill);
  std::string drop = whole_table + " DROP COLUMN ";
  name(before->name, drop);
  std::string rename = whole_table + " RENAME COLUMN ";
  name(made.name, rename);
  rename += " TO ";
  name(before->name, rename);
  translation_.statements = {add, fill, drop, rename};
}

void Writer::add_key(const Statement& statement, const Table& table) {
  const KeyDefinition& key = statement.keys.front();
  check_columns(key, table, statement.target_begin);
  if (!key.references_table.empty()) {
    throw SqlError(kUnspecified, "A reference to another table can only be made with its table.",
                   statement.target_begin);
  }
  std::string out = "CREATE UNIQUE INDEX ";
  name(index_name(table.name, key.name.empty() ? "PrimaryKey" : key.name), out);
  out += " ON ";
  name(table.name, out);
  key_columns(key, out);
  translation_.statements.push_back(std::move(out));
}

}  // namespace rk::jetsql
