#include "pagehost/pages/page_failure_text.h"

#include <array>

#include "pagehost/pages/url_text.h"

namespace rk::pagehost {
namespace {

constexpr std::uint32_t kLanguageErrors = 0x800A0000;

bool is_loopback(std::string_view address) {
  return address.starts_with("127.") || address == "::1" || address.starts_with("::ffff:127.");
}

}  // namespace

std::int32_t host_number(std::int32_t number) {
  if (number < 1 || number > 0xFFFF) return number;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(number) | kLanguageErrors);
}

std::string error_number_text(std::int32_t number) {
  const std::uint32_t bits = static_cast<std::uint32_t>(host_number(number));
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string out;
  for (int shift = 28; shift >= 0; shift -= 4) out += kHex[bits >> shift & 15];
  return out;
}

std::string failure_page(const PageFailure& failure, std::string_view source) {
  std::string out = "<html><head><title>500 Internal Server Error</title></head><body>\n<p>";
  const std::string_view word = source.ends_with("error") ? "" : " error";
  out += html_encoded(source) + std::string(word) + " '" + error_number_text(failure.number) +
         "'</p>\n<p>";
  out += html_encoded(failure.text) + "</p>\n<p>" + html_encoded(failure.path);
  if (failure.line > 0) out += ", line " + std::to_string(failure.line);
  return out + "</p>\n</body></html>\n";
}

std::string plain_page(int status, std::string_view reason, std::string_view words) {
  const std::string title = std::to_string(status) + " " + html_encoded(reason);
  return "<html><head><title>" + title + "</title></head><body>\n<h1>" + title + "</h1>\n<p>" +
         html_encoded(words) + "</p>\n</body></html>\n";
}

bool may_see_errors(const PageRequest& request, ShowErrors show) {
  if (show != ShowErrors::Local) return show == ShowErrors::All;
  constexpr std::array<std::string_view, 3> kProxyMarks{"x-forwarded-for", "forwarded", "via"};
  for (const std::string_view mark : kProxyMarks) {
    if (!request.header(mark).empty()) return false;
  }
  return is_loopback(request.remote_address);
}

}  // namespace rk::pagehost
