// A text as the engine is sent it, and what is known of the rows that it gives. A plain value.
#ifndef RK_ADAPTERS_ODBC_QUERY_H_
#define RK_ADAPTERS_ODBC_QUERY_H_

#include <optional>
#include <string>
#include <vector>

#include "adapters/odbc/columns.h"
#include "value/value.h"

namespace rk::odbc {

struct Query {
  std::string sql;
  std::vector<Value> values;  // of its "?"
  // Of a text that was written anew for the engine: what the rows are, whatever the driver says.
  bool translated = false;
  struct Shown {
    std::string name;
    platform::ColumnType type = platform::ColumnType::Unknown;
    std::string base_table, base_column;
  };
  std::vector<Shown> shown;
  // The one table that the rows are written to; empty where it is to be found out, or none.
  std::string table;
};

// The columns of a statement as its record set shows them.
std::vector<Column> shown_columns(const Query& query, std::vector<Column> told);

// The one table behind a text that the page wrote, by its words: `Select ... From name`, with or
// without what orders and restricts; empty where it is not as plain as that.
std::string table_of_text(std::string_view sql);

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_QUERY_H_
