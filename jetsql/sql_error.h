// The one exception of this room: why a Jet SQL text cannot be run, with the number that scripts
// of this kind test for and the place in the text. Thread rule: a plain value.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace rk::jetsql {

inline constexpr long kSyntaxError = -2147217900;  // 80040E14: the statement does not parse
inline constexpr long kNoValueGiven =
    -2147217904;  // 80040E10: a word that is no column, a value left out
inline constexpr long kNoSuchTable = -2147217865;  // 80040E37: the table is not there
inline constexpr long kTypeMismatch =
    -2147217913;                                // 80040E07: a text beside a number, and the like
inline constexpr long kOverflow = -2147217833;  // 80040E57: a value that its type cannot hold
inline constexpr long kTableExists =
    -2147217857;  // 80040E3F: Create Table of a table that is there
inline constexpr long kNotGrouped =
    -2147217887;  // 80040E21: a column outside Group By and aggregates
inline constexpr long kUnspecified = -2147467259;  // 80004005: what has no number of its own

class SqlError : public std::runtime_error {
 public:
  // `position` is the byte offset in the Jet text where the trouble stands, or kNowhere.
  SqlError(long number, const std::string& text, std::size_t position)
      : std::runtime_error(text), number_(number), position_(position) {}

  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

  long number() const { return number_; }
  std::size_t position() const { return position_; }

 private:
  long number_;
  std::size_t position_;
};

}  // namespace rk::jetsql
