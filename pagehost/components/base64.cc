#include "pagehost/components/base64.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace rk::pagehost {
namespace {

constexpr std::string_view kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kHexLetters = "0123456789abcdef";
constexpr std::size_t kLineLength = 72;

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::uint32_t byte_at(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

}  // namespace

std::string base64_text(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() / 3 * 4 + bytes.size() / 54 + 4);
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    if (at != 0 && at / 3 * 4 % kLineLength == 0) out += '\n';
    const std::uint32_t three =
        byte_at(bytes, at) << 16 | byte_at(bytes, at + 1) << 8 | byte_at(bytes, at + 2);
    const std::size_t letters = std::min<std::size_t>(bytes.size() - at, 3) + 1;
    for (std::size_t i = 0; i < 4; ++i) {
      out += i < letters ? kLetters[three >> (18 - 6 * i) & 63] : '=';
    }
  }
  return out;
}

std::optional<std::string> base64_bytes(std::string_view text) {
  std::string out;
  std::uint32_t bits = 0;
  std::size_t letters = 0;
  bool ended = false;
  for (const char c : text) {
    if (is_blank(c)) continue;
    if (c == '=') {
      ended = true;
      continue;
    }
    const std::size_t place = kLetters.find(c);
    if (ended || place == std::string_view::npos) return std::nullopt;
    bits = bits << 6 | static_cast<std::uint32_t>(place);
    // Each letter after the first of four ends a byte.
    if (const std::size_t spare = 6 - 2 * (letters++ % 4); spare < 6) {
      out += static_cast<char>(bits >> spare & 255);
    }
  }
  if (letters % 4 == 1) return std::nullopt;
  return out;
}

std::string hex_text(std::string_view bytes) {
  std::string out;
  for (const char c : bytes) {
    out += kHexLetters[static_cast<unsigned char>(c) >> 4];
    out += kHexLetters[static_cast<unsigned char>(c) & 15];
  }
  return out;
}

std::optional<std::string> hex_bytes(std::string_view text) {
  std::string out;
  int high = -1;
  for (const char c : text) {
    if (is_blank(c)) continue;
    const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    const std::size_t place = kHexLetters.find(lower);
    if (place == std::string_view::npos) return std::nullopt;
    const int digit = static_cast<int>(place);
    if (high < 0) {
      high = digit;
    } else {
      out += static_cast<char>(high << 4 | digit);
      high = -1;
    }
  }
  if (high >= 0) return std::nullopt;
  return out;
}

}  // namespace rk::pagehost
