// One statement of a link: a text, the values of its "?", and the rows that it gives one after the
// other. The page's thread. Everything raises the driver's errors.
#ifndef RK_ADAPTERS_ODBC_STATEMENT_H_
#define RK_ADAPTERS_ODBC_STATEMENT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/odbc/columns.h"
#include "value/value.h"

namespace rk::odbc {

class Link;
struct PageHooks;

class Statement {
 public:
  // `link` and `hooks` outlive it.
  Statement(Link& link, const PageHooks& hooks);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // Runs a text with the values of its "?".
  void run(std::string_view sql, const std::vector<Value>& values);
  // Has the engine read a text without running it; columns() are known then where the driver tells
  // them so early. run_prepared() runs it.
  void prepare(std::string_view sql);
  void run_prepared(const std::vector<Value>& values);

  // The lists of a catalogue; a name that is empty stands for all. Names are taken as they are.
  enum class List : std::uint8_t { Tables, Columns, Indexes, PrimaryKeys, ForeignKeys };
  void list(List list, std::string_view table);

  // Of the rows that it gives; none where it gives no rows.
  const std::vector<Column>& columns() const noexcept { return columns_; }
  // Rows changed, -1 where the driver does not know.
  std::int64_t changed() const noexcept { return changed_; }
  // Passes results without rows, adding what they changed, up to the next that gives rows; false
  // where there is none.
  bool find_rows();

  // The next row; false behind the last one.
  bool next();
  // A value of the current row: each once, from the first column to the last.
  Value value(std::size_t ordinal);

 private:
  struct Bound;

  void bind(const std::vector<Value>& values);
  void note_result();
  void describe_columns();
  Column described(std::size_t ordinal);
  std::string attribute(std::size_t ordinal, unsigned short field);
  void check_time();
  void check(short code);
  template <class Call>
  short watched(Call call);

  Link& link_;
  const PageHooks& hooks_;
  void* handle_ = nullptr;
  std::vector<Column> columns_;
  std::int64_t changed_ = 0;
  // What is bound lies still until the statement has run.
  std::vector<std::unique_ptr<Bound>> bound_;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_STATEMENT_H_
