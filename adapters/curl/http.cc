#include "adapters/curl/http.h"

#include <curl/curl.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>

#include "value/text.h"

namespace rk::curl {

namespace {

using platform::HttpAnswer;
using platform::HttpFailure;
using platform::HttpRequest;
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

struct ListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using List = std::unique_ptr<curl_slist, ListDeleter>;

struct Answer {
  std::size_t max_bytes;
  std::string head;  // of the last answer, whole lines
  std::string body;
  bool head_ended = false;
  bool too_large = false;
};

// A connection that ends within the head reads to libcurl as an answer without a body.
std::size_t take_head(char* bytes, std::size_t size, std::size_t count, void* data) {
  const std::string_view line(bytes, size * count);
  auto& answer = *static_cast<Answer*>(data);
  if (line == "\r\n" || line == "\n") answer.head_ended = true;
  if (line.starts_with("HTTP/")) {  // the next one of a redirect
    answer.head_ended = false;
    answer.head.clear();
  }
  answer.too_large = line.size() > kMaxHeadBytes - answer.head.size();
  if (answer.too_large) return 0;
  try {
    answer.head.append(line);
  } catch (const std::bad_alloc&) {  // nothing may pass through libcurl
    return 0;
  }
  return line.size();
}

std::size_t take_body(char* bytes, std::size_t size, std::size_t count, void* data) {
  auto& answer = *static_cast<Answer*>(data);
  const std::size_t more = size * count;
  answer.too_large = more > answer.max_bytes - answer.body.size();
  if (answer.too_large) return 0;
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
    curl_off_t sent_bytes = 0;
    curl_easy_getinfo(easy_, CURLINFO_HEADER_SIZE, &header_bytes);
    curl_easy_getinfo(easy_, CURLINFO_SIZE_DOWNLOAD_T, &body_bytes);
    curl_easy_getinfo(easy_, CURLINFO_SIZE_UPLOAD_T, &sent_bytes);
    return {passed(CURLINFO_NAMELOOKUP_TIME_T), passed(CURLINFO_CONNECT_TIME_T),
            passed(CURLINFO_PRETRANSFER_TIME_T), header_bytes + body_bytes + sent_bytes};
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

// Runs a fetch to its end, and how it ended. What `still_running` throws passes through.
CURLcode carried_out(CURLM* multi, CURL* easy, const FetchLimits& limits,
                     const platform::HttpTimeouts& timeouts) {
  Phase phase(easy);
  while (true) {
    if (limits.still_running) limits.still_running();
    int running = 0;
    if (curl_multi_perform(multi, &running) != CURLM_OK) return CURLE_OUT_OF_MEMORY;
    if (running == 0) break;
    if (phase.is_over(timeouts)) return CURLE_OPERATION_TIMEDOUT;
    curl_multi_poll(multi, nullptr, 0, kLookMilliseconds, nullptr);
  }
  int left = 0;
  const CURLMsg* message = curl_multi_info_read(multi, &left);
  const bool done = message != nullptr && message->msg == CURLMSG_DONE;
  return done ? message->data.result : CURLE_RECV_ERROR;
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

HttpFailure failure_of(CURLcode code, const Answer& answer) {
  if (answer.too_large) return HttpFailure::TooLarge;
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
      return HttpFailure::NoSuchHost;
    case CURLE_COULDNT_CONNECT:
      return HttpFailure::NotConnected;
    case CURLE_OPERATION_TIMEDOUT:
      return HttpFailure::TimedOut;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
      return HttpFailure::BadCertificate;
    case CURLE_UNSUPPORTED_PROTOCOL:
      return HttpFailure::OtherScheme;
    case CURLE_URL_MALFORMAT:
      return HttpFailure::BadAddress;
    default:
      return HttpFailure::BadAnswer;
  }
}

std::string_view trimmed(std::string_view text) {
  const auto from = text.find_first_not_of(" \t\r\n");
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(" \t\r\n") - from + 1);
}

// "HTTP/1.1 200 OK" and its headers, each a line.
void read_head(std::string_view head, HttpAnswer& answer) {
  while (!head.empty()) {
    const std::size_t end = std::min(head.find('\n'), head.size());
    const std::string_view line = trimmed(head.substr(0, end));
    head.remove_prefix(std::min(end + 1, head.size()));
    const std::size_t colon = line.find(':');
    if (line.starts_with("HTTP/")) {
      const std::size_t code = std::min(line.find(' '), line.size());
      answer.reason = trimmed(line.substr(std::min(code + 5, line.size())));
    } else if (colon != std::string_view::npos) {
      answer.headers.emplace_back(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
    }
  }
}

// The request's own headers, and without the ones that libcurl would add by itself.
List header_list(const HttpRequest& request) {
  List list;
  const auto add = [&](const std::string& line) {
    curl_slist* longer = curl_slist_append(list.get(), line.c_str());
    if (longer == nullptr) throw std::bad_alloc();
    static_cast<void>(list.release());
    list.reset(longer);
  };
  bool has_type = false;
  for (const auto& [name, value] : request.headers) {
    add(value.empty() ? name + ";" : name + ": " + value);
    has_type = has_type || equal_ignoring_case(name, "content-type");
  }
  if (!has_type) add("Content-Type:");
  add("Expect:");
  return list;
}

void set_up_request(CURL* easy, const HttpRequest& request, curl_slist* headers) {
  curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
  if (request.method == "HEAD") {
    curl_easy_setopt(easy, CURLOPT_NOBODY, 1L);
  } else if (request.method != "GET" || !request.body.empty()) {
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE,
                     static_cast<curl_off_t>(request.body.size()));
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request.body.c_str());
    // Set by hand, the method would be sent again to where a redirect leads.
    if (request.method != "POST") {
      curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, request.method.c_str());
    }
  }
  if (!request.follow_redirects) curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
  if (!request.check_certificate) {
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 0L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 0L);
  }
  if (request.user_agent) curl_easy_setopt(easy, CURLOPT_USERAGENT, request.user_agent->c_str());
  if (request.user.empty()) return;
  curl_easy_setopt(easy, CURLOPT_USERNAME, request.user.c_str());
  curl_easy_setopt(easy, CURLOPT_PASSWORD, request.password.c_str());
}

}  // namespace

