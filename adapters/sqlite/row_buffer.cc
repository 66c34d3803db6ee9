#include "adapters/sqlite/row_buffer.h"

#include <sqlite3.h>

#include <algorithm>

#include "adapters/sqlite/readable_text.h"

namespace rk::sqlite {
namespace {

std::string_view bytes_of(const void* data, int size) {
  return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

}  // namespace

void RowBuffer::begin(std::size_t width) {
  width_ = width;
  rows_ = 0;
  cells_.clear();
  bytes_.clear();
}

void RowBuffer::add_bytes(Cell& cell, Cell::Kind kind, std::string_view bytes) {
  cell.kind = kind;
  cell.offset = bytes_.size();
  if (kind == Cell::Kind::Text && !is_readable(bytes)) {
    append_repaired(bytes_, bytes);
  } else {
    bytes_.append(bytes);
  }
  cell.size = static_cast<std::uint32_t>(bytes_.size() - cell.offset);
}

void RowBuffer::add(sqlite3_stmt* statement) {
  const std::size_t first = cells_.size();
  cells_.resize(first + width_);
  for (std::size_t i = 0; i < width_; ++i) {
    const int column = static_cast<int>(i);
    Cell& cell = cells_[first + i];
    switch (sqlite3_column_type(statement, column)) {
      case SQLITE_INTEGER:
        cell.kind = Cell::Kind::Integer;
        cell.integer = sqlite3_column_int64(statement, column);
        break;
      case SQLITE_FLOAT:
        cell.kind = Cell::Kind::Real;
        cell.real = sqlite3_column_double(statement, column);
        break;
      case SQLITE_TEXT: {
        const void* text = sqlite3_column_text(statement, column);
        add_bytes(cell, Cell::Kind::Text, bytes_of(text, sqlite3_column_bytes(statement, column)));
        break;
      }
      case SQLITE_BLOB: {
        const void* blob = sqlite3_column_blob(statement, column);
        add_bytes(cell, Cell::Kind::Blob, bytes_of(blob, sqlite3_column_bytes(statement, column)));
        break;
      }
      default:
        cell.kind = Cell::Kind::Null;
        cell.integer = 0;
    }
  }
  ++rows_;
}

Cell RowBuffer::copied(const Cell& cell, const RowBuffer& other) {
  Cell copy = cell;
  if (cell.kind == Cell::Kind::Text || cell.kind == Cell::Kind::Blob) {
    const std::string_view bytes = other.view(cell);
    copy.offset = bytes_.size();
    bytes_.append(bytes);
  }
  return copy;
}

void RowBuffer::add(const RowBuffer& other, std::size_t row) {
  for (std::size_t i = 0; i < width_; ++i) cells_.push_back(copied(other.cell(row, i), other));
  ++rows_;
}

void RowBuffer::replace(std::size_t row, std::size_t column, const RowBuffer& other,
                        std::size_t other_row) {
  cells_[row * width_ + column] = copied(other.cell(other_row, column), other);
}

void RowBuffer::remove(std::size_t row) {
  const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(row * width_);
  cells_.erase(first, first + static_cast<std::ptrdiff_t>(width_));
  --rows_;
}

void RowBuffer::reverse() {
  const auto row = [&](std::size_t i) {
    return cells_.begin() + static_cast<std::ptrdiff_t>(i * width_);
  };
  for (std::size_t i = 0; i < rows_ / 2; ++i) {
    std::swap_ranges(row(i), row(i + 1), row(rows_ - 1 - i));
  }
}

}  // namespace rk::sqlite
