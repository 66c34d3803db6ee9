// The record set of keyset, dynamic and static cursors: all its rows are held once one of them is
// asked for, and it is written to by AddNew, Update and Delete. One that only adds reads nothing.
// The page's thread.
#ifndef RK_ADAPTERS_ODBC_HELD_RECORDSET_H_
#define RK_ADAPTERS_ODBC_HELD_RECORDSET_H_

#include <memory>
#include <optional>

#include "adapters/odbc/edited_table.h"
#include "adapters/odbc/rowset.h"

namespace rk::odbc {

class HeldRecordset final : public Rowset {
 public:
  // Of a statement that was prepared, or has run (`has_run`) and gives rows.
  HeldRecordset(Session& session, const void* owner, Query query,
                std::unique_ptr<Statement> statement, bool has_run, platform::CursorType cursor,
                platform::LockType lock, std::unique_ptr<Trace> trace);
  ~HeldRecordset() override;

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
  platform::ColumnTraits traits(std::size_t ordinal) const override;
  Value original(std::size_t ordinal) override;
  void hold_rows() override { settle(); }

  void add_new() override;
  void set_field(std::size_t ordinal, const Value& value) override;
  void update() override;
  void cancel_update() override;
  void remove() override;
  void close() override;

  void settle() override;
  void shut() noexcept override;

 private:
  enum class Place : std::uint8_t { Before, Row, Past, Removed };

  // Reading rows when they are first asked for is no change that a caller can see.
  void load() const { const_cast<HeldRecordset*>(this)->read_rows(); }
  void read_rows();
  void place_added_row();
  bool shows_added() const { return added_.has_value(); }
  std::int64_t count() const { return static_cast<std::int64_t>(rows_.size()); }
  void go_to(std::int64_t position);
  void leave_row();
  std::int64_t position_from(Origin origin) const;
  RowValues& current_row();

  EditedTable& table();
  void check_writable() const;
  void store_new_row();
  void store_changed_row();

  std::unique_ptr<Statement> statement_;  // null once its rows are held
  bool has_run_;
  const bool writable_;
  const bool forward_only_;
  std::vector<RowValues> rows_;
  // A row that was added before the others were read: the current one until they are.
  std::optional<RowValues> added_;
  Place place_ = Place::Row;
  std::int64_t position_ = 1;  // from 1; of the row removed where place_ says so

  std::unique_ptr<EditedTable> table_;
  std::optional<RowEdit> edit_;
  bool adding_ = false;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_HELD_RECORDSET_H_
