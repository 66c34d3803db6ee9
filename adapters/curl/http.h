// Fetches by libcurl: http and https, redirects only within the scheme they began with. A wait
// looks at the page and at its phase's time ten times a second. Belongs to one page's thread. The
// program calls start_curl() once before the first thread runs.
#ifndef RK_ADAPTERS_CURL_HTTP_H_
#define RK_ADAPTERS_CURL_HTTP_H_

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/http.h"

namespace rk::curl {

// A body past this reads as no answer; lookups answer in kilobytes, and a page holds the whole.
inline constexpr std::size_t kMaxBodyBytes = std::size_t{16} << 20;
// The head of an answer, of which honest servers send some KiB.
inline constexpr std::size_t kMaxHeadBytes = std::size_t{256} << 10;
// A redirect chain of honest servers is shorter.
inline constexpr long kMaxRedirects = 10;

struct FetchLimits {
  // What is left for a fetch of the page's time; asked once when a fetch begins.
  std::function<std::chrono::milliseconds()> time_left;
  // Called while a fetch waits; throws where the page has ended.
  std::function<void()> still_running;
  std::string proxy;  // empty: none, whatever the environment says
  // Certificates in PEM of authorities that are trusted beside the system's; empty: none.
  std::string ca_file;
  std::size_t max_body_bytes = kMaxBodyBytes;
  std::string user_agent;  // empty: none is sent
};

class CurlHttp final : public platform::Http, public platform::HttpClient {
 public:
  explicit CurlHttp(FetchLimits limits) : limits_(std::move(limits)) {}

  std::optional<std::string> body_of(std::string_view address,
                                     const platform::HttpTimeouts& timeouts) override;
  std::variant<platform::HttpAnswer, platform::HttpFailure> send(
      const platform::HttpRequest& request) override;

 private:
  FetchLimits limits_;
};

void start_curl();

}  // namespace rk::curl

#endif  // RK_ADAPTERS_CURL_HTTP_H_
