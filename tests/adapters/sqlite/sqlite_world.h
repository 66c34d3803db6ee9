// An engine over one folder of a test's own.
#ifndef RK_TESTS_ADAPTERS_SQLITE_SQLITE_WORLD_H_
#define RK_TESTS_ADAPTERS_SQLITE_SQLITE_WORLD_H_

#include <memory>
#include <string>

#include "adapters/sqlite/engine.h"
#include "tests/adapters/database_rules.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fixed_clock.h"

namespace rk::tests {

class SqliteWorld final : public DatabaseWorld {
 public:
  SqliteWorld() : engine({folder.path(), {}, std::chrono::milliseconds(20)}, folder, clock) {}

  std::unique_ptr<platform::Database> page() override { return engine.page(); }
  std::string connection_string() const override { return "Data Source=shop.db;Mode=Create"; }

  DiskFolder folder;
  FixedClock clock;
  sqlite::Engine engine;
};

}  // namespace rk::tests

#endif  // RK_TESTS_ADAPTERS_SQLITE_SQLITE_WORLD_H_
