#include "value/comparison.h"

#include <algorithm>

#include "value/conversions.h"
#include "value/script_error.h"

namespace rk {

namespace {

// In 16-bit units a character beyond the basic plane (halves from D800) is below U+E000 to
// U+FFFF, while in UTF-8 its first byte (F0 and above) is above theirs (EE, EF).
int unit_rank(unsigned char first) noexcept {
  if (first < 0xEE) return first;
  return first >= 0xF0 ? first - 2 : first + 16;
}

bool is_number(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Boolean:
    case Value::Kind::Byte:
    case Value::Kind::Integer:
    case Value::Kind::Long:
    case Value::Kind::Single:
    case Value::Kind::Double:
    case Value::Kind::Currency:
    case Value::Kind::Date:
      return true;
    default:
      return false;
  }
}

std::strong_ordering ordered(double a, double b) noexcept {
  if (a < b) return std::strong_ordering::less;
  return a > b ? std::strong_ordering::greater : std::strong_ordering::equal;
}

std::strong_ordering compare_plain(const Value& a, const Value& b) {
  const bool a_number = is_number(a);
  const bool b_number = is_number(b);
  if (a.is_text() && b.is_text()) return compare_text(a.as_view(), b.as_view());
  if (a.is_text() && b_number) return std::strong_ordering::greater;
  if (a_number && b.is_text()) return std::strong_ordering::less;
  // Empty is "" beside a text and 0 beside a number.
  if (a.is_text() || b.is_text()) {
    return compare_text(joined_text(a).view(), joined_text(b).view());
  }
  if (a.kind() == Value::Kind::Currency && b.kind() == Value::Kind::Currency) {
    return a.as_currency() <=> b.as_currency();
  }
  return ordered(to_double(a), to_double(b));
}

}  // namespace

std::strong_ordering compare_text(std::string_view a, std::string_view b) noexcept {
  const std::size_t common = std::min(a.size(), b.size());
  const auto [x, y] =
      std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(common), b.begin());
  if (x == a.begin() + static_cast<std::ptrdiff_t>(common)) return a.size() <=> b.size();
  // Ranks differ from bytes only for first bytes of a character, and those meet first bytes.
  return unit_rank(static_cast<unsigned char>(*x)) <=> unit_rank(static_cast<unsigned char>(*y));
}

std::optional<std::strong_ordering> compare_loosely(const Value& a, const Value& b) {
  if (a.is_object()) return compare_loosely(plain_value(a), b);
  if (b.is_object()) return compare_loosely(a, plain_value(b));
  if (a.is_null() || b.is_null()) return std::nullopt;
  if (a.is_array() || b.is_array()) raise(errors::kTypeMismatch);
  return compare_plain(a, b);
}

std::optional<std::partial_ordering> compare_number(const Value& a, double literal) {
  const Value plain = a.is_object() ? plain_value(a) : a;
  if (plain.is_null()) return std::nullopt;
  return to_double(plain) <=> literal;
}

bool above(const Value& value, double literal) {
  return compare_number(value, literal) == std::partial_ordering::greater;
}

bool equals(const Value& value, double literal) {
  return compare_number(value, literal) == std::partial_ordering::equivalent;
}

bool differs_from(const Value& value, double literal) {
  const auto order = compare_number(value, literal);
  return order.has_value() && *order != std::partial_ordering::equivalent;
}

bool equals(const Value& value, std::string_view literal) {
  const std::optional<Text> text = try_text(value);
  return text.has_value() && text->view() == literal;
}

}  // namespace rk
