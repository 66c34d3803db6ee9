// A storefront on the disk for measures of the library: the schema that the program prints, with
// as many products as asked for, and pages over it as the page host would bind them. Beside it a
// plain SQLite connection to the same file, for floors.
#ifndef RK_BENCH_BENCH_SITE_H_
#define RK_BENCH_BENCH_SITE_H_

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/sqlite/engine.h"
#include "site/page_context.h"
#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/adapters/sqlite/sqlite_context.h"
#include "tests/support/fixed_clock.h"

namespace rk::bench {

// A prepared statement of a floor. Text and numbers are appended as SQLite gives them.
class Statement {
 public:
  Statement(sqlite3* db, std::string_view sql);
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void bind(int place, std::int64_t value) { sqlite3_bind_int64(statement_, place, value); }
  void bind(int place, std::string_view text) {
    sqlite3_bind_text(statement_, place, text.data(), static_cast<int>(text.size()),
                      SQLITE_TRANSIENT);
  }
  bool step() { return sqlite3_step(statement_) == SQLITE_ROW; }
  void reset() { sqlite3_reset(statement_); }
  std::int64_t number(int column) const { return sqlite3_column_int64(statement_, column); }
  double real(int column) const { return sqlite3_column_double(statement_, column); }
  bool is_null(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
  // Valid until the next step.
  std::string_view text(int column) const;

 private:
  sqlite3_stmt* statement_ = nullptr;
};

// The frame of a floor's page: one read transaction, and in it what finds the template folder.
class FloorPage {
 public:
  explicit FloorPage(sqlite3* db);

  void begin() { run(begin_); }
  void commit() { run(commit_); }
  // Makes "/Template/" + name + "/" and reads SysTem's domain, as every template needs.
  void find_folder();

 private:
  static void run(Statement& statement);

  Statement begin_, commit_, folder_, domain_;
};

// Appends a number as pages write it.
void append_number(std::string& out, double number);

class BenchSite {
 public:
  // `data`: statements that fill the tables behind the schema and one template, "bench".
  // The database lies in a folder of its own in `parent`.
  explicit BenchSite(const std::string& data,
                     const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  ~BenchSite();
  BenchSite(const BenchSite&) = delete;
  BenchSite& operator=(const BenchSite&) = delete;

  void put_template(std::string_view file, std::string text);
  // A value of the query string of the requests to come, under a name in lower case.
  void put_query(const std::string& name, std::string text);
  // `name` in small letters.
  void put_server_variable(const std::string& name, std::string text);
  // A page of its own for each request; the last one's is gone then.
  const site::PageContext& new_page();
  sqlite3* floor() const { return floor_; }

 private:
  tests::DiskFolder folder_;
  tests::FixedClock clock_;
  std::unique_ptr<sqlite::Engine> engine_;
  Ref<tests::SqliteContext> context_;
  site::PageContext page_;
  sqlite3* floor_ = nullptr;
};

// Plans 1 to n of Rk_HostList as bench/make-site makes them, with own names and prices of agent
// "blue" for half of what agents may sell.
std::string hosting_plans(int n);

// n rows in each table of the catalogue, all open to agents, with own names and prices of agent
// "blue" for nine of ten; each hosting plan comes with a mail plan and two databases.
std::string whole_catalogue(int n);

}  // namespace rk::bench

#endif  // RK_BENCH_BENCH_SITE_H_
