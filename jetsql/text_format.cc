#include "jetsql/text_format.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

// A character of a pattern: a place for one of the text's, or itself.
struct Sign {
  char c;
  bool itself;
  bool is_place() const { return !itself && (c == '@' || c == '&'); }
};

// Empty texts have a section of their own, behind the first.
std::vector<Sign> signs_of(std::string_view pattern, bool for_empty) {
  std::vector<Sign> first;
  std::vector<Sign> all;
  bool quoted = false;
  bool parted = false;
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    const char c = pattern[at];
    if (c == '"') {
      quoted = !quoted;
    } else if (c == '\\' && !quoted && at + 1 < pattern.size()) {
      all.push_back({pattern[++at], true});
    } else if (c == ';' && !quoted) {
      if (!parted) first = std::exchange(all, {});
      parted = true;
    } else {
      all.push_back({c, quoted});
    }
  }
  return parted && !for_empty ? first : all;
}

std::vector<std::string_view> characters_of(std::string_view text) {
  std::vector<std::string_view> out;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) ++end;
    out.push_back(text.substr(at, end - at));
    at = end;
  }
  return out;
}

}  // namespace

bool is_text_format(std::string_view pattern) {
  if (pattern == ">" || pattern == "<") return true;
  const std::vector<Sign> signs = signs_of(pattern, false);
  return std::any_of(signs.begin(), signs.end(), [](const Sign& sign) { return sign.is_place(); });
}

std::string formatted_text(std::string_view text, std::string_view pattern) {
  const std::vector<Sign> signs = signs_of(pattern, text.empty());
  const std::vector<std::string_view> given = characters_of(text);
  const auto has = [&](char c) {
    return std::any_of(signs.begin(), signs.end(),
                       [&](const Sign& sign) { return !sign.itself && sign.c == c; });
  };
  const auto places = static_cast<std::size_t>(
      std::count_if(signs.begin(), signs.end(), [](const Sign& sign) { return sign.is_place(); }));
  const bool from_left = has('!');
  const std::size_t empty = places > given.size() ? places - given.size() : 0;
  std::string out;
  std::size_t next = 0;
  std::size_t place = 0;
  for (const Sign& sign : signs) {
    if (!sign.is_place()) {
      const bool order = !sign.itself && (sign.c == '!' || sign.c == '<' || sign.c == '>');
      if (!order) out += sign.c;
      continue;
    }
    const bool filled = from_left ? place < given.size() : place >= empty;
    if (!filled && sign.c == '@') out += ' ';
    // What finds no place stands before the rest, where the places are filled from the right.
    const std::size_t left = places - place++;
    while (filled && !from_left && given.size() - next > left) out += given[next++];
    if (filled && next < given.size()) out += given[next++];
  }
  while (next < given.size()) out += given[next++];
  if (has('>') || has('<')) {
    for (char& c : out) c = has('>') ? upper(c) : lower(c);
  }
  return out;
}

}  // namespace rk::jetsql
