#include "jetsql/numbers.h"

#include <charconv>
#include <cmath>

#include "jetsql/letters.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {

std::string number_text(double value) {
  if (value == 0) return "0";
  // to_chars in scientific form with 15 digits gives the digits and the exponent to place them by.
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, std::fabs(value),
                                 std::chars_format::scientific, 14);
  std::string_view form(digits, static_cast<std::size_t>(end.ptr - digits));
  const std::size_t e = form.find('e');
  if (e == std::string_view::npos) return value < 0 ? "-INF" : std::isnan(value) ? "NAN" : "INF";
  std::string mantissa;
  for (const char c : form.substr(0, e)) {
    if (c != '.') mantissa += c;
  }
  while (mantissa.size() > 1 && mantissa.back() == '0') mantissa.pop_back();
  int exponent = 0;
  const char* sign = form.data() + e + 1;
  std::from_chars(*sign == '+' ? sign + 1 : sign, form.data() + form.size(), exponent);

  std::string text = value < 0 ? "-" : "";
  const int count = static_cast<int>(mantissa.size());
  constexpr int kDigits = 15;
  if (exponent >= kDigits || exponent < -5 || (exponent < 0 && count - exponent > kDigits)) {
    text += mantissa.substr(0, 1);
    if (count > 1) text += "." + mantissa.substr(1);
    text += exponent < 0 ? "E-" : "E+";
    const int magnitude = exponent < 0 ? -exponent : exponent;
    return text + (magnitude < 10 ? "0" : "") + std::to_string(magnitude);
  }
  if (exponent < 0)
    return text + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + mantissa;
  if (count <= exponent + 1)
    return text + mantissa + std::string(static_cast<std::size_t>(exponent + 1 - count), '0');
  const auto whole = static_cast<std::size_t>(exponent + 1);
  return text + mantissa.substr(0, whole) + "." + mantissa.substr(whole);
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

std::int64_t whole_number(double value) {
  constexpr double kLimit = 9223372036854775808.0;
  if (!(value >= -kLimit && value < kLimit))
    throw SqlError(kOverflow, "Overflow.", SqlError::kNowhere);
  return static_cast<std::int64_t>(value);
}

}  // namespace rk::jetsql
