// Binds the values of a text to its prepared statements. The page's thread.
#ifndef RK_ADAPTERS_SQLITE_STATEMENT_VALUES_H_
#define RK_ADAPTERS_SQLITE_STATEMENT_VALUES_H_

#include <string>
#include <vector>

#include "jetsql/translate.h"
#include "value/value.h"

struct sqlite3_stmt;

namespace rk::sqlite {

// The values that one run of a text is made with.
struct RunValues {
  std::vector<jetsql::Literal> literals;
  std::vector<Value> bound;  // by the page, to its "?"
  double now = 0;            // the clock at the run, asked only where the text asks for it
};

// Texts are bound by reference: `values` stays as it is until the statement is reset. Raises
// -2147217913.
void bind_values(sqlite3_stmt* statement, const std::vector<jetsql::Parameter>& parameters,
                 const RunValues& values);

// A value of the page, in the way that `parameter` says. Raises -2147217913.
void bind_value(sqlite3_stmt* statement, int place, const jetsql::Parameter& parameter,
                const Value& value);

// One value of the kinds Null, Text, Integer and Double, copied.
void bind_copy(sqlite3_stmt* statement, int place, const jetsql::Literal& value);

// Tells one set of literals from another.
void append_key(std::string& out, const std::vector<jetsql::Literal>& literals);

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_STATEMENT_VALUES_H_
