// Pages of the filing service: the input is the form page and the answer, divided by NUL. Whatever
// they hold, the result is one of three, and the query goes to the service that was asked.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/codepage/code_pages.h"
#include "platform/page.h"
#include "services/lookups.h"

namespace {

constexpr std::string_view kService = "http://filing.example";

class TwoPages final : public rk::platform::Http {
 public:
  TwoPages(std::string_view form, std::string_view answer) : form_(form), answer_(answer) {}
  std::optional<std::string> body_of(std::string_view address,
                                     const rk::platform::HttpTimeouts&) override {
    if (!address.starts_with(kService) || address.substr(kService.size(), 1) != "/") std::abort();
    return std::string(++fetches_ == 1 ? form_ : answer_);
  }
  int fetches() const { return fetches_; }

 private:
  std::string_view form_;
  std::string_view answer_;
  int fetches_ = 0;
};

class EncodingServer final : public rk::platform::Server {
 public:
  std::unique_ptr<rk::platform::Connection> create_connection() override { return nullptr; }
  rk::platform::Files& files() override { std::abort(); }
  std::string map_path(std::string_view) override { return {}; }
  std::string url_encode(std::string_view utf8) override { return std::string(utf8); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const rk::codepage::IcuCodePages code_pages;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t middle = input.find('\0');
  const std::string_view form = input.substr(0, middle);
  TwoPages http(form, middle == std::string_view::npos ? "" : input.substr(middle + 1));
  EncodingServer server;
  rk::services::Endpoints endpoints;
  endpoints.filing = kService;
  const rk::Value result =
      rk::services::Getbeian({http, code_pages, rk::platform::kGb2312}, endpoints, server,
                             rk::Value::text("1"), rk::Value::text("a.example"));
  const std::string_view code = result.as_view();
  if (code != "0" && code != "1" && code != "2") std::abort();
  if (http.fetches() != 2) std::abort();
  return 0;
}
