// The record set of Execute: it shows each row once, and holds one piece of them at a time. The
// page's thread.
#ifndef RK_ADAPTERS_ODBC_FORWARD_RECORDSET_H_
#define RK_ADAPTERS_ODBC_FORWARD_RECORDSET_H_

#include <deque>
#include <memory>

#include "adapters/odbc/rowset.h"

namespace rk::odbc {

class ForwardRecordset final : public Rowset {
 public:
  // Of a statement that has run and gives rows.
  ForwardRecordset(Session& session, const void* owner, Query query,
                   std::unique_ptr<Statement> statement, std::unique_ptr<Trace> trace);
  ~ForwardRecordset() override;

  bool bof() const override;
  bool eof() const override;
  void move_next() override;
  void move_previous() override;
  void move_first() override;
  void move_last() override;
  void move(std::int64_t rows, Origin origin) override;

  std::int64_t record_count() override;
  std::int32_t page_count() override;
  std::int32_t absolute_page() override;
  void set_absolute_page(std::int32_t page) override;
  std::int64_t absolute_position() override;
  void set_absolute_position(std::int64_t row) override;

  Value field(std::size_t ordinal) override;
  using Rowset::field;

  void add_new() override;
  void set_field(std::size_t ordinal, const Value& value) override;
  void update() override;
  void cancel_update() override;
  void remove() override;

  void settle() override;
  void shut() noexcept override;

 private:
  [[noreturn]] void refuse() const;
  void start();
  bool read_one();

  std::unique_ptr<Statement> statement_;  // null once all is read
  std::deque<RowValues> rows_;            // the current one first, where there is one
  bool empty_ = true;
  bool moved_ = false;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_FORWARD_RECORDSET_H_
