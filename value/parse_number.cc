// Reading a number out of a text, by the forms that pages' visitors and databases write.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "value/conversions.h"
#include "value/script_error.h"

namespace rk {

namespace {

constexpr int kCurrencyDecimals = 4;
// An exponent past this leaves nothing of any digits that a text can hold, or overflows.
constexpr std::int64_t kFarExponent = std::int64_t{1} << 40;

bool is_blank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}
bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view without_blanks(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

// &H and &O: up to 32 bits, read as two's complement of 16 bits where they fit and no & behind
// them asks for 32.
std::optional<double> radix_number(std::string_view text) {
  if (text.size() < 3 || text[0] != '&') return std::nullopt;
  const char kind = ascii_lower(text[1]);
  if (kind != 'h' && kind != 'o') return std::nullopt;
  text.remove_prefix(2);
  const bool wide = text.size() > 1 && text.back() == '&';
  if (wide) text.remove_suffix(1);
  std::uint32_t bits = 0;
  const auto end =
      std::from_chars(text.data(), text.data() + text.size(), bits, kind == 'h' ? 16 : 8);
  if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return std::nullopt;
  if (bits <= 0xFFFF && !wide) return static_cast<std::int16_t>(bits);
  return static_cast<std::int32_t>(bits);
}

// Takes one sign or pair of brackets off both ends; false where they contradict.
bool take_sign(std::string_view& text, bool& negative) {
  if (text.size() >= 2 && text.front() == '(' && text.back() == ')') {
    text = without_blanks(text.substr(1, text.size() - 2));
    negative = true;
    return true;
  }
  const bool before = text.front() == '-' || text.front() == '+';
  if (before) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  } else if (text.back() == '-' || text.back() == '+') {
    negative = text.back() == '-';
    text.remove_suffix(1);
  }
  text = without_blanks(text);
  return true;
}

// Digits with "," between, a decimal point, an exponent, as plain decimal text.
std::optional<std::string> plain_decimal(std::string_view text) {
  std::string plain;
  bool digits = false;
  bool point = false;
  std::size_t at = 0;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (is_digit(c)) {
      plain += c;
      digits = true;
    } else if (c == '.' && !point) {
      plain += plain.empty() ? "0." : ".";
      point = true;
    } else if (c != ',' || !digits || point) {
      break;
    }
  }
  if (!digits) return std::nullopt;
  if (at == text.size()) return plain;
  if (text[at] != 'e' && text[at] != 'E' && text[at] != 'd' && text[at] != 'D') return std::nullopt;
  plain += 'e';
  if (++at < text.size() && (text[at] == '+' || text[at] == '-')) {
    if (text[at] == '-') plain += '-';
    ++at;
  }
  if (at == text.size()) return std::nullopt;
  for (; at < text.size(); ++at) {
    if (!is_digit(text[at])) return std::nullopt;
    plain += text[at];
  }
  return plain;
}

struct Decimal {
  bool negative = false;
  std::string plain;  // of plain_decimal()
};

std::optional<Decimal> signed_decimal(std::string_view text) {
  Decimal decimal;
  if (!take_sign(text, decimal.negative) || text.empty()) return std::nullopt;
  std::optional<std::string> plain = plain_decimal(text);
  if (!plain) return std::nullopt;
  decimal.plain = *std::move(plain);
  return decimal;
}

// Whether what was cut off behind `kept` rounds up: halves go to the even neighbour.
bool rounds_up(std::string_view cut, std::uint64_t kept) {
  if (cut.empty() || cut.front() != '5') return !cut.empty() && cut.front() > '5';
  return cut.find_first_not_of('0', 1) != std::string_view::npos || kept % 2 == 1;
}

// The size of a Currency in ten-thousandths, exact; an overflow past 2^63.
std::uint64_t scaled_size(const std::string& plain) {
  const std::size_t e = std::min(plain.find('e'), plain.size());
  std::string digits = plain.substr(0, e);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  if (point < digits.size()) digits.erase(point, 1);
  std::int64_t exponent = 0;
  if (e < plain.size()) {
    const auto end = std::from_chars(plain.data() + e + 1, plain.data() + plain.size(), exponent);
    if (end.ec != std::errc()) exponent = plain[e + 1] == '-' ? -kFarExponent : kFarExponent;
    exponent = std::clamp(exponent, -kFarExponent, kFarExponent);
  }
  const std::int64_t places = static_cast<std::int64_t>(point) + exponent + kCurrencyDecimals;
  if (places < 0) return 0;
  constexpr std::uint64_t kLimit = std::uint64_t{1} << 63;
  std::uint64_t size = 0;
  for (std::int64_t at = 0; at < places; ++at) {
    const auto i = static_cast<std::size_t>(at);
    if (i >= digits.size() && size == 0) return 0;
    const auto digit = static_cast<std::uint64_t>(i < digits.size() ? digits[i] - '0' : 0);
    if (size > (kLimit - digit) / 10) raise(errors::kOverflow);
    size = size * 10 + digit;
  }
  const std::size_t kept = std::min(static_cast<std::size_t>(places), digits.size());
  if (rounds_up(std::string_view(digits).substr(kept), size)) ++size;
  return size;
}

// Nothing where it is no number, which one past the largest Double is neither.
struct Reading {
  std::optional<double> number = {};
  bool overflows = false;
};

Reading read(std::string_view text) {
  text = without_blanks(text);
  if (text.empty()) return {};
  if (text.front() == '&') return {radix_number(text)};
  const std::optional<Decimal> decimal = signed_decimal(text);
  if (!decimal) return {};
  const std::string& plain = decimal->plain;
  double number = 0;
  const auto end = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (end.ec == std::errc::result_out_of_range) {
    // Too small reads as zero.
    const bool tiny = plain.find("e-") != std::string::npos || plain.starts_with("0.");
    if (!tiny) return {std::nullopt, true};
    number = 0;
  } else if (end.ec != std::errc()) {
    return {};
  }
  return {decimal->negative ? -number : number};
}

}  // namespace

std::optional<double> parse_number(std::string_view text) {
  const Reading reading = read(text);
  if (reading.overflows) raise(errors::kOverflow);
  return reading.number;
}

bool is_number(std::string_view text) {
  return read(text).number.has_value();
}

std::optional<std::int64_t> parse_currency(std::string_view text) {
  text = without_blanks(text);
  if (text.empty()) return std::nullopt;
  if (text.front() == '&') {
    const std::optional<double> number = radix_number(text);
    if (!number) return std::nullopt;
    return static_cast<std::int64_t>(*number) * kCurrencyScale;
  }
  const std::optional<Decimal> decimal = signed_decimal(text);
  if (!decimal) return std::nullopt;
  const std::uint64_t size = scaled_size(decimal->plain);
  if (size >> 63 != 0 && (!decimal->negative || size > std::uint64_t{1} << 63)) {
    raise(errors::kOverflow);
  }
  return static_cast<std::int64_t>(decimal->negative ? 0 - size : size);
}

}  // namespace rk
