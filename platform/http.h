// Fetching from outside over HTTP, for the library's web services. Belongs to one page's thread.
#ifndef RK_PLATFORM_HTTP_H_
#define RK_PLATFORM_HTTP_H_

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

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

}  // namespace rk::platform

#endif  // RK_PLATFORM_HTTP_H_
