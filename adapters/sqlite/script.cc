#include "adapters/sqlite/script.h"

#include <sqlite3.h>

#include <memory>

#include "adapters/sqlite/failure.h"

namespace rk::sqlite {

namespace {

struct Closer {
  void operator()(sqlite3* database) const noexcept { sqlite3_close(database); }
};

}  // namespace

void run_script(const std::string& file, const std::string& script) {
  sqlite3* opened = nullptr;
  int code =
      sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  // Closing it undoes what was not committed.
  const std::unique_ptr<sqlite3, Closer> database(opened);
  const std::string whole = "begin;\n" + script + "\ncommit;";
  if (code == SQLITE_OK) code = sqlite3_exec(opened, whole.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) raise_failure(opened, code, file);
}

}  // namespace rk::sqlite
