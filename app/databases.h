// The databases that pages name: a connection string decides at Open whether a file of the site or
// a data source of ODBC is meant. What a page never names is never made. The page's thread.
#ifndef RK_APP_DATABASES_H_
#define RK_APP_DATABASES_H_

#include <functional>
#include <memory>

#include "platform/database.h"

namespace rk::app {

class SiteDatabase final : public platform::Database {
 public:
  using Make = std::function<std::unique_ptr<platform::Database>()>;
  // `make_odbc` is called once at most, with the first connection string that names such a source.
  SiteDatabase(std::unique_ptr<platform::Database> files, Make make_odbc);

  std::unique_ptr<platform::Connection> connection() override;
  std::unique_ptr<platform::Connection> page_connection() override;

  // Connections hold it, so that one may outlive the page's Database.
  struct Databases {
    std::unique_ptr<platform::Database> files;
    Make make_odbc;
    std::unique_ptr<platform::Database> odbc;

    platform::Database& named_by(std::string_view connection_string);
  };

 private:
  std::shared_ptr<Databases> databases_;
};

}  // namespace rk::app

#endif  // RK_APP_DATABASES_H_
