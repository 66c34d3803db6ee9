// Any bytes as a Cookie header: its cookies hold what was sent and no more, the names by which
// pages ask find them, and neither a session's identifier nor a line end of the header reaches a
// page.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/checks.h"
#include "fuzz/latin_pages.h"
#include "pagehost/pages/name_values.h"
#include "pagehost/pages/request.h"
#include "pagehost/pages/response.h"
#include "tests/support/fixed_clock.h"

using rk::fuzz::LatinPages;
using rk::fuzz::must;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string sent(reinterpret_cast<const char*>(data), size);
  const LatinPages code_pages;
  const rk::tests::FixedClock clock;
  std::size_t bytes = 0;
  for (const auto& cookie : rk::pagehost::parsed_cookies(sent, 1252, code_pages)) {
    bytes += cookie.value.size();
  }
  must(bytes <= sent.size());

  rk::pagehost::PageRequest request;
  request.headers = {{"Host", "h"}, {"Cookie", sent}, {"cookie", "last=1"}};
  const auto response =
      std::make_shared<rk::pagehost::PageResponse>(nullptr, code_pages, clock, 1252);
  rk::pagehost::RequestView view(request, code_pages, response, "/site", "software");
  const std::vector<rk::pagehost::CookieText> cookies = view.cookies();
  for (const rk::pagehost::CookieText& cookie : cookies) {
    must(cookie.name != rk::pagehost::kSessionCookie);
    must(!view.cookie(cookie.name).is_empty());
    view.cookie_keys(cookie.value);
    // What a page sends back of it stays one header.
    response->cookie(cookie.name).value = cookie.value;
  }
  for (const auto& [name, value] : response->take().headers) {
    must(value.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos);
  }
  return 0;
}
