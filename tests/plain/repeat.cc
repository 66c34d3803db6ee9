#include "tests/plain/repeat.h"

#include <vector>

#include "value/conversions.h"

namespace rk::plain {

namespace {

std::vector<std::string> split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  pieces.emplace_back();
  for (std::size_t i = 0; i < text.size();) {
    if (!separator.empty() && text.substr(i, separator.size()) == separator) {
      pieces.emplace_back();
      i += separator.size();
    } else {
      pieces.back() += text[i++];
    }
  }
  return pieces;
}

}  // namespace

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  for (std::size_t i = 0; i < text.size();) {
    if (!from.empty() && text.substr(i, from.size()) == from) {
      result += to;
      i += from.size();
    } else {
      result += text[i++];
    }
  }
  return result;
}

std::string cut(std::string_view html, std::string_view start, std::string_view last) {
  const auto pieces = split(html, start);
  if (pieces.size() < 2) return {};
  const auto inner = split(pieces[1], last);
  return inner.empty() ? std::string() : inner[0];
}

void Repeat::append(const Value& text) {
  accumulated_ += joined_text(text).view();
}

std::string plain_text(const Value& value) {
  return joined_text(value).string();
}

void fill_tag(std::string& text, std::string_view tag, const Value& content) {
  if (content.is_null()) {
    text.clear();
    return;
  }
  text = replaced(text, std::string(1, '{').append(tag).append(1, '}'), plain_text(content));
}

}  // namespace rk::plain
