#include "adapters/sqlite/failure.h"

#include <sqlite3.h>

#include <cstdint>

#include "value/script_error.h"

namespace rk::sqlite {
namespace {

std::int32_t number_of_message(std::string_view message) {
  if (message.starts_with("no such table")) return errors::kSqlMissingTable;
  if (message.starts_with("no such column")) return errors::kSqlMissingColumn;
  return errors::kSqlSyntax;
}

std::int32_t number_of(int code, std::string_view message) {
  switch (code) {
    case SQLITE_ERROR:
      return number_of_message(message);
    case SQLITE_MISMATCH:
      return static_cast<std::int32_t>(jetsql::kTypeMismatch);
    case SQLITE_INTERRUPT:
      return errors::kSqlTimeout;
    default:
      return errors::kSqlFailure;
  }
}

// What went wrong with the file, before the engine's words.
std::string about_file(int code, const std::string& path) {
  switch (code) {
    case SQLITE_NOTADB:
      return "Database file " + path + " is not an SQLite database: ";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "Database file " + path + " is in use by another process: ";
    case SQLITE_READONLY:
      return "Database file " + path + " is read-only: ";
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return "Database file " + path + " cannot be opened: ";
    case SQLITE_CORRUPT:
      return "Database file " + path + " is damaged: ";
    case SQLITE_FULL:
    case SQLITE_IOERR:
      return "Database file " + path + " cannot be read or written: ";
    default:
      return {};
  }
}

}  // namespace

void raise_failure(sqlite3* database, int code, std::string_view path) {
  const int plain = code & 0xFF;
  const std::string words = database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code);
  raise_database_error(number_of(plain, words), about_file(plain, std::string(path)) + words);
}

void raise_failure(const jetsql::SqlError& error) {
  raise_database_error(static_cast<std::int32_t>(error.number()), error.what());
}

void raise_timeout() {
  raise_database_error(errors::kSqlTimeout,
                       "The page's time was over before the database answered");
}

}  // namespace rk::sqlite
