#include "pagehost/http/target.h"

#include <algorithm>

#include "value/text.h"

namespace rk::http {
namespace {

int hexadecimal(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::optional<std::string> percent_decoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\0') return std::nullopt;
    if (text[i] != '%') {
      decoded.push_back(text[i] == '\\' ? '/' : text[i]);
      continue;
    }
    if (i + 2 >= text.size()) return std::nullopt;
    const int high = hexadecimal(text[i + 1]);
    const int low = hexadecimal(text[i + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    const char c = static_cast<char>(high << 4 | low);
    // An encoded separator is one to some readers of the path and a letter to others.
    if (c == '/' || c == '\\' || c == '\0') return std::nullopt;
    decoded.push_back(c);
    i += 2;
  }
  return decoded;
}

std::optional<std::string> without_dots(std::string_view path) {
  std::string clean;
  clean.reserve(path.size());
  std::size_t start = 0;
  while (start < path.size()) {
    const std::size_t end = std::min(path.find('/', start + 1), path.size());
    const std::string_view part = path.substr(start + 1, end - start - 1);
    start = end;
    if (part == "..") {
      if (clean.empty()) return std::nullopt;
      clean.resize(clean.rfind('/'));
    } else if (!part.empty() && part != ".") {
      clean.append("/").append(part);
    }
  }
  const bool folder = path.ends_with('/') || path.ends_with("/.") || path.ends_with("/..");
  if (folder || clean.empty()) clean.push_back('/');
  return clean;
}

// Cuts "http://HOST" off the start of an absolute target.
bool take_authority(std::string_view& target, std::string& authority) {
  constexpr std::string_view kScheme = "http://";
  if (target.size() < kScheme.size()) return false;
  if (!equal_ignoring_case(target.substr(0, kScheme.size()), kScheme)) return false;
  target.remove_prefix(kScheme.size());
  const std::size_t end = std::min(target.find_first_of("/?"), target.size());
  authority = target.substr(0, end);
  target.remove_prefix(end);
  return !authority.empty() && authority.find('@') == std::string::npos;
}

}  // namespace

std::optional<Target> parse_target(std::string_view target, int code_page,
                                   const platform::CodePages& code_pages) {
  Target parsed;
  if (!target.starts_with('/') && !take_authority(target, parsed.authority)) return std::nullopt;
  const std::size_t question = std::min(target.find('?'), target.size());
  if (question < target.size()) parsed.query = target.substr(question + 1);
  const std::string_view raw = question == 0 ? "/" : target.substr(0, question);
  std::optional<std::string> decoded = percent_decoded(raw);
  if (!decoded) return std::nullopt;
  if (!is_valid_utf8(*decoded)) decoded = code_pages.to_utf8(*decoded, code_page);
  std::optional<std::string> path = without_dots(*decoded);
  if (!path) return std::nullopt;
  parsed.path = std::move(*path);
  return parsed;
}

std::string encoded_path(std::string_view path) {
  constexpr std::string_view kPlain = "/-._~!$&'()*+,;=:@";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(path.size());
  for (const char c : path) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (letter || kPlain.find(c) != std::string_view::npos) {
      encoded.push_back(c);
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    encoded.push_back('%');
    encoded.push_back(kDigits[byte >> 4]);
    encoded.push_back(kDigits[byte & 15]);
  }
  return encoded;
}

}  // namespace rk::http
