#include "jetsql/numbers.h"

#include <charconv>
#include <cmath>

#include "jetsql/letters.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {

std::string number_text(double value) {
  if (value == 0) return "0";  // also for minus zero
  if (std::isinf(value)) return value > 0 ? "1.#INF" : "-1.#INF";
  if (std::isnan(value)) return "-1.#IND";
  constexpr int kDigits = 15;
  char digits[64];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, kDigits);
  std::string text(digits, end.ptr);
  if (const std::size_t e = text.find('e'); e != std::string::npos) text[e] = 'E';
  return text;
}

std::optional<double> parse_number(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  // What from_chars would take beyond digits (a second sign, "inf", "nan") is no number here.
  if (text.empty() || !(is_digit(text.front()) || text.front() == '.')) return std::nullopt;
  double value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
  return negative ? -value : value;
}

double round_half_even(double value) {
  const double below = std::floor(value);
  const double part = value - below;
  if (part < 0.5) return below;
  if (part > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

namespace {

[[noreturn]] void overflow() {
  throw SqlError(kOverflow, "Overflow.", SqlError::kNowhere);
}

}  // namespace

std::int64_t whole_number(double value) {
  constexpr double kLimit = 9223372036854775808.0;
  if (!(value >= -kLimit && value < kLimit)) overflow();
  return static_cast<std::int64_t>(value);
}

double amount(double value) {
  constexpr double kScale = 10000;
  constexpr double kLimit = 922337203685477.5807;  // 2^63 - 1 ten-thousandths
  constexpr double kExact = 9007199254740992.0;    // 2^53: beyond, the product is not exact
  if (!(value > -kLimit && value < kLimit)) overflow();
  const double scaled = value * kScale;
  return std::fabs(scaled) < kExact ? round_half_even(scaled) / kScale : value;
}

}  // namespace rk::jetsql
