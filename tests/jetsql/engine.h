// A real SQLite database in memory for the tests of the translator: its tables as a Schema, the
// functions registered, texts run as an adapter would run them. Dates are those of a fixed clock.
#pragma once

#include <sqlite3.h>

#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "jetsql/letters.h"
#include "jetsql/numbers.h"
#include "jetsql/translate.h"
#include "tests/jetsql/engine_functions.h"

namespace rk::jetsql {

// 2026-03-05 14:30:15
inline constexpr double kTestDay = 46086;
inline constexpr double kTestTime = (14 * 3600 + 30 * 60 + 15) / 86400.0;

inline std::string file_text(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class Engine : public Schema {
 public:
  explicit Engine(const std::string& definition) {
    sqlite3_open(":memory:", &database_);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    register_functions(database_);
    execute(definition);
  }
  ~Engine() override { sqlite3_close_v2(database_); }
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  const Table* table(std::string_view name) const override {
    const auto found = tables_.find(lower_letters(name));
    return found == tables_.end() ? nullptr : &found->second;
  }

  void execute(const std::string& sql) {
    char* message = nullptr;
    if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
      const std::string text = message;
      sqlite3_free(message);
      throw std::runtime_error(text + " in " + sql);
    }
    read_tables();
  }

  // The rows of one engine text, values parted by "|", Null as NULL.
  std::vector<std::string> rows(const std::string& sql, const std::vector<Literal>& values) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
      throw std::runtime_error(std::string(sqlite3_errmsg(database_)) + " in " + sql);
    }
    for (int i = 0; i < sqlite3_bind_parameter_count(statement); ++i) {
      bind(statement, i + 1, values.at(static_cast<std::size_t>(i)));
    }
    std::vector<std::string> all;
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) all.push_back(row(statement));
    const std::string message = sqlite3_errmsg(database_);
    sqlite3_finalize(statement);
    if (const auto refusal = std::exchange(refusal_of_aggregate(), std::nullopt)) throw *refusal;
    if (code != SQLITE_DONE) throw std::runtime_error(message + " in " + sql);
    return all;
  }

  struct Run {
    Translation translation;
    std::vector<Literal> values;
    std::vector<std::string> rows;
  };

  static std::vector<Literal> values_of(const Translation& translation, const Shape& shape) {
    std::vector<Literal> values;
    for (const Parameter& parameter : translation.parameters) {
      Literal given;
      given.kind = Literal::Kind::Date;
      switch (parameter.source) {
        case Parameter::Source::Literal:
          given = shape.literals.at(parameter.index);
          break;
        case Parameter::Source::Caller:
          given.kind = Literal::Kind::Integer;
          given.integer = 1;
          break;
        case Parameter::Source::Now:
          given.number = kTestDay + kTestTime;
          break;
        case Parameter::Source::Today:
          given.number = kTestDay;
          break;
        case Parameter::Source::Clock:
          given.number = kTestTime;
          break;
      }
      values.push_back(bound_value(parameter, given));
    }
    return values;
  }

  // As an adapter does it: by shape, then the statements in order; of the last one the rows.
  Run run(const std::string& sql) {
    Run made;
    Shape shape;
    read_shape(sql, shape);
    made.translation = translate(sql, *this);
    made.values = values_of(made.translation, shape);
    for (const std::string& statement : made.translation.statements) {
      made.rows = rows(statement, made.values);
    }
    if (!made.translation.reads()) read_tables();
    return made;
  }

 private:
  static void bind(sqlite3_stmt* statement, int place, const Literal& value) {
    switch (value.kind) {
      case Literal::Kind::Integer:
        sqlite3_bind_int64(statement, place, value.integer);
        break;
      case Literal::Kind::Double:
        sqlite3_bind_double(statement, place, value.number);
        break;
      case Literal::Kind::Text:
        sqlite3_bind_text(statement, place, value.text.data(), static_cast<int>(value.text.size()),
                          SQLITE_TRANSIENT);
        break;
      default:
        sqlite3_bind_null(statement, place);
    }
  }

  static std::string row(sqlite3_stmt* statement) {
    std::string text;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
      if (i > 0) text += '|';
      switch (sqlite3_column_type(statement, i)) {
        case SQLITE_NULL:
          text += "NULL";
          break;
        case SQLITE_FLOAT:
          text += number_text(sqlite3_column_double(statement, i));
          break;
        default:
          text += reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
      }
    }
    return text;
  }

  void read_tables() {
    tables_.clear();
    for (const std::string& name : rows(
             "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%'", {})) {
      Table& table = tables_[lower_letters(name)];
      table.name = name;
      sqlite3_stmt* statement = nullptr;
      sqlite3_prepare_v2(database_, ("PRAGMA table_info([" + name + "])").c_str(), -1, &statement,
                         nullptr);
      while (sqlite3_step(statement) == SQLITE_ROW) {
        Column column;
        column.name = reinterpret_cast<const char*>(sqlite3_column_text(statement, 1));
        const std::string declared =
            reinterpret_cast<const char*>(sqlite3_column_text(statement, 2));
        column.type = type_of_declaration(declared);
        const char* collation = nullptr;
        sqlite3_table_column_metadata(database_, nullptr, name.c_str(), column.name.c_str(),
                                      nullptr, &collation, nullptr, nullptr, nullptr);
        column.no_case = collation != nullptr && std::string_view(collation) == "NOCASE";
        column.row_id = same_letters(declared, "INTEGER") && sqlite3_column_int(statement, 5) == 1;
        column.unique = column.row_id;
        table.columns.push_back(column);
      }
      sqlite3_finalize(statement);
      table.indexes = rows("SELECT name FROM pragma_index_list('" + name + "')", {});
    }
  }

  sqlite3* database_ = nullptr;
  std::map<std::string, Table> tables_;
};

}  // namespace rk::jetsql
