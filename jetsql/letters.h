// ASCII letter case and character classes for names, keywords and texts; other letters have none.
// Thread rule: pure.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace rk::jetsql {

constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
constexpr char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}
constexpr bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool is_blank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}
constexpr bool is_letter(char c) {
  return lower(c) >= 'a' && lower(c) <= 'z';
}

// What a name without brackets may begin with and go on with: letters of any script.
constexpr bool begins_word(char c) {
  return is_letter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
constexpr bool continues_word(char c) {
  return begins_word(c) || is_digit(c) || c == '$';
}

constexpr bool same_letters(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

std::string lower_letters(std::string_view text);

}  // namespace rk::jetsql
