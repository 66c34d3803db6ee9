// Rows copied out of a running statement, so that the statement can be reset while the rows are
// read. One array of cells and one of bytes, kept from one use to the next, so that a row costs no
// allocation. One page's thread.
#ifndef RK_ADAPTERS_SQLITE_ROW_BUFFER_H_
#define RK_ADAPTERS_SQLITE_ROW_BUFFER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3_stmt;

namespace rk::sqlite {

// A column's value as the file stores it.
struct Cell {
  enum class Kind : std::uint8_t { Null, Integer, Real, Text, Blob };
  Kind kind = Kind::Null;
  std::uint32_t size = 0;  // bytes of a Text or Blob
  union {
    std::int64_t integer;
    double real;
    std::size_t offset;  // into the buffer's bytes
  };
};

class RowBuffer {
 public:
  // Forgets the rows; `width` columns from now on.
  void begin(std::size_t width);
  // Copies the row that the statement stands on. Text is made readable.
  void add(sqlite3_stmt* statement);
  void add(const RowBuffer& other, std::size_t row);
  // One value out of another buffer of the same width.
  void replace(std::size_t row, std::size_t column, const RowBuffer& other, std::size_t other_row);
  void remove(std::size_t row);
  // The last row becomes the first.
  void reverse();

  std::size_t rows() const noexcept { return rows_; }
  std::size_t bytes() const noexcept { return bytes_.size() + cells_.size() * sizeof(Cell); }
  const Cell& cell(std::size_t row, std::size_t column) const noexcept {
    return cells_[row * width_ + column];
  }
  // Of a Text or Blob; valid until the buffer changes.
  std::string_view view(const Cell& cell) const noexcept {
    return {bytes_.data() + cell.offset, cell.size};
  }

 private:
  Cell copied(const Cell& cell, const RowBuffer& other);
  void add_bytes(Cell& cell, Cell::Kind kind, std::string_view bytes);

  std::size_t width_ = 0;
  std::size_t rows_ = 0;
  std::vector<Cell> cells_;
  std::string bytes_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_ROW_BUFFER_H_
