#include "pagehost/pages/url_text.h"

#include <cstddef>
#include <optional>

#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr std::string_view kHex = "0123456789ABCDEF";

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char lower = ascii_lower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The number of `digits` hexadecimal digits at `at`, or nothing where they are not all there.
std::optional<unsigned> hex_number(std::string_view text, std::size_t at, std::size_t digits) {
  if (at + digits > text.size()) return std::nullopt;
  unsigned number = 0;
  for (const char c : text.substr(at, digits)) {
    const int digit = hex_digit(c);
    if (digit < 0) return std::nullopt;
    number = number * 16 + static_cast<unsigned>(digit);
  }
  return number;
}

void append_percent(std::string& out, unsigned char byte) {
  out += '%';
  out += kHex[byte >> 4];
  out += kHex[byte & 15];
}

bool is_plain(unsigned char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

}  // namespace

std::string decoded_text(std::string_view bytes, int code_page,
                         const platform::CodePages& code_pages) {
  if (is_ascii(bytes) || (code_page == platform::kUtf8 && is_valid_utf8(bytes))) {
    return std::string(bytes);
  }
  return code_pages.to_utf8(bytes, code_page);
}

std::string url_decoded(std::string_view text, int code_page,
                        const platform::CodePages& code_pages) {
  std::string out;
  std::string bytes;  // those not yet read by the code page
  const auto settle = [&] {
    if (!bytes.empty()) out += decoded_text(bytes, code_page, code_pages);
    bytes.clear();
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '+') {
      bytes += ' ';
    } else if (c != '%') {
      bytes += c;
    } else if (const auto byte = hex_number(text, i + 1, 2)) {
      bytes += static_cast<char>(*byte);
      i += 2;
    } else if (i + 1 < text.size() && ascii_lower(text[i + 1]) == 'u' &&
               hex_number(text, i + 2, 4)) {
      settle();
      append_unit(out, static_cast<char16_t>(*hex_number(text, i + 2, 4)));
      i += 5;
    } else {
      bytes += c;
    }
  }
  settle();
  return out;
}

std::string url_encoded(std::string_view utf8, int code_page,
                        const platform::CodePages& code_pages) {
  const bool as_is = code_page == platform::kUtf8 || is_ascii(utf8);
  const std::string bytes = as_is ? std::string(utf8) : code_pages.from_utf8(utf8, code_page);
  std::string out;
  out.reserve(bytes.size());
  for (const char c : bytes) {
    if (c == ' ') {
      out += '+';
    } else if (is_plain(static_cast<unsigned char>(c))) {
      out += c;
    } else {
      append_percent(out, static_cast<unsigned char>(c));
    }
  }
  return out;
}

std::string html_encoded(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (const char c : utf8) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string header_safe_address(std::string_view bytes) {
  std::string out;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= ' ' || byte > 126) {
      append_percent(out, byte);
    } else {
      out += c;
    }
  }
  return out;
}

}  // namespace rk::pagehost
