#include "adapters/sqlite/readable_text.h"

#include <cstdint>
#include <cstring>

#include "value/text.h"

namespace rk::sqlite {
namespace {

constexpr std::size_t kWord = 8;
constexpr std::uint64_t kHighBits = 0x8080808080808080U;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool is_ascii_word(const char* at) noexcept {
  std::uint64_t word;
  std::memcpy(&word, at, kWord);
  return (word & kHighBits) == 0;
}

bool continues(char c) noexcept {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The characters of three bytes that need no further look: not U+0800 and below, not a half.
bool is_common_triple(const char* at) noexcept {
  const auto first = static_cast<unsigned char>(*at);
  return first > 0xE0 && first < 0xF0 && first != 0xED && continues(at[1]) && continues(at[2]);
}

// Length of the character at the front, 0 where there is none.
std::size_t character_length(std::string_view bytes) noexcept {
  for (std::size_t length = 1; length <= 4 && length <= bytes.size(); ++length) {
    if (is_valid_utf8(bytes.substr(0, length))) return length;
  }
  return 0;
}

}  // namespace

// OPTIMIZATION: eight ASCII bytes or one common character of three bytes at a step; anything else
// is left to is_valid_utf8, so the two agree whatever the bytes.
bool is_readable(std::string_view bytes) noexcept {
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  while (at != end) {
    if (end - at >= static_cast<std::ptrdiff_t>(kWord) && is_ascii_word(at)) {
      at += kWord;
    } else if (static_cast<unsigned char>(*at) < 0x80) {
      ++at;
    } else if (end - at >= 3 && is_common_triple(at)) {
      at += 3;
    } else {
      return is_valid_utf8({at, static_cast<std::size_t>(end - at)});
    }
  }
  return true;
}

void append_repaired(std::string& out, std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = character_length(bytes);
    out += length == 0 ? kReplacement : bytes.substr(0, length);
    bytes.remove_prefix(length == 0 ? 1 : length);
  }
}

}  // namespace rk::sqlite
