// Reading a number out of a text, by the forms that pages' visitors and databases write.
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "value/conversions.h"
#include "value/script_error.h"

namespace rk {

namespace {

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

// &H and &O: up to 32 bits, read as two's complement of 16 bits where they fit.
std::optional<double> radix_number(std::string_view text) {
  if (text.size() < 3 || text[0] != '&') return std::nullopt;
  const char kind = ascii_lower(text[1]);
  if (kind != 'h' && kind != 'o') return std::nullopt;
  text.remove_prefix(2);
  if (text.size() > 1 && text.back() == '&') text.remove_suffix(1);
  std::uint32_t bits = 0;
  const auto end =
      std::from_chars(text.data(), text.data() + text.size(), bits, kind == 'h' ? 16 : 8);
  if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return std::nullopt;
  if (bits <= 0xFFFF) return static_cast<std::int16_t>(bits);
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

}  // namespace

std::optional<double> parse_number(std::string_view text) {
  text = without_blanks(text);
  if (text.empty()) return std::nullopt;
  if (text.front() == '&') return radix_number(text);
  bool negative = false;
  if (!take_sign(text, negative) || text.empty()) return std::nullopt;
  const std::optional<std::string> plain = plain_decimal(text);
  if (!plain) return std::nullopt;
  double number = 0;
  const auto end = std::from_chars(plain->data(), plain->data() + plain->size(), number);
  if (end.ec == std::errc::result_out_of_range) {
    // Too small reads as zero, too large is no number of this kind.
    const bool tiny = plain->find("e-") != std::string::npos || plain->starts_with("0.");
    if (!tiny) raise(errors::kOverflow);
    number = 0;
  } else if (end.ec != std::errc()) {
    return std::nullopt;
  }
  return negative ? -number : number;
}

}  // namespace rk
