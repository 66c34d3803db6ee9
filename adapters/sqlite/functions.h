// Gives an engine connection the functions that translated texts call. A function's error is kept
// until the statement that called it has failed. One page's thread at a time.
#ifndef RK_ADAPTERS_SQLITE_FUNCTIONS_H_
#define RK_ADAPTERS_SQLITE_FUNCTIONS_H_

#include <optional>
#include <vector>

#include "jetsql/functions.h"
#include "jetsql/sql_error.h"

struct sqlite3;

namespace rk::sqlite {

class Functions {
 public:
  // What the engine calls back with; lives as long as the connection.
  struct Binding {
    Functions* owner;
    const jetsql::Function* function;
    const jetsql::Aggregate* aggregate;
  };

  Functions() = default;
  Functions(const Functions&) = delete;
  Functions& operator=(const Functions&) = delete;

  // An engine's result code.
  int add_to(sqlite3* database);

  void keep_error(const jetsql::SqlError& error) { error_ = error; }
  // Nothing where no function failed since the last call.
  std::optional<jetsql::SqlError> take_error();

 private:
  std::vector<Binding> bindings_;
  std::optional<jetsql::SqlError> error_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_FUNCTIONS_H_
