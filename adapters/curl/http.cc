#include "adapters/curl/http.h"

#include <curl/curl.h>

#include <algorithm>
#include <exception>
#include <memory>

#include "value/text.h"

namespace rk::curl {

namespace {

using std::chrono::milliseconds;

struct EasyDeleter {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
using Easy = std::unique_ptr<CURL, EasyDeleter>;

// One fetch: what its callbacks share. An exception must not pass through libcurl, so it is kept
// and thrown again behind the call.
struct Fetch {
  const FetchLimits& limits;
  std::string body;
  std::exception_ptr ended;
};

std::size_t take_body(char* bytes, std::size_t size, std::size_t count, void* data) {
  auto& fetch = *static_cast<Fetch*>(data);
  const std::size_t more = size * count;
  if (more > fetch.limits.max_body_bytes - fetch.body.size()) return 0;
  fetch.body.append(bytes, more);
  return more;
}

int look_at_page(void* data, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  auto& fetch = *static_cast<Fetch*>(data);
  if (!fetch.limits.still_running) return 0;
  try {
    fetch.limits.still_running();
    return 0;
  } catch (...) {
    fetch.ended = std::current_exception();
    return 1;
  }
}

// libcurl bounds resolving and connecting together, and sending and receiving by the whole.
void set_times(CURL* easy, const FetchLimits& limits, const platform::HttpTimeouts& timeouts) {
  milliseconds whole = limits.time_left ? limits.time_left() : milliseconds::zero();
  if (timeouts.resolve && timeouts.connect) {
    const milliseconds connecting = *timeouts.resolve + *timeouts.connect;
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(connecting.count()));
  }
  if (timeouts.send && timeouts.receive) {
    const milliseconds phases = timeouts.resolve.value_or(milliseconds::zero()) +
                                timeouts.connect.value_or(milliseconds::zero()) + *timeouts.send +
                                *timeouts.receive;
    whole = limits.time_left ? std::min(whole, phases) : phases;
  }
  curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(whole.count()));
}

std::string_view scheme_of(std::string_view address) {
  return address.substr(0, std::min(address.find(':'), address.size()));
}

// A blank in an address is sent as a server takes it.
std::string sendable(std::string_view address) {
  std::string result;
  for (const char c : address) {
    if (c == ' ') {
      result += "%20";
    } else {
      result += c;
    }
  }
  return result;
}

void set_up(CURL* easy, Fetch& fetch, const std::string& address, const std::string& scheme,
            const platform::HttpTimeouts& timeouts) {
  curl_easy_setopt(easy, CURLOPT_URL, address.c_str());
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, scheme.c_str());
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(easy, CURLOPT_MAXREDIRS, kMaxRedirects);
  curl_easy_setopt(easy, CURLOPT_PROXY, fetch.limits.proxy.c_str());
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, take_body);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, &fetch);
  curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
  curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, look_at_page);
  curl_easy_setopt(easy, CURLOPT_XFERINFODATA, &fetch);
  set_times(easy, fetch.limits, timeouts);
}

}  // namespace

void start_curl() {
  curl_global_init(CURL_GLOBAL_DEFAULT);
}

std::optional<std::string> CurlHttp::body_of(std::string_view address,
                                             const platform::HttpTimeouts& timeouts) {
  const std::string scheme = lowered_ascii(scheme_of(address));
  if (scheme != "http" && scheme != "https") return std::nullopt;
  if (address.find('\0') != std::string_view::npos) return std::nullopt;
  if (limits_.time_left && limits_.time_left() <= milliseconds::zero()) return std::nullopt;
  const Easy easy(curl_easy_init());
  if (!easy) return std::nullopt;
  Fetch fetch{limits_, {}, {}};
  const std::string sent = sendable(address);
  set_up(easy.get(), fetch, sent, scheme, timeouts);
  const CURLcode code = curl_easy_perform(easy.get());
  if (fetch.ended) std::rethrow_exception(fetch.ended);
  if (code != CURLE_OK) return std::nullopt;
  return std::move(fetch.body);
}

}  // namespace rk::curl
