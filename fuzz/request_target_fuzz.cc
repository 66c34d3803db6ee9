// Any bytes as the target of a request and what the fields behind it say of a file: a path never
// leaves the site, an encoded one is read as itself again, a range lies inside its file.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/checks.h"
#include "fuzz/latin_pages.h"
#include "pagehost/http/forwarded.h"
#include "pagehost/http/static_answer.h"
#include "pagehost/http/target.h"
#include "platform/code_page.h"

namespace {

using rk::fuzz::LatinPages;
using rk::fuzz::must;

void check_path(const rk::http::Target& target, const LatinPages& code_pages) {
  const std::string& path = target.path;
  must(path.starts_with('/') && path.find('\0') == std::string::npos);
  const std::string closed = path.ends_with('/') ? path : path + "/";
  for (const char* part : {"//", "/./", "/../"}) must(closed.find(part) == std::string::npos);
  const auto again =
      rk::http::parse_target(rk::http::encoded_path(path), rk::platform::kUtf8, code_pages);
  must(again && again->path == path);
}

void check_file(std::string_view field, std::string_view path) {
  constexpr std::uint64_t kSize = 1000;
  for (const char* name : {"Range", "If-Range", "If-Match", "If-None-Match", "If-Modified-Since",
                           "If-Unmodified-Since"}) {
    rk::pagehost::PageRequest request;
    request.headers = {{"Host", "h"}, {"Range", "bytes=1-2"}, {name, std::string(field)}};
    if (request.headers[1].first == name) request.headers.erase(request.headers.begin() + 1);
    const auto answer = rk::http::static_answer(
        request, path, rk::platform::FileStamp{784111777'000000000, kSize, 1});
    must(answer.offset <= kSize && answer.count <= kSize - answer.offset);
  }
}

void check_proxy(std::string_view field) {
  rk::pagehost::PageRequest request;
  request.remote_address = "10.0.0.1";
  request.headers = {{"Host", "h"}};
  for (const char* name : {"X-Forwarded-For", "X-Forwarded-Proto", "X-Forwarded-Host"}) {
    request.headers.emplace_back(name, std::string(field));
  }
  rk::http::believe_proxy(request, {*rk::http::parse_network("10.0.0.0/8")});
  must(rk::http::is_ipv4_address(request.remote_address) ||
       rk::http::is_ipv6_address(request.remote_address));
  must(!request.header("Host").empty());
}

}  // namespace

// The target stands before the first line feed, a field's value behind it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t end = bytes.find('\n');
  const std::string_view sent = bytes.substr(0, end);
  const std::string_view field = end == std::string_view::npos ? "" : bytes.substr(end + 1);
  const LatinPages code_pages;
  const auto target = rk::http::parse_target(sent, 1252, code_pages);
  if (target) check_path(*target, code_pages);
  check_file(field, target ? target->path : "/");
  check_proxy(field);
  return 0;
}
