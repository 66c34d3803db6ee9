#include "app/databases.h"

#include <utility>

#include "adapters/sqlite/connection_string.h"
#include "value/script_error.h"

namespace rk::app {
namespace {

using MakeConnection = std::unique_ptr<platform::Connection> (platform::Database::*)();

class SiteConnection final : public platform::Connection {
 public:
  SiteConnection(std::shared_ptr<SiteDatabase::Databases> databases, MakeConnection make)
      : databases_(std::move(databases)), make_(make) {}

  void open(std::string_view connection_string) override {
    if (is_open()) raise(errors::kObjectOpen);
    auto opened = (databases_->named_by(connection_string).*make_)();
    opened->open(connection_string);
    opened_ = std::move(opened);
  }
  void close() override { opened().close(); }
  bool is_open() const override { return opened_ != nullptr && opened_->is_open(); }

  std::unique_ptr<platform::Recordset> execute(const platform::SqlText& sql,
                                               std::int64_t* affected) override {
    return opened().execute(sql, affected);
  }
  std::unique_ptr<platform::Recordset> open_recordset(const platform::SqlText& sql,
                                                      platform::CursorType cursor,
                                                      platform::LockType lock) override {
    return opened().open_recordset(sql, cursor, lock);
  }
  platform::SchemaRows schema(platform::SchemaList list) override { return opened().schema(list); }

  void begin_read() override { opened().begin_read(); }
  void end_read() noexcept override {
    if (opened_ != nullptr) opened_->end_read();
  }
  void begin_transaction() override { opened().begin_transaction(); }
  void commit_transaction() override { opened().commit_transaction(); }
  void roll_back_transaction() override { opened().roll_back_transaction(); }

 private:
  platform::Connection& opened() const {
    if (opened_ == nullptr) raise(errors::kObjectClosed);
    return *opened_;
  }

  const std::shared_ptr<SiteDatabase::Databases> databases_;
  const MakeConnection make_;
  std::unique_ptr<platform::Connection> opened_;  // null until the first Open
};

}  // namespace

platform::Database& SiteDatabase::Databases::named_by(std::string_view connection_string) {
  if (!sqlite::names_odbc_source(connection_string)) return *files;
  if (odbc == nullptr) odbc = make_odbc();
  return *odbc;
}

SiteDatabase::SiteDatabase(std::unique_ptr<platform::Database> files, Make make_odbc)
    : databases_(
          std::make_shared<Databases>(Databases{std::move(files), std::move(make_odbc), nullptr})) {
}

std::unique_ptr<platform::Connection> SiteDatabase::connection() {
  return std::make_unique<SiteConnection>(databases_, &platform::Database::connection);
}

std::unique_ptr<platform::Connection> SiteDatabase::page_connection() {
  return std::make_unique<SiteConnection>(databases_, &platform::Database::page_connection);
}

}  // namespace rk::app
