// Feeds texts to the translator and runs what it writes on the engine: no text may crash either,
// and what is taken must be one that the engine can prepare, but for the depth that its own parser
// has. Byte 0 of the input chooses where a part "from outside" would begin and end.
#include <sqlite3.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "jetsql/functions.h"
#include "jetsql/letters.h"
#include "jetsql/like.h"
#include "jetsql/translate.h"

namespace {

using rk::jetsql::Aggregate;
using rk::jetsql::aggregates;
using rk::jetsql::bound_value;
using rk::jetsql::check_outside;
using rk::jetsql::Function;
using rk::jetsql::functions;
using rk::jetsql::is_like;
using rk::jetsql::Parameter;
using rk::jetsql::read_shape;
using rk::jetsql::same_letters;
using rk::jetsql::Schema;
using rk::jetsql::Shape;
using rk::jetsql::SqlError;
using rk::jetsql::Table;
using rk::jetsql::translate;
using rk::jetsql::Translation;
using rk::jetsql::Type;

class TwoTables : public Schema {
 public:
  TwoTables() {
    goods_.name = "goods";
    goods_.columns = {{"id", Type::Integer, false, true},   {"name", Type::Text, true, false},
                      {"code", Type::Text, false, false},   {"price", Type::Currency, false, false},
                      {"hot", Type::Boolean, false, false}, {"added", Type::Date, false, false}};
    class_.name = "class";
    class_.columns = {{"id", Type::Integer, false, true}, {"title", Type::Text, true, false}};
  }
  const Table* table(std::string_view name) const override {
    if (same_letters(name, "goods")) return &goods_;
    return same_letters(name, "class") ? &class_ : nullptr;
  }

 private:
  Table goods_, class_;
};

void nothing(sqlite3_context* context, int, sqlite3_value**) {
  sqlite3_result_null(context);
}
void finish(sqlite3_context* context) {
  sqlite3_result_null(context);
}

sqlite3* engine() {
  static sqlite3* database = [] {
    sqlite3* opened = nullptr;
    sqlite3_open(":memory:", &opened);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    for (const Function& function : functions()) {
      sqlite3_create_function_v2(opened, function.name, function.arity, SQLITE_UTF8, nullptr,
                                 nothing, nullptr, nullptr, nullptr);
    }
    for (const Aggregate& aggregate : aggregates()) {
      sqlite3_create_function_v2(opened, aggregate.name, aggregate.arity, SQLITE_UTF8, nullptr,
                                 nullptr, nothing, finish, nullptr);
    }
    sqlite3_exec(
        opened,
        "CREATE TABLE goods (id INTEGER PRIMARY KEY, name TEXT COLLATE NOCASE, code TEXT, price "
        "CURRENCY, hot BOOLEAN, added DATETIME);"
        "CREATE TABLE class (id INTEGER PRIMARY KEY, title TEXT COLLATE NOCASE)",
        nullptr, nullptr, nullptr);
    return opened;
  }();
  return database;
}

void prepare(const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  const int code =
      sqlite3_prepare_v2(engine(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
  sqlite3_finalize(statement);
  if (code == SQLITE_OK) return;
  const std::string_view message = sqlite3_errmsg(engine());
  // Limits of the engine's own, and names that a definition may clash with.
  for (const char* known :
       {"parser stack overflow", "too many", "too large", "already exists", "duplicate column",
        "no such index", "may not be", "Cannot add", "cannot drop", "foreign key", "too deep",
        "more than one primary key", "no such column: \"", "cannot DROP", "there is already",
        "object name reserved", "after drop column", "expressions prohibited", "unknown column"}) {
    if (message.find(known) != std::string_view::npos) return;
  }
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view sql(reinterpret_cast<const char*>(data) + 1, size - 1);
  static const TwoTables tables;
  Shape shape;
  read_shape(sql, shape);
  const std::size_t begin = sql.empty() ? 0 : data[0] % sql.size();
  try {
    check_outside(sql, begin, begin + (sql.size() - begin) / 2);
  } catch (const SqlError&) {
  }
  is_like(sql.substr(0, begin), sql.substr(begin));
  try {
    const Translation translation = translate(sql, tables);
    for (const Parameter& parameter : translation.parameters) {
      if (parameter.source != Parameter::Source::Literal) continue;
      if (parameter.index >= shape.literals.size()) std::abort();
      try {
        bound_value(parameter, shape.literals[parameter.index]);
      } catch (const SqlError&) {
      }
    }
    if (translation.kind == Translation::Kind::Define ||
        translation.kind == Translation::Kind::SelectInto) {
      prepare(translation.statements.front());
      return 0;
    }
    for (const std::string& statement : translation.statements) prepare(statement);
    if (!translation.reads()) return 0;
    prepare(translation.count_text);
    prepare(translation.select_text(true, true));
    if (translation.can_reverse()) prepare(translation.reversed_text(true));
  } catch (const SqlError&) {
  }
  return 0;
}
