// What is known of the tables of one data source: asked of it once, and shared by the pages that
// use it. Any thread; a session is the asking thread's own.
#ifndef RK_ADAPTERS_ODBC_CATALOGUE_H_
#define RK_ADAPTERS_ODBC_CATALOGUE_H_

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "jetsql/schema.h"
#include "platform/columns.h"

namespace rk::odbc {

class Session;

struct TableInfo {
  jetsql::Table table;  // in the data source's own spelling
  std::vector<std::string>
      keys;  // the columns of its primary key, in their order; none without one
};

class Catalogue {
 public:
  // A name in any letter case, as far as the data source writes its names in small or great letters
  // throughout; null where there is no such table. Raises the driver's errors.
  std::shared_ptr<const TableInfo> table(Session& session, std::string_view name);
  // After a statement that failed for a table or column that is not there (any more).
  void forget();

 private:
  struct Known {
    std::shared_ptr<const TableInfo> table;
    std::chrono::steady_clock::time_point since;
  };
  std::mutex mutex_;
  std::unordered_map<std::string, Known> known_;
};

jetsql::Type jet_type(platform::ColumnType type) noexcept;
platform::ColumnType column_type(jetsql::Type type) noexcept;

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_CATALOGUE_H_
