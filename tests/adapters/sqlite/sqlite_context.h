// A page whose databases lie on the disk, as the page host would bind it; templates are in memory
// and requests are set by hand. For tests and measures of the library over a real database.
#ifndef RK_TESTS_ADAPTERS_SQLITE_SQLITE_CONTEXT_H_
#define RK_TESTS_ADAPTERS_SQLITE_SQLITE_CONTEXT_H_

#include <memory>
#include <string>
#include <string_view>

#include "adapters/sqlite/engine.h"
#include "tests/support/fake_page.h"

namespace rk::tests {

class SqliteServer : public platform::Server {
 public:
  explicit SqliteServer(sqlite::Engine& engine) : engine_(engine) { next_page(); }

  // What the page borrowed is given back; a new page begins.
  void next_page() { database_ = engine_.page(); }
  std::unique_ptr<platform::Connection> create_connection() override {
    return database_->connection();
  }
  platform::Files& files() override { return files_; }
  MemoryFiles& memory_files() { return files_; }
  std::string map_path(std::string_view path) override { return std::string(path); }
  std::string url_encode(std::string_view utf8) override { return std::string(utf8); }

 private:
  sqlite::Engine& engine_;
  std::unique_ptr<platform::Database> database_;
  MemoryFiles files_;
};

class SqliteContext : public FakeScriptingContext {
 public:
  explicit SqliteContext(sqlite::Engine& engine)
      : sqlite_server(std::make_shared<SqliteServer>(engine)) {}
  std::shared_ptr<platform::Server> server() override { return sqlite_server; }

  const std::shared_ptr<SqliteServer> sqlite_server;
};

}  // namespace rk::tests

#endif  // RK_TESTS_ADAPTERS_SQLITE_SQLITE_CONTEXT_H_
