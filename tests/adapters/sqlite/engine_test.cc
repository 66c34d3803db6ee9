#include "adapters/sqlite/engine.h"

#include "tests/adapters/sqlite/sqlite_world.h"

namespace rk::tests {
namespace {

std::unique_ptr<DatabaseWorld> make_sqlite_world() {
  return std::make_unique<SqliteWorld>();
}

INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseRules, testing::Values(&make_sqlite_world));

}  // namespace
}  // namespace rk::tests