void start_curl() {
  curl_global_init(CURL_GLOBAL_DEFAULT);
}

std::optional<std::string> CurlHttp::body_of(std::string_view address,
                                             const platform::HttpTimeouts& timeouts) {
  HttpRequest request;
  request.address = address;
  request.timeouts = timeouts;
  auto answer = send(request);
  if (std::holds_alternative<HttpFailure>(answer)) return std::nullopt;
  return std::move(std::get<HttpAnswer>(answer).body);
}

std::variant<HttpAnswer, HttpFailure> CurlHttp::send(const HttpRequest& request) {
  const std::string scheme = lowered_ascii(scheme_of(request.address));
  if (request.address.find('\0') != std::string::npos) return HttpFailure::BadAddress;
  if (scheme != "http" && scheme != "https") return HttpFailure::OtherScheme;
  const milliseconds left = limits_.time_left ? limits_.time_left() : kWholeDay;
  if (left <= milliseconds::zero()) return HttpFailure::TimedOut;
  const Address parsed(curl_url());
  const Easy easy(curl_easy_init());
  const Multi multi(curl_multi_init());
  if (!parsed || !easy || !multi) throw std::bad_alloc();
  // A blank goes out as it stands, as the rest of the address does.
  if (curl_url_set(parsed.get(), CURLUPART_URL, request.address.c_str(), CURLU_ALLOW_SPACE) !=
      CURLUE_OK) {
    return HttpFailure::BadAddress;
  }
  set_up(easy.get(), parsed.get(), scheme, limits_, left);
  const List headers = header_list(request);
  set_up_request(easy.get(), request, headers.get());
  Answer answer{limits_.max_body_bytes, {}, {}};
  curl_easy_setopt(easy.get(), CURLOPT_HEADERFUNCTION, take_head);
  curl_easy_setopt(easy.get(), CURLOPT_HEADERDATA, &answer);
  curl_easy_setopt(easy.get(), CURLOPT_WRITEFUNCTION, take_body);
  curl_easy_setopt(easy.get(), CURLOPT_WRITEDATA, &answer);
  const Membership membership(multi.get(), easy.get());
  const CURLcode ended = carried_out(multi.get(), easy.get(), limits_, request.timeouts);
  if (ended != CURLE_OK) return failure_of(ended, answer);
  if (!answer.head_ended) return HttpFailure::BadAnswer;
  HttpAnswer out;
  long status = 0;
  curl_easy_getinfo(easy.get(), CURLINFO_RESPONSE_CODE, &status);
  out.status = static_cast<int>(status);
  out.body = std::move(answer.body);
  read_head(answer.head, out);
  return out;
}

}  // namespace rk::curl
