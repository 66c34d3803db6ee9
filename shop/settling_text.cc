#include "shop/settling_text.h"

#include <algorithm>

#include "site/tags.h"

namespace rk::shop {

namespace {

// Bytes at the end of `text` from which the whole of `beginning` could still grow.
std::size_t begun_at_end(std::string_view text, std::string_view beginning) {
  if (beginning.empty()) return 0;
  std::size_t size = std::min(beginning.size() - 1, text.size());
  while (size > 0 && !text.ends_with(beginning.substr(0, size))) --size;
  return size;
}

}  // namespace

void SettlingText::fill(std::string_view tag, const Value& content) {
  // QUIRK: a Null loses all of the text, not the tag alone.
  if (content.is_null()) {
    settled_.clear();
    lasting_places_.clear();
  }
  site::fill(open_, tag, content);
}

void SettlingText::fill(std::string_view tag, std::string_view content) {
  site::fill(open_, tag, content);
}

std::string_view SettlingText::cut(std::string_view start, std::string_view last) const {
  return site::cut(open_, start, last);
}

void SettlingText::replace(std::string_view from, std::string_view to) {
  reopen_for(from);
  site::replace_all(open_, from, to);
}

void SettlingText::settle() {
  settle_to(settled_length());
}

// Up to the first whole beginning, and before that up to where one could still grow together out
// of what is there, what a replacement puts behind it and what is appended.
std::size_t SettlingText::settled_length() const {
  std::string_view text = open_;
  for (const std::string_view beginning : beginnings_) {
    text = text.substr(0, site::place_of(beginning, text));
  }
  for (std::size_t before = 0; before != text.size();) {
    before = text.size();
    for (const std::string_view beginning : beginnings_) {
      text.remove_suffix(begun_at_end(text, beginning));
    }
    text.remove_suffix(begun_at_end(text, lasting_));
  }
  return text.size();
}

void SettlingText::settle_to(std::size_t length) {
  if (!lasting_.empty()) {
    std::size_t at = site::place_of(lasting_, open_);
    for (; at < length; at = site::place_of(lasting_, open_, at + 1)) {
      lasting_places_.push_back(settled_.size() + at);
    }
  }
  settled_.append(open_, 0, length);
  open_.erase(0, length);
}

// Takes back what is settled from the first place on where `from` stands.
void SettlingText::reopen_for(std::string_view from) {
  for (std::size_t i = 0; i < lasting_places_.size(); ++i) {
    const std::string_view rest = std::string_view(settled_).substr(lasting_places_[i]);
    const std::size_t common = std::min(rest.size(), from.size());
    if (rest.substr(0, common) != from.substr(0, common)) continue;
    if (!std::string_view(open_).starts_with(from.substr(common))) continue;
    open_.insert(0, rest);
    settled_.resize(lasting_places_[i]);
    lasting_places_.resize(i);
    return;
  }
}

std::string SettlingText::whole() && {
  settled_.append(open_);
  return std::move(settled_);
}

std::string SettlingText::replaced_everywhere(std::string_view from, std::string_view to) && {
  std::string text = std::move(*this).whole();
  site::replace_all(text, from, to);
  return text;
}

}  // namespace rk::shop
