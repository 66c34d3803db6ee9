#include "adapters/curl/http.h"

#include <curl/curl.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>

#include "value/text.h"

namespace rk::curl {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

struct EasyDeleter {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
using Easy = std::unique_ptr<CURL, EasyDeleter>;

struct MultiDeleter {
  void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};
using Multi = std::unique_ptr<CURLM, MultiDeleter>;

struct AddressDeleter {
  void operator()(CURLU* address) const { curl_url_cleanup(address); }
};
using Address = std::unique_ptr<CURLU, AddressDeleter>;

// Between two looks at the page and at the phase's time.
constexpr int kLookMilliseconds = 100;
// libcurl's own limit of connecting, five minutes where none is set, is not one of the phases.
constexpr milliseconds kWholeDay = std::chrono::hours(24);

struct Answer {
  std::size_t max_bytes;
  std::string body;
  bool head_ended = false;
};

// A connection that ends within the head reads to libcurl as an answer without a body.
std::size_t take_head(char* bytes, std::size_t size, std::size_t count, void* data) {
  const std::string_view line(bytes, size * count);
  bool& head_ended = static_cast<Answer*>(data)->head_ended;
  if (line == "\r\n" || line == "\n") head_ended = true;
  if (line.starts_with("HTTP/")) head_ended = false;  // the next one of a redirect
  return line.size();
}

std::size_t take_body(char* bytes, std::size_t size, std::size_t count, void* data) {
  auto& answer = *static_cast<Answer*>(data);
  const std::size_t more = size * count;
  if (more > answer.max_bytes - answer.body.size()) return 0;
  try {
    answer.body.append(bytes, more);
  } catch (const std::bad_alloc&) {  // nothing may pass through libcurl
    return 0;
  }
  return more;
}

// How long the phase that a fetch is in has stood still. Resolving and connecting have their time
// as a whole; sending and receiving have it anew with each piece that moves.
class Phase {
 public:
  explicit Phase(CURL* easy) : easy_(easy) {}

  bool is_over(const platform::HttpTimeouts& timeouts) {
    const Moved now = moved();
    if (now != last_) {
      last_ = now;
      since_ = steady_clock::now();
    }
    const std::optional<milliseconds> longest = longest_of(timeouts);
    return longest && steady_clock::now() - since_ >= *longest;
  }

 private:
  struct Moved {
    bool resolved = false;
    bool connected = false;
    bool sent = false;
    curl_off_t bytes = 0;
    friend bool operator==(const Moved&, const Moved&) = default;
  };

  bool passed(CURLINFO moment) const {
    curl_off_t microseconds = 0;
    curl_easy_getinfo(easy_, moment, &microseconds);
    return microseconds > 0;
  }
  Moved moved() const {
    long header_bytes = 0;
    curl_off_t body_bytes = 0;
    curl_easy_getinfo(easy_, CURLINFO_HEADER_SIZE, &header_bytes);
    curl_easy_getinfo(easy_, CURLINFO_SIZE_DOWNLOAD_T, &body_bytes);
    return {passed(CURLINFO_NAMELOOKUP_TIME_T), passed(CURLINFO_CONNECT_TIME_T),
            passed(CURLINFO_PRETRANSFER_TIME_T), header_bytes + body_bytes};
  }
  std::optional<milliseconds> longest_of(const platform::HttpTimeouts& timeouts) const {
    if (last_.sent) return timeouts.receive;
    if (last_.connected) return timeouts.send;
    return last_.resolved ? timeouts.connect : timeouts.resolve;
  }

