// The border at which the engine's failures become errors of a page; the engine's words are kept.
// Pure functions.
#ifndef RK_ADAPTERS_SQLITE_FAILURE_H_
#define RK_ADAPTERS_SQLITE_FAILURE_H_

#include <string>
#include <string_view>

#include "jetsql/sql_error.h"

struct sqlite3;

namespace rk::sqlite {

// Raises for the last failure of a connection; `path` names the file where that is what failed.
[[noreturn]] void raise_failure(sqlite3* database, int code, std::string_view path);
[[noreturn]] void raise_failure(const jetsql::SqlError& error);

// What a page sees where its time was over before the statement was done.
[[noreturn]] void raise_timeout();

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_FAILURE_H_
