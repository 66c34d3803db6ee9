#include "pagehost/pages/name_values.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "pagehost/pages/url_text.h"

namespace rk::pagehost {

std::size_t NameHash::operator()(std::string_view name) const noexcept {
  std::uint64_t hash = 14695981039346656037u;
  for (const char c : name) {
    hash = (hash ^ static_cast<unsigned char>(ascii_lower(c))) * 1099511628211u;
  }
  return static_cast<std::size_t>(hash);
}

std::string NameValues::Entry::joined() const {
  std::string out;
  for (const std::string& value : values) {
    if (&value != values.data()) out += ", ";
    out += value;
  }
  return out;
}

void NameValues::add(std::string name, std::string value) {
  const auto [place, fresh] = places_.try_emplace(name, entries_.size());
  if (fresh) entries_.push_back({std::move(name), {}});
  entries_[place->second].values.push_back(std::move(value));
}

const NameValues::Entry* NameValues::find(std::string_view name) const {
  const auto place = places_.find(name);
  return place == places_.end() ? nullptr : &entries_[place->second];
}

NameValues parsed_form(std::string_view text, int code_page,
                       const platform::CodePages& code_pages) {
  NameValues out;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t end = std::min(text.find('&', at), text.size());
    const std::string_view pair = text.substr(at, end - at);
    at = end + 1;
    if (pair.empty()) continue;
    const std::size_t equals = pair.find('=');
    const bool named = equals != std::string_view::npos;
    out.add(named ? url_decoded(pair.substr(0, equals), code_page, code_pages) : std::string(),
            url_decoded(named ? pair.substr(equals + 1) : pair, code_page, code_pages));
  }
  return out;
}

std::vector<CookieText> parsed_cookies(std::string_view header, int code_page,
                                       const platform::CodePages& code_pages) {
  std::vector<CookieText> out;
  std::size_t at = 0;
  while (at < header.size()) {
    const std::size_t end = std::min(header.find(';', at), header.size());
    std::string_view pair = header.substr(at, end - at);
    at = end + 1;
    while (!pair.empty() && pair.front() == ' ') pair.remove_prefix(1);
    while (!pair.empty() && pair.back() == ' ') pair.remove_suffix(1);
    const std::size_t equals = std::min(pair.find('='), pair.size());
    if (equals == 0) continue;
    std::string name = url_decoded(pair.substr(0, equals), code_page, code_pages);
    const bool known = std::any_of(out.begin(), out.end(), [&](const CookieText& cookie) {
      return equal_ignoring_case(cookie.name, name);
    });
    if (known) continue;
    out.push_back({std::move(name), std::string(pair.substr(std::min(equals + 1, pair.size())))});
  }
  return out;
}

}  // namespace rk::pagehost
