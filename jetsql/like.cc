#include "jetsql/like.h"

#include <cstddef>
#include <cstdint>

#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

// Reads one code point and steps over it; a byte that is no part of one is taken alone, beyond the
// range of code points so that it equals nothing else.
std::uint32_t next_point(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(at++);
  if (first < 0x80)
    return static_cast<std::uint32_t>(static_cast<unsigned char>(lower(static_cast<char>(first))));
  const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
  constexpr std::uint32_t kStrayByte = 0x110000;
  if (more == 0 || at + more > text.size()) return kStrayByte + first;
  std::uint32_t point = first & (0x3FU >> more);
  for (std::size_t i = 0; i < more; ++i) {
    if ((byte(at + i) & 0xC0U) != 0x80U) return kStrayByte + first;
    point = point << 6U | (byte(at + i) & 0x3FU);
  }
  at += more;
  return point;
}

// Where the set that begins at `open` is closed; npos where nothing closes it.
std::size_t set_end(std::string_view pattern, std::size_t open) {
  return pattern.find(']', open + 1);
}

// Whether `point` is one of the set pattern[begin, end), without its brackets.
bool in_set(std::string_view set, std::uint32_t point) {
  bool wanted = true;
  if (set.size() > 1 && set[0] == '!') {
    wanted = false;
    set.remove_prefix(1);
  }
  std::size_t at = 0;
  while (at < set.size()) {
    const std::uint32_t low = next_point(set, at);
    std::uint32_t high = low;
    if (at + 1 < set.size() && set[at] == '-') {
      ++at;
      high = next_point(set, at);
    }
    if (point >= low && point <= high) return wanted;
  }
  return !wanted;
}

// One character against one element of the pattern; both step on where it matches.
bool match_one(std::string_view text, std::size_t& t, std::string_view pattern, std::size_t& p) {
  std::size_t text_at = t;
  const std::uint32_t point = next_point(text, text_at);
  if (pattern[p] == '_') {
    ++p;
  } else if (const std::size_t end =
                 pattern[p] == '[' ? set_end(pattern, p) : std::string_view::npos;
             end != std::string_view::npos) {
    if (!in_set(pattern.substr(p + 1, end - p - 1), point)) return false;
    p = end + 1;
  } else {
    std::size_t pattern_at = p;
    if (next_point(pattern, pattern_at) != point) return false;
    p = pattern_at;
  }
  t = text_at;
  return true;
}

// "[]" stands for nothing at all.
bool skip_empty_set(std::string_view pattern, std::size_t& p) {
  if (pattern.substr(p, 2) != "[]") return false;
  p += 2;
  return true;
}

}  // namespace

bool is_like(std::string_view text, std::string_view pattern) {
  std::size_t t = 0;
  std::size_t p = 0;
  // Where the last "%" would go on: it takes one character more at each return, so that the cost
  // is at most the product of the two lengths.
  std::size_t again_t = 0;
  std::size_t again_p = std::string_view::npos;
  while (t < text.size() || p < pattern.size()) {
    if (p < pattern.size()) {
      if (pattern[p] == '%') {
        again_p = ++p;
        again_t = t;
        continue;
      }
      if (skip_empty_set(pattern, p)) continue;
      if (t < text.size() && match_one(text, t, pattern, p)) continue;
    }
    if (again_p == std::string_view::npos || again_t >= text.size()) return false;
    next_point(text, again_t);
    t = again_t;
    p = again_p;
  }
  return true;
}

}  // namespace rk::jetsql
