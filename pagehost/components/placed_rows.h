// PlacedRows: the walk over rows that are known by number, as record sets in memory and views of
// record sets share it: ends, moves, pages and positions. The page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_PLACED_ROWS_H_
#define RK_PAGEHOST_COMPONENTS_PLACED_ROWS_H_

#include <cstddef>
#include <cstdint>

#include "platform/database.h"

namespace rk::pagehost {

class PlacedRows : public platform::Recordset {
 public:
  bool bof() const override { return at_ < 0 || row_count() == 0; }
  bool eof() const override;
  void move_next() override;
  void move_previous() override { move(-1, Origin::Current); }
  void move_first() override;
  void move_last() override { move(0, Origin::Last); }
  void move(std::int64_t rows, Origin origin) override;

  std::int64_t record_count() override { return row_count(); }
  std::int32_t page_size() const override { return page_size_; }
  void set_page_size(std::int32_t rows) override;
  std::int32_t page_count() override;
  std::int32_t absolute_page() override;
  void set_absolute_page(std::int32_t page) override;
  std::int64_t absolute_position() override;
  void set_absolute_position(std::int64_t row) override;

 protected:
  virtual std::int64_t row_count() const = 0;
  // Stores what the page changed in the row that it leaves.
  virtual void leave_row() = 0;
  // The place of the current row from 0; raises 3021 where there is none.
  std::size_t current() const;

  std::int64_t at_ = 0;   // from 0; -1 before the first row, row_count() past the last
  bool removed_ = false;  // the row was removed; at at_ stands the one that followed

 private:
  static constexpr std::int32_t kUsualPageSize = 10;  // as scripts know it
  std::int32_t page_size_ = kUsualPageSize;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_PLACED_ROWS_H_