  CURL* easy_;
  Moved last_;
  steady_clock::time_point since_ = steady_clock::now();
};

std::string_view scheme_of(std::string_view address) {
  return address.substr(0, std::min(address.find(':'), address.size()));
}

// `left`: at least a millisecond, as libcurl takes 0 for no limit.
void set_up(CURL* easy, CURLU* address, const std::string& scheme, const FetchLimits& limits,
            milliseconds left) {
  curl_easy_setopt(easy, CURLOPT_CURLU, address);
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, scheme.c_str());
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(easy, CURLOPT_MAXREDIRS, kMaxRedirects);
  curl_easy_setopt(easy, CURLOPT_PROXY, limits.proxy.c_str());
  // libcurl's folder of authorities, the system's, stays in force beside the file.
  if (!limits.ca_file.empty()) curl_easy_setopt(easy, CURLOPT_CAINFO, limits.ca_file.c_str());
  if (!limits.user_agent.empty()) {
    curl_easy_setopt(easy, CURLOPT_USERAGENT, limits.user_agent.c_str());
  }
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  // A name server that does not answer must not hold the page once the fetch is given up.
  curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
  curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(kWholeDay.count()));
  curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(left.count()));
}

// Runs a fetch to its end; whether it ended well. What `still_running` throws passes through.
bool carried_out(CURLM* multi, CURL* easy, const FetchLimits& limits,
                 const platform::HttpTimeouts& timeouts) {
  Phase phase(easy);
  while (true) {
    if (limits.still_running) limits.still_running();
    int running = 0;
    if (curl_multi_perform(multi, &running) != CURLM_OK) return false;
    if (running == 0) break;
    if (phase.is_over(timeouts)) return false;
    curl_multi_poll(multi, nullptr, 0, kLookMilliseconds, nullptr);
  }
  int left = 0;
  const CURLMsg* message = curl_multi_info_read(multi, &left);
  return message != nullptr && message->msg == CURLMSG_DONE && message->data.result == CURLE_OK;
}

// Takes an easy handle out of a multi handle before either goes.
class Membership {
 public:
  Membership(CURLM* multi, CURL* easy) : multi_(multi), easy_(easy) {
    curl_multi_add_handle(multi_, easy_);
  }
  ~Membership() { curl_multi_remove_handle(multi_, easy_); }
  Membership(const Membership&) = delete;
  Membership& operator=(const Membership&) = delete;

 private:
  CURLM* multi_;
  CURL* easy_;
};

}  // namespace

void start_curl() {
  curl_global_init(CURL_GLOBAL_DEFAULT);
}

std::optional<std::string> CurlHttp::body_of(std::string_view address,
                                             const platform::HttpTimeouts& timeouts) {
  const std::string scheme = lowered_ascii(scheme_of(address));
  if (scheme != "http" && scheme != "https") return std::nullopt;
  if (address.find('\0') != std::string_view::npos) return std::nullopt;
  const milliseconds left = limits_.time_left ? limits_.time_left() : kWholeDay;
  if (left <= milliseconds::zero()) return std::nullopt;
  const Address parsed(curl_url());
  const Easy easy(curl_easy_init());
  const Multi multi(curl_multi_init());
  if (!parsed || !easy || !multi) return std::nullopt;
  // A blank goes out as it stands, as the rest of the address does.
  const std::string text(address);
  if (curl_url_set(parsed.get(), CURLUPART_URL, text.c_str(), CURLU_ALLOW_SPACE) != CURLUE_OK) {
    return std::nullopt;
  }
  set_up(easy.get(), parsed.get(), scheme, limits_, left);
  Answer answer{limits_.max_body_bytes, {}};
  curl_easy_setopt(easy.get(), CURLOPT_HEADERFUNCTION, take_head);
  curl_easy_setopt(easy.get(), CURLOPT_HEADERDATA, &answer);
  curl_easy_setopt(easy.get(), CURLOPT_WRITEFUNCTION, take_body);
  curl_easy_setopt(easy.get(), CURLOPT_WRITEDATA, &answer);
  const Membership membership(multi.get(), easy.get());
  if (!carried_out(multi.get(), easy.get(), limits_, timeouts)) return std::nullopt;
  if (!answer.head_ended) return std::nullopt;
  return std::move(answer.body);
}

}  // namespace rk::curl
