// A storefront for tests over a real database: the schema that the program prints, one template
// folder, and the master site with the agents "green" and "blue".
#ifndef RK_TESTS_APP_STOREFRONT_ON_DISK_H_
#define RK_TESTS_APP_STOREFRONT_ON_DISK_H_

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <string_view>

#include "adapters/sqlite/engine.h"
#include "app/schema.h"
#include "site/page_context.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/adapters/sqlite/sqlite_context.h"
#include "tests/support/fixed_clock.h"

namespace rk::tests {

class StorefrontOnDisk : public testing::Test {
 public:
  site::PageContext context;

 protected:
  StorefrontOnDisk() {
    run(app::schema_ddl(app::SchemaEngine::Sqlite));
    run("Insert Into Rk_Template (Id, templatePath, UseThis) Values (1, 'blue', 1);"
        "Insert Into SysTem (SiteDomain) Values ('');");
    scripting_->fake_application->values["rk_connstr"] = Value::text("Data Source=shop.db");
    scripting_->fake_request->server_variables["http_host"] = "localhost";
    context.start(*scripting_);
  }

  // Statements of the engine's own, behind the pages' backs.
  void run(const std::string& sql) const {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(folder_.path("shop.db").c_str(), &database), SQLITE_OK);
    char* message = nullptr;
    sqlite3_exec(database, ("Begin;" + sql + ";Commit;").c_str(), nullptr, nullptr, &message);
    EXPECT_EQ(message, nullptr) << message << " in " << sql;
    sqlite3_free(message);
    sqlite3_close(database);
  }
  void put_template(std::string_view file, std::string text) {
    const std::string path = std::string("/Template/blue/").append(file);
    scripting_->sqlite_server->memory_files().put(path, std::move(text));
    scripting_->fake_application->values.erase("rk_tp_" + lowered_ascii(path));
  }
  // The query string of the next request, which is a page of its own.
  void ask(const std::string& name, const std::string& text) {
    scripting_->sqlite_server->next_page();
    scripting_->fake_request->queries.clear();
    scripting_->fake_request->queries[name] = text;
  }

 private:
  const DiskFolder folder_;
  FixedClock clock_;
  sqlite::Engine engine_{{.site_folder = folder_.path(), .data_folders = {}}, folder_, clock_};
  Ref<SqliteContext> scripting_ = make_ref<SqliteContext>(engine_);
};

}  // namespace rk::tests

#endif  // RK_TESTS_APP_STOREFRONT_ON_DISK_H_
