// Runs a script in SQLite's own words on a file: for making a database, not for pages.
#ifndef RK_ADAPTERS_SQLITE_SCRIPT_H_
#define RK_ADAPTERS_SQLITE_SCRIPT_H_

#include <string>

namespace rk::sqlite {

// Makes the file where it is not there, runs the statements in their order in one transaction, and
// leaves none of them where one fails. Raises -2147467259 for a file that cannot be opened, else
// the failing statement's error.
void run_script(const std::string& file, const std::string& script);

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_SCRIPT_H_
