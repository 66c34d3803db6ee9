#include "value/text_functions.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "value/text.h"
#include "value/text_pieces.h"

namespace rk {

namespace {

struct Sequence {
  char32_t point;
  std::size_t size;
};

// The character at an offset; bytes that begin none stand for themselves.
Sequence sequence_at(std::string_view utf8, std::size_t offset) {
  const auto byte = [&](std::size_t i) {
    return offset + i < utf8.size() ? static_cast<unsigned char>(utf8[offset + i]) : 0U;
  };
  const unsigned first = byte(0);
  if (first < 0xC0) return {first, 1};
  if (first < 0xE0) return {(first & 0x1F) << 6 | (byte(1) & 0x3F), 2};
  if (first < 0xF0) return {(first & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F), 3};
  return {(first & 0x07) << 18 | (byte(1) & 0x3F) << 12 | (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F),
          4};
}

// A stretch of letters whose two cases lie `distance` apart, or, with distance 1 and `pairs`, side
// by side: capital even or odd.
struct CaseRange {
  char32_t first_upper;
  char32_t last_upper;
  int distance;
  bool pairs;
};

// Latin, Greek, Cyrillic, Armenian and the wide Latin letters of East Asian texts; only letters
// whose cases have the same length in UTF-8.
constexpr CaseRange kRanges[] = {
    {0x00C0, 0x00D6, 32, false},   {0x00D8, 0x00DE, 32, false}, {0x0100, 0x012E, 1, true},
    {0x0132, 0x0136, 1, true},     {0x0139, 0x0147, 1, true},   {0x014A, 0x0176, 1, true},
    {0x0178, 0x0178, -121, false}, {0x0179, 0x017D, 1, true},   {0x01CD, 0x01DB, 1, true},
    {0x01DE, 0x01EE, 1, true},     {0x01F8, 0x021E, 1, true},   {0x0222, 0x0232, 1, true},
    {0x0386, 0x0386, 38, false},   {0x0388, 0x038A, 37, false}, {0x038C, 0x038C, 64, false},
    {0x038E, 0x038F, 63, false},   {0x0391, 0x03A1, 32, false}, {0x03A3, 0x03AB, 32, false},
    {0x03D8, 0x03EE, 1, true},     {0x0400, 0x040F, 80, false}, {0x0410, 0x042F, 32, false},
    {0x0460, 0x0480, 1, true},     {0x048A, 0x04BE, 1, true},   {0x04C1, 0x04CD, 1, true},
    {0x04D0, 0x052E, 1, true},     {0x0531, 0x0556, 48, false}, {0x1E00, 0x1E94, 1, true},
    {0x1EA0, 0x1EFE, 1, true},     {0x2160, 0x216F, 16, false}, {0x24B6, 0x24CF, 26, false},
    {0xFF21, 0xFF3A, 32, false},
};

char32_t moved(char32_t point, int distance) {
  return static_cast<char32_t>(static_cast<int>(point) + distance);
}

char32_t lower_point(char32_t point) {
  for (const CaseRange& range : kRanges) {
    if (point < range.first_upper || point > range.last_upper) continue;
    if (range.pairs && (point - range.first_upper) % 2 != 0) return point;
    return moved(point, range.distance);
  }
  return point;
}

char32_t upper_point(char32_t point) {
  for (const CaseRange& range : kRanges) {
    const char32_t upper = moved(point, -range.distance);
    if (upper < range.first_upper || upper > range.last_upper) continue;
    if (range.pairs && (upper - range.first_upper) % 2 != 0) return point;
    return upper;
  }
  return point;
}

template <class ForAscii, class ForPoint>
std::string mapped(std::string_view utf8, ForAscii ascii, ForPoint point) {
  std::string out(utf8);
  if (is_ascii(utf8)) {
    std::transform(out.begin(), out.end(), out.begin(), ascii);
    return out;
  }
  out.clear();
  for (std::size_t at = 0; at < utf8.size();) {
    const Sequence sequence = sequence_at(utf8, at);
    if (sequence.size == 1) {
      out.push_back(ascii(utf8[at]));
    } else if (const char32_t other = point(sequence.point); other != sequence.point) {
      append_code_point(out, other);
    } else {
      out.append(utf8.substr(at, sequence.size));
    }
    at += sequence.size;
  }
  return out;
}

char ascii_upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string lower_case(std::string_view utf8) {
  return mapped(utf8, ascii_lower, lower_point);
}
std::string upper_case(std::string_view utf8) {
  return mapped(utf8, ascii_upper, upper_point);
}

std::string_view without_leading_blanks(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(' ');
  return first == text.npos ? std::string_view() : text.substr(first);
}

std::string_view without_trailing_blanks(std::string_view text) noexcept {
  const std::size_t last = text.find_last_not_of(' ');
  return last == text.npos ? std::string_view() : text.substr(0, last + 1);
}

std::size_t find_text(std::string_view text, std::string_view sought, std::size_t from,
                      Letters letters) {
  if (letters == Letters::AnyCase) {
    return find_text(lower_case(text), lower_case(sought), from, Letters::Exact);
  }
  return text.find(sought, from);
}

std::size_t find_last_text(std::string_view text, std::string_view sought, std::size_t end,
                           Letters letters) {
  if (letters == Letters::AnyCase) {
    return find_last_text(lower_case(text), lower_case(sought), end, Letters::Exact);
  }
  if (sought.size() > end) return text.npos;
  return text.rfind(sought, end - sought.size());
}

Text replaced_text(std::string_view text, std::string_view sought, std::string_view with,
                   std::size_t limit, Letters letters) {
  // What grows mostly grows by little: a line end that becomes a tag, a quote that becomes two.
  const std::size_t growth = with.size() > sought.size() ? text.size() / 16 : 0;
  TextPieces out(text.size() + growth);
  TextSearch search(text, sought, letters);
  std::size_t done = 0;
  for (; limit > 0; --limit) {
    const std::size_t at = search.next();
    if (at == text.npos) break;
    out.add(text.substr(done, at - done));
    out.add(with);
    done = at + sought.size();
  }
  out.add(text.substr(done));
  return std::move(out).text();
}

std::vector<Value> split_text(std::string_view text, std::string_view delimiter, std::size_t limit,
                              Letters letters) {
  std::vector<Value> parts;
  if (limit == 0) return parts;
  TextSearch search(text, delimiter, letters);
  std::size_t done = 0;
  while (parts.size() + 1 < limit) {
    const std::size_t at = search.next();
    if (at == text.npos) break;
    parts.push_back(Value::text(text.substr(done, at - done)));
    done = at + delimiter.size();
  }
  parts.push_back(Value::text(text.substr(done)));
  return parts;
}

void join_halves(std::string& utf8) {
  // A half is three bytes: ED, then A0 to AF (a first half) or B0 to BF (a second one).
  constexpr std::size_t kHalf = 3;
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(utf8[at]); };
  for (std::size_t at = utf8.find('\xED'); at != utf8.npos && at + 2 * kHalf <= utf8.size();
       at = utf8.find('\xED', at + 1)) {
    const bool pair = byte(at + 1) >= 0xA0 && byte(at + 1) < 0xB0 && byte(at + kHalf) == 0xED &&
                      byte(at + kHalf + 1) >= 0xB0;
    if (!pair) continue;
    const char32_t high = sequence_at(utf8, at).point - 0xD800;
    const char32_t low = sequence_at(utf8, at + kHalf).point - 0xDC00;
    std::string character;
    append_code_point(character, 0x10000 + (high << 10) + low);
    utf8.replace(at, 2 * kHalf, character);
  }
}

std::string reversed_text(std::string_view utf8) {
  if (is_ascii(utf8)) return std::string(utf8.rbegin(), utf8.rend());
  std::string out;
  out.reserve(utf8.size());
  std::size_t end = utf8.size();
  while (end > 0) {
    std::size_t begin = end - 1;
    while (begin > 0 && (static_cast<unsigned char>(utf8[begin]) & 0xC0) == 0x80) --begin;
    out.append(utf8.substr(begin, end - begin));
    end = begin;
  }
  return out;
}

}  // namespace rk
