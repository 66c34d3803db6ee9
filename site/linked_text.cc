#include "site/linked_text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace rk::site {

namespace {

// Digits and sign of a 64-bit integer.
constexpr std::size_t kLongestNumber = 20;
constexpr std::array<std::string_view, 2> kRowTags{"{ItemId}", "{ItemName}"};
// The longest text that steady_length looks back on: a mark with its brace and number.
constexpr std::size_t kLongestBegin = 1 + kShopMark.size() + kLongestNumber;

bool is_number_letter(char c) {
  return (c >= '0' && c <= '9') || c == '-';
}

// The number that a text begins with.
std::string_view leading_number(std::string_view text) {
  const auto end = std::find_if_not(text.begin(), text.end(), is_number_letter);
  return text.substr(0, std::min(static_cast<std::size_t>(end - text.begin()), kLongestNumber));
}

// What a text from a "/" or "{" on is, as far as it goes.
enum class Match { None, Begun, Whole };

Match match_place(std::string_view text) {
  if (!text.starts_with(kShopPlace)) {
    return kShopPlace.starts_with(text) ? Match::Begun : Match::None;
  }
  text.remove_prefix(kShopPlace.size());
  const std::size_t digits = leading_number(text).size();
  return digits == text.size() && digits < kLongestNumber ? Match::Begun : Match::Whole;
}

Match match_mark(std::string_view text) {
  text.remove_prefix(1);
  if (!text.starts_with(kShopMark)) {
    return kShopMark.starts_with(text) ? Match::Begun : Match::None;
  }
  text.remove_prefix(kShopMark.size());
  const std::size_t digits = leading_number(text).size();
  if (digits == text.size()) return Match::Begun;
  return digits > 0 && text[digits] == '}' ? Match::Whole : Match::None;
}

Match match_tag(std::string_view text) {
  for (const std::string_view tag : kRowTags) {
    if (text.starts_with(tag)) return Match::Whole;
    if (tag.starts_with(text)) return Match::Begun;
  }
  return match_mark(text);
}

// Where the last beginning lies that goes to the text's end, or npos.
std::size_t last_begin(std::string_view text) {
  const std::size_t from = text.size() - std::min(text.size(), kLongestBegin);
  for (std::size_t at = text.size(); at-- > from;) {
    const std::string_view rest = text.substr(at);
    if (rest[0] == '/' && match_place(rest) == Match::Begun) return at;
    if (rest[0] == '{' && match_tag(rest) == Match::Begun) return at;
  }
  return std::string_view::npos;
}

std::size_t first_tag(std::string_view text) {
  std::size_t at = text.find('{');
  while (at != std::string_view::npos && match_tag(text.substr(at)) != Match::Whole) {
    at = text.find('{', at + 1);
  }
  return std::min(at, text.size());
}

}  // namespace

bool is_shop_number(std::string_view id) {
  return !id.empty() && leading_number(id).size() == id.size();
}

std::size_t steady_length(std::string_view text) {
  for (std::size_t at = last_begin(text); at != std::string_view::npos; at = last_begin(text)) {
    text = text.substr(0, at);
  }
  return text.size();
}

std::size_t settled_length(std::string_view text) {
  return steady_length(text.substr(0, first_tag(text)));
}

void LinkedText::append(std::string_view text) {
  tail_.append(text);
}

bool LinkedText::link(std::string_view id, std::string_view target) {
  index();
  const auto found = places_of(id);
  const bool apart = std::all_of(found.begin(), found.end(), [&](Places::iterator place) {
    return is_steady_before(place->second);
  });
  if (!apart) return false;
  for (const Places::iterator place : found) {
    const Pieces::iterator piece = place->second;
    places_.erase(place);
    insert(piece, std::string(target).append(*piece, kShopPlace.size() + id.size()));
    pieces_.erase(piece);
  }
  return true;
}

std::string LinkedText::take() {
  if (pieces_.empty()) return std::exchange(tail_, {});
  std::string whole;
  std::size_t size = tail_.size();
  for (const std::string& piece : pieces_) size += piece.size();
  whole.reserve(size);
  for (const std::string& piece : pieces_) whole.append(piece);
  whole.append(tail_);
  clear();
  return whole;
}

void LinkedText::clear() {
  places_.clear();
  pieces_.clear();
  tail_.clear();
}

void LinkedText::index() {
  insert(pieces_.end(), tail_);
  tail_.clear();
}

// Cuts the text into pieces before each of its places.
void LinkedText::insert(Pieces::iterator before, std::string_view text) {
  std::size_t at = text.find(kShopPlace);
  if (at != 0 && !text.empty()) pieces_.emplace(before, text.substr(0, at));
  while (at != std::string_view::npos) {
    const std::size_t next = text.find(kShopPlace, at + kShopPlace.size());
    const auto piece = pieces_.emplace(before, text.substr(at, next - at));
    places_.emplace(leading_number(text.substr(at + kShopPlace.size())), piece);
    at = next;
  }
}

// Where the place stands with the number or with a longer one that begins with it.
std::vector<LinkedText::Places::iterator> LinkedText::places_of(std::string_view id) {
  std::vector<Places::iterator> found;
  for (auto place = places_.lower_bound(id);
       place != places_.end() && std::string_view(place->first).starts_with(id); ++place) {
    found.push_back(place);
  }
  return found;
}

bool LinkedText::is_steady_before(Pieces::iterator piece) const {
  std::string before;
  for (Pieces::const_iterator at = piece; at != pieces_.begin() && before.size() < kLongestBegin;) {
    --at;
    before.insert(0, *at, at->size() - std::min(at->size(), kLongestBegin));
  }
  return steady_length(before) == before.size();
}

}  // namespace rk::site
