// Fetching from outside over HTTP: the body alone, for the library's web services, and the whole
// exchange, for the HTTP objects of scripts. Belongs to one page's thread.
#ifndef RK_PLATFORM_HTTP_H_
#define RK_PLATFORM_HTTP_H_

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace rk::platform {

// Each phase of a fetch by itself; a phase not given takes the layer's own default.
struct HttpTimeouts {
  std::optional<std::chrono::milliseconds> resolve;
  std::optional<std::chrono::milliseconds> connect;
  std::optional<std::chrono::milliseconds> send;
  std::optional<std::chrono::milliseconds> receive;
};

class Http {
 public:
  virtual ~Http() = default;
  // The body's bytes, whatever the status; nothing where there is no readable answer (bad
  // address, no such host, refused, time-out, a body past the size cap).
  virtual std::optional<std::string> body_of(std::string_view address,
                                             const HttpTimeouts& timeouts) = 0;
};

struct HttpRequest {
  std::string method = "GET";
  std::string address;  // UTF-8
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
  std::string user;  // empty: none
  std::string password;
  bool follow_redirects = true;           // within the scheme that the address has
  bool check_certificate = true;          // of an https server
  std::optional<std::string> user_agent;  // the layer's own where nothing is given
  HttpTimeouts timeouts;
};

struct HttpAnswer {
  int status = 0;
  std::string reason;
  std::vector<std::pair<std::string, std::string>> headers;  // of the last answer, in order
  std::string body;
};

enum class HttpFailure {
  BadAddress,
  OtherScheme,  // neither http nor https
  NoSuchHost,
  NotConnected,
  BadCertificate,
  TimedOut,
  TooLarge,   // a body or a head past its cap
  BadAnswer,  // no HTTP, or cut off
};

class HttpClient {
 public:
  virtual ~HttpClient() = default;
  virtual std::variant<HttpAnswer, HttpFailure> send(const HttpRequest& request) = 0;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_HTTP_H_
