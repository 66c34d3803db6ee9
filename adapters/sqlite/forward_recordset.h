// The record set of Connection.Execute and of forward-only cursors: read once, from the first row
// to the last, in bounded pieces, so that its memory does not grow with its rows. Rows that fit one
// piece are read at once and leave nothing open in the engine. The page's thread.
#ifndef RK_ADAPTERS_SQLITE_FORWARD_RECORDSET_H_
#define RK_ADAPTERS_SQLITE_FORWARD_RECORDSET_H_

#include "adapters/sqlite/rowset.h"

namespace rk::sqlite {

class ForwardRecordset final : public Rowset {
 public:
  // Runs the plan. `values` is taken over where rows are left for later. In a scope of the session.
  ForwardRecordset(Session& session, const void* owner, Ref<Plan> plan, RunValues& values,
                   std::unique_ptr<TraceEntry> trace);
  ~ForwardRecordset() override;

  bool bof() const override;
  bool eof() const override;
  void move_next() override;
  void move_previous() override;
  void move_first() override;
  void move_last() override;
  void move(std::int64_t rows, Origin origin) override;

  std::int64_t record_count() override;
  std::int32_t page_size() const override;
  void set_page_size(std::int32_t rows) override;
  std::int32_t page_count() override;
  std::int32_t absolute_page() override;
  void set_absolute_page(std::int32_t page) override;
  std::int64_t absolute_position() override;
  void set_absolute_position(std::int64_t row) override;

  void add_new() override;
  void set_field(std::size_t ordinal, const Value& value) override;
  void update() override;
  void cancel_update() override;
  void remove() override;

  void settle() override;
  void pause() noexcept override {}  // its statement holds its own view
  void shut() noexcept override;

 private:
  std::size_t current_row() override;
  void run(RunValues& values);
  void read_piece();

  Lease lease_;           // while rows are left in the engine
  RunValues kept_;        // the values of that statement
  bool dropped_ = false;  // rows of an earlier piece are gone
  bool empty_ = false;
  std::size_t row_ = 0;
  std::int32_t page_size_ = kDefaultPageSize;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_FORWARD_RECORDSET_H_
