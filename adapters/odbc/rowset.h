// What both kinds of record sets are made of: a query, the columns that it gives, the values of the
// current row. A record set is on its session's list while it is open. The page's thread.
#ifndef RK_ADAPTERS_ODBC_ROWSET_H_
#define RK_ADAPTERS_ODBC_ROWSET_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/odbc/query.h"
#include "adapters/odbc/session.h"
#include "adapters/odbc/trace.h"
#include "platform/database.h"

namespace rk::odbc {

// As scripts know it before they set another.
inline constexpr std::int32_t kDefaultPageSize = 10;

using RowValues = std::vector<Value>;

class Rowset : public platform::Recordset {
 public:
  // `owner` is the connection that it ends with; `trace` may be null.
  Rowset(Session& session, const void* owner, Query query, std::unique_ptr<Trace> trace);
  ~Rowset() override;
  Rowset(const Rowset&) = delete;
  Rowset& operator=(const Rowset&) = delete;

  std::size_t field_count() const final;
  const std::string& field_name(std::size_t ordinal) const final;
  std::size_t ordinal(std::string_view name) const final;
  bool append_field_text(std::size_t ordinal, std::string& out) final;
  platform::ColumnTraits traits(std::size_t ordinal) const override;
  using Recordset::field;

  std::int32_t page_size() const final { return page_size_; }
  void set_page_size(std::int32_t rows) final;
  void close() override;

  const void* owner() const noexcept { return owner_; }
  // The rows shown from now on must not depend on the driver any more. Raises.
  virtual void settle() = 0;
  // Closes without looking at what is unfinished.
  virtual void shut() noexcept;

 protected:
  void check_open() const;
  const Column& column(std::size_t ordinal) const;  // raises 3704, 3265
  bool is_open() const noexcept { return session_ != nullptr; }
  // The row that the statement stands on.
  RowValues read_row(Statement& statement);

  Session* session_;  // null once it is closed
  Query query_;
  std::vector<Column> columns_;
  std::unique_ptr<Trace> trace_;
  std::int32_t page_size_ = kDefaultPageSize;

 private:
  const void* owner_;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_ROWSET_H_
