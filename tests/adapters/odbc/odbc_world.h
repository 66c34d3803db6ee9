// An engine over a folder of a test's own, with an SQLite file behind its ODBC driver: a data
// source that needs no server.
#ifndef RK_TESTS_ADAPTERS_ODBC_ODBC_WORLD_H_
#define RK_TESTS_ADAPTERS_ODBC_ODBC_WORLD_H_

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "adapters/odbc/engine.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::tests {

class OdbcWorld {
 public:
  OdbcWorld() : folder_(made_folder()), page_(engine.page()), connection(open()) {}
  ~OdbcWorld() {
    connection.reset();
    std::filesystem::remove_all(folder_);
  }
  OdbcWorld(const OdbcWorld&) = delete;
  OdbcWorld& operator=(const OdbcWorld&) = delete;

  std::string connection_string() const {
    return "Driver=SQLite3;Database=" + folder_ + "/shop.db;Timeout=50";
  }
  // As a page opens it.
  std::unique_ptr<platform::Connection> open() { return opened(page_->page_connection()); }
  std::unique_ptr<platform::Connection> open_for_library() { return opened(page_->connection()); }
  std::int64_t run(const std::string& sql) {
    std::int64_t affected = -5;
    connection->execute(platform::SqlText(sql), &affected);
    return affected;
  }
  // Plans 1 to `count`, Num ten times the number.
  void make_plans(int count) {
    run("create table plan (Id integer primary key, Name varchar(50), Price decimal(19,4), "
        "Flag bit, Time timestamp, Num integer)");
    for (int i = 1; i <= count; ++i) {
      run("insert into plan (Name, Num) values ('n" + std::to_string(i) + "', " +
          std::to_string(i * 10) + ")");
    }
  }
  std::unique_ptr<platform::Recordset> keyset(const std::string& sql) {
    return connection->open_recordset(sql, platform::CursorType::Keyset,
                                      platform::LockType::Optimistic);
  }
  static std::string text(platform::Recordset& rows, std::string_view name) {
    return joined_text(rows.field(rows.ordinal(name))).string();
  }
  // What is left, from here to the end, joined by blanks.
  static std::string rest(platform::Recordset& rows, std::string_view name) {
    std::string all;
    for (; !rows.eof(); rows.move_next()) all += (all.empty() ? "" : " ") + text(rows, name);
    return all;
  }
  std::string all(const std::string& sql, std::string_view name) {
    return rest(*connection->execute(sql), name);
  }

  odbc::Engine engine;

 private:
  static std::string made_folder() {
    std::string path = (std::filesystem::temp_directory_path() / "odbcXXXXXX").string();
    if (::mkdtemp(path.data()) == nullptr) std::abort();
    return path;
  }
  std::unique_ptr<platform::Connection> opened(std::unique_ptr<platform::Connection> made) {
    made->open(connection_string());
    return made;
  }

  const std::string folder_;
  std::unique_ptr<platform::Database> page_;

 public:
  std::unique_ptr<platform::Connection> connection;
};

// The number of the error that `work` ends with, 0 where it does not.
template <class Work>
std::int32_t error_number(Work work) {
  try {
    work();
  } catch (const ScriptError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace rk::tests

#endif  // RK_TESTS_ADAPTERS_ODBC_ODBC_WORLD_H_
