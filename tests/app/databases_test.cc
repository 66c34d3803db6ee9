#include "app/databases.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "value/script_error.h"

namespace rk::app {
namespace {

// Two databases that note what they were asked to open.
class NotedConnection final : public platform::Connection {
 public:
  NotedConnection(std::string name, std::vector<std::string>& log)
      : name_(std::move(name)), log_(log) {}
  void open(std::string_view text) override {
    log_.push_back(name_ + " opens " + std::string(text));
    open_ = true;
  }
  void close() override { open_ = false; }
  bool is_open() const override { return open_; }
  std::unique_ptr<platform::Recordset> execute(const platform::SqlText& sql,
                                               std::int64_t* /*affected*/) override {
    log_.push_back(name_ + " runs " + sql.text());
    return nullptr;
  }
  std::unique_ptr<platform::Recordset> open_recordset(const platform::SqlText& /*sql*/,
                                                      platform::CursorType /*cursor*/,
                                                      platform::LockType /*lock*/) override {
    return nullptr;
  }
  void begin_read() override {}
  void end_read() noexcept override {}
  void begin_transaction() override {}
  void commit_transaction() override {}
  void roll_back_transaction() override {}

 private:
  std::string name_;
  std::vector<std::string>& log_;
  bool open_ = false;
};

class NotedDatabase final : public platform::Database {
 public:
  NotedDatabase(std::string name, std::vector<std::string>& log)
      : name_(std::move(name)), log_(log) {}
  std::unique_ptr<platform::Connection> connection() override {
    return std::make_unique<NotedConnection>(name_, log_);
  }
  std::unique_ptr<platform::Connection> page_connection() override {
    return std::make_unique<NotedConnection>(name_ + "'s page", log_);
  }

 private:
  std::string name_;
  std::vector<std::string>& log_;
};

struct World {
  std::vector<std::string> log;
  int made = 0;
  SiteDatabase database{std::make_unique<NotedDatabase>("files", log), [this] {
                          ++made;
                          return std::make_unique<NotedDatabase>("odbc", log);
                        }};
};

TEST(SiteDatabase, TheConnectionStringDecidesWhoOpensIt) {
  World world;
  const auto page = world.database.page_connection();
  const auto library = world.database.connection();
  page->open("Data Source=shop.db");
  EXPECT_EQ(world.made, 0);
  page->close();
  page->open("DSN=shop");
  static_cast<platform::Connection&>(*page).execute(platform::SqlText("x"), nullptr);
  library->open("Driver={SQL Server};Server=db");
  EXPECT_EQ(world.made, 1);
  EXPECT_EQ(world.log, (std::vector<std::string>{"files's page opens Data Source=shop.db",
                                                 "odbc's page opens DSN=shop", "odbc's page runs x",
                                                 "odbc opens Driver={SQL Server};Server=db"}));
}

TEST(SiteDatabase, AConnectionIsClosedBeforeItsFirstOpenAndOpensOnce) {
  World world;
  const auto connection = world.database.connection();
  EXPECT_FALSE(connection->is_open());
  EXPECT_THROW(connection->close(), ScriptError);
  EXPECT_THROW(connection->begin_transaction(), ScriptError);
  connection->end_read();
  connection->open("Data Source=shop.db");
  EXPECT_THROW(connection->open("Data Source=shop.db"), ScriptError);
}

}  // namespace
}  // namespace rk::app
