// The record set of keyset, dynamic and static cursors: it knows its rows by number, steps only
// those of the page it shows, counts them apart, and is written to by AddNew, Update and Delete.
//
// Rows come in windows of the whole result. A window is read at once and its statement reset, so
// that a record set that waits holds nothing in the engine; inside a scope of the session, where
// the view stands still, a large window is read in pieces. Before the page writes, the rows that
// are left are read (settle), so that a walk shows the rows that were there when it began.
// The page's thread.
#ifndef RK_ADAPTERS_SQLITE_PAGED_RECORDSET_H_
#define RK_ADAPTERS_SQLITE_PAGED_RECORDSET_H_

#include <memory>
#include <optional>

#include "adapters/sqlite/row_edit.h"
#include "adapters/sqlite/rowset.h"

namespace rk::sqlite {

class PagedRecordset final : public Rowset {
 public:
  // Runs nothing yet, but prepares its statement, so that a text that cannot run fails here. In a
  // scope of the session.
  PagedRecordset(Session& session, const void* owner, Ref<Plan> plan, RunValues values,
                 platform::CursorType cursor, platform::LockType lock,
                 std::unique_ptr<TraceEntry> trace);
  ~PagedRecordset() override;

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

  Value field(std::size_t ordinal) override;
  bool append_field_text(std::size_t ordinal, std::string& out) override;
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
  void pause() noexcept override { running_.release(); }
  void shut() noexcept override;

 private:
  enum class Place : std::uint8_t { Before, Row, Past, Added, Removed };
  struct Window {
    std::int64_t offset;
    std::int64_t rows;
  };

  std::size_t current_row() override;
  std::int64_t rows_in_buffer() const { return static_cast<std::int64_t>(buffer_.rows()); }
  bool holds(std::int64_t position) const {
    return position >= first_ && position - first_ < rows_in_buffer();
  }
  void resolve();
  void load(std::int64_t position);
  Window window_for(std::int64_t position);
  void open_window(Window window, bool in_pieces);
  bool is_nearer_the_end(Window window) const;
  void read_from_the_end(Window window);
  void bind_window(Form form, Window window);
  void read_piece();
  void note_end();
  // Bof and Eof at once: there are no rows.
  bool bof_and_eof() const { return bof() && eof(); }
  void leave_row();
  std::int64_t position_from(Origin origin);
  void go_to(std::int64_t position);
  std::int64_t count_rows();
  std::int64_t read_count();

  void check_writable(bool needs_row) const;
  std::int64_t current_key();
  void store_new_row();
  void store_changed_row();
  bool read_row(std::int64_t key);
  void show_added_row();
  std::optional<RowBuffer> all_rows();
  void take_in_own_rows();
  std::size_t width() const { return field_count() + (keyed_ ? 1 : 0); }

  RunValues values_;
  const bool writable_;
  const bool keyed_;
  const bool forward_only_;

  Place place_ = Place::Row;
  std::int64_t position_ = 1;                // of the current row, from 1, where place_ is Row
  std::int64_t first_ = 1;                   // of the buffer's first row
  std::int64_t total_ = -1;                  // rows in all, -1 while unknown
  std::optional<std::uint32_t> counted_in_;  // the database's state in which they were counted
  bool complete_ = false;                    // the buffer holds all rows
  bool backward_ = false;   // the next window lies before the row asked for as well
  std::int64_t next_rows_;  // of the next window of a walk
  std::int32_t page_size_ = kDefaultPageSize;
  bool page_size_set_ = false;

  Lease running_;             // a window that is read in pieces
  std::int64_t pending_ = 0;  // rows that it may still give
  bool in_pieces_ = false;

  EditedTable table_;
  std::unique_ptr<RowEdit> edit_;
  std::int64_t added_key_ = 0;  // where place_ is Added
  bool added_read_ = false;     // and lies in added_
  bool added_whole_ = false;    // with the columns of the tables that it is joined to
  RowBuffer added_;
  std::vector<std::int64_t> own_rows_;  // keys of rows that were added before any was read
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_PAGED_RECORDSET_H_
