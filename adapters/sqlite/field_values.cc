#include "adapters/sqlite/field_values.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "adapters/sqlite/readable_text.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/dates.h"
#include "value/script_error.h"

namespace rk::sqlite {
namespace {

using jetsql::Literal;
using jetsql::Type;
using Conversion = jetsql::Parameter::Conversion;

// Whole numbers up to here have one text as a Long and as a Double (15 digits).
constexpr std::int64_t kSharedWhole = 999'999'999'999'999;

bool fits_long(std::int64_t number) {
  return number >= std::numeric_limits<std::int32_t>::min() &&
         number <= std::numeric_limits<std::int32_t>::max();
}

Value whole_value(std::int64_t number) {
  return fits_long(number) ? Value::long_integer(static_cast<std::int32_t>(number))
                           : Value::real(static_cast<double>(number));
}

// Nothing beyond what a Currency holds.
std::optional<Value> currency_value(const Cell& cell) {
  constexpr std::int64_t kMostWhole = std::numeric_limits<std::int64_t>::max() / kCurrencyScale;
  std::optional<std::int64_t> scaled;
  if (cell.kind == Cell::Kind::Real) {
    scaled = currency_of(cell.real);
  } else if (cell.kind == Cell::Kind::Integer && cell.integer >= -kMostWhole &&
             cell.integer <= kMostWhole) {
    scaled = cell.integer * kCurrencyScale;
  }
  return scaled ? std::optional(Value::currency(*scaled)) : std::nullopt;
}

bool in_calendar(double days) {
  return days >= kFirstDate && days < kPastLastDate;
}

std::optional<double> number_of(const Cell& cell) {
  if (cell.kind == Cell::Kind::Integer) return static_cast<double>(cell.integer);
  if (cell.kind == Cell::Kind::Real) return cell.real;
  return std::nullopt;
}

Value bytes_value(std::string_view bytes) {
  return Value::array(Array::of_bytes(std::string(bytes)));
}

Value stored_value(const RowBuffer& rows, const Cell& cell) {
  switch (cell.kind) {
    case Cell::Kind::Null:
      return Value::null();
    case Cell::Kind::Integer:
      return whole_value(cell.integer);
    case Cell::Kind::Real:
      return Value::real(cell.real);
    case Cell::Kind::Text:
      return Value::text(rows.view(cell));
    case Cell::Kind::Blob:
      return bytes_value(rows.view(cell));
  }
  return Value::null();
}

std::optional<Value> text_value(const RowBuffer& rows, const Cell& cell) {
  if (const std::optional<double> number = number_of(cell)) {
    return Value::text(number_text(*number));
  }
  if (cell.kind != Cell::Kind::Blob) return std::nullopt;
  std::string text;
  append_repaired(text, rows.view(cell));
  return Value::text(text);
}

// The value where the declared type can show what is stored.
std::optional<Value> declared_value(const RowBuffer& rows, const Cell& cell, Type type) {
  const std::optional<double> number = number_of(cell);
  switch (type) {
    case Type::Double:
      return number ? std::optional(Value::real(*number)) : std::nullopt;
    case Type::Currency:
      return currency_value(cell);
    case Type::Boolean:
      return number ? std::optional(Value::boolean(*number != 0)) : std::nullopt;
    case Type::Date: {
      std::optional<double> days = number;
      if (cell.kind == Cell::Kind::Text) days = parse_date(rows.view(cell));
      if (!days || !in_calendar(*days)) return std::nullopt;
      return Value::date(*days);
    }
    case Type::Text:
      return text_value(rows, cell);
    case Type::Blob:
      if (cell.kind != Cell::Kind::Text) return std::nullopt;
      return bytes_value(rows.view(cell));
    case Type::Integer:
    case Type::Unknown:
      break;
  }
  return std::nullopt;
}

bool digits_at(std::string_view text, std::size_t at, std::size_t count) {
  for (std::size_t i = at; i < at + count; ++i) {
    if (text[i] < '0' || text[i] > '9') return false;
  }
  return true;
}

int number_at(std::string_view text, std::size_t at) {
  return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

// Whether a stored date is the text that its Date value has: yyyy-mm-dd, with hh:mm:ss where that
// is not midnight. Days past the 28th and years below 1000 are left to the calendar.
bool is_plain_date(std::string_view text) {
  constexpr std::size_t kDay = 10;
  constexpr std::size_t kDayAndTime = 19;
  if (text.size() != kDay && text.size() != kDayAndTime) return false;
  if (!digits_at(text, 0, 4) || text[0] == '0' || text[4] != '-' || !digits_at(text, 5, 2) ||
      text[7] != '-' || !digits_at(text, 8, 2)) {
    return false;
  }
  const int month = number_at(text, 5);
  const int day = number_at(text, 8);
  if (month < 1 || month > 12 || day < 1 || day > 28) return false;
  if (text.size() == kDay) return text != "1899-12-30";
  if (text[10] != ' ' || !digits_at(text, 11, 2) || text[13] != ':' || !digits_at(text, 14, 2) ||
      text[16] != ':' || !digits_at(text, 17, 2) || number_at(text, 11) > 23 ||
      number_at(text, 14) > 59 || number_at(text, 17) > 59) {
    return false;
  }
  return text.substr(11) != "00:00:00" && text.substr(0, kDay) != "1899-12-30";
}

void append_whole(std::string& out, std::int64_t number) {
  std::array<char, 24> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  out.append(digits.data(), end.ptr);
}

// OPTIMIZATION: the kinds that most cells have are appended as they are stored. Each case is one in
// which the value's text is those very bytes; everything else takes the way through a value.
bool append_plainly(std::string& out, const RowBuffer& rows, const Cell& cell, Type type) {
  if (cell.kind == Cell::Kind::Text) {
    const std::string_view text = rows.view(cell);
    if (type == Type::Blob || (type == Type::Date && !is_plain_date(text))) return false;
    out.append(text);
    return true;
  }
  const bool plain_number =
      type == Type::Integer || type == Type::Unknown || type == Type::Double || type == Type::Text;
  if (cell.kind != Cell::Kind::Integer || !plain_number || cell.integer > kSharedWhole ||
      cell.integer < -kSharedWhole) {
    return false;
  }
  append_whole(out, cell.integer);
  return true;
}

[[noreturn]] void mismatch() {
  raise_database_error(static_cast<std::int32_t>(jetsql::kTypeMismatch),
                       "Type mismatch: the column cannot take such a value");
}

Literal number_literal(double number) {
  Literal literal;
  literal.kind = Literal::Kind::Double;
  literal.number = number;
  return literal;
}

Literal integer_literal(std::int64_t number) {
  Literal literal;
  literal.kind = Literal::Kind::Integer;
  literal.integer = number;
  return literal;
}

Literal text_literal(std::string_view text) {
  Literal literal;
  literal.kind = Literal::Kind::Text;
  literal.text = text;
  return literal;
}

}  // namespace

Value field_value(const RowBuffer& rows, const Cell& cell, Type type) {
  if (cell.kind == Cell::Kind::Null) return Value::null();
  if (auto value = declared_value(rows, cell, type)) return *std::move(value);
  return stored_value(rows, cell);
}

platform::ColumnType column_type(Type type) noexcept {
  using platform::ColumnType;
  switch (type) {
    case Type::Integer:
      return ColumnType::Integer;
    case Type::Double:
      return ColumnType::Double;
    case Type::Currency:
      return ColumnType::Currency;
    case Type::Boolean:
      return ColumnType::Boolean;
    case Type::Date:
      return ColumnType::Date;
    case Type::Text:
      return ColumnType::Text;
    case Type::Blob:
      return ColumnType::Bytes;
    case Type::Unknown:
      break;
  }
  return ColumnType::Unknown;
}

bool append_field_value(std::string& out, const RowBuffer& rows, const Cell& cell, Type type) {
  if (cell.kind == Cell::Kind::Null) return false;
  if (!append_plainly(out, rows, cell, type)) append_text(out, field_value(rows, cell, type));
  return true;
}

Literal literal_of(const Value& value, bool& bytes) {
  bytes = false;
  switch (value.kind()) {
    case Value::Kind::Empty:
    case Value::Kind::Null:
      return {};
    case Value::Kind::Boolean: {
      Literal literal = integer_literal(value.as_boolean() ? 1 : 0);
      literal.kind = Literal::Kind::Boolean;
      return literal;
    }
    case Value::Kind::Byte:
    case Value::Kind::Integer:
    case Value::Kind::Long:
      return integer_literal(to_long(value));
    case Value::Kind::Single:
      // The decimal number that the page sees, not the nearest one of twice the width.
      return number_literal(parse_number(single_text(value.as_single())).value_or(0));
    case Value::Kind::Double:
      return number_literal(value.as_double());
    case Value::Kind::Currency:
      if (value.as_currency() % kCurrencyScale == 0) {
        return integer_literal(value.as_currency() / kCurrencyScale);
      }
      return number_literal(to_double(value));
    case Value::Kind::Date: {
      Literal literal = number_literal(value.as_date());
      literal.kind = Literal::Kind::Date;
      return literal;
    }
    case Value::Kind::String:
      return text_literal(value.as_view());
    case Value::Kind::Array:
      if (!value.as_array().holds_bytes()) mismatch();
      bytes = true;
      return text_literal({});
    case Value::Kind::Object:
      return literal_of(plain_value(value), bytes);
    case Value::Kind::Error:
      break;
  }
  mismatch();
}

Conversion stored_conversion(Type type) noexcept {
  switch (type) {
    case Type::Integer:
      return Conversion::StoredInteger;
    case Type::Double:
      return Conversion::StoredNumber;
    case Type::Currency:
      return Conversion::StoredMoney;
    case Type::Boolean:
      return Conversion::StoredFlag;
    case Type::Date:
      return Conversion::DateText;
    case Type::Text:
      return Conversion::StoredText;
    case Type::Blob:
    case Type::Unknown:
      break;
  }
  return Conversion::None;
}

}  // namespace rk::sqlite
