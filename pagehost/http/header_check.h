// What the front refuses before anything else reads a request: headers that two programs could
// read in two ways (and so smuggle a request past one of them), and ones beyond the limits.
//
// HeaderScan watches the bytes as they arrive, so that what can never become a request is refused
// at once; reject_reason() judges a header that is there as a whole. Pure; one connection's thread.
#ifndef RK_PAGEHOST_HTTP_HEADER_CHECK_H_
#define RK_PAGEHOST_HTTP_HEADER_CHECK_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace rk::http {

struct HeaderLimits {
  std::size_t line_bytes = 8192;     // the request line; past it 414
  std::size_t header_bytes = 32768;  // request line and all fields; past it 431
  std::size_t fields = 100;          // past it 431
};

struct Refusal {
  int status = 0;  // 0: nothing to refuse
  const char* reason = "";
  explicit operator bool() const noexcept { return status != 0; }
};

// Empty lines that clients send behind an earlier body and that are passed over.
inline constexpr std::size_t kMaxEmptyLines = 2;

class HeaderScan {
 public:
  explicit HeaderScan(const HeaderLimits& limits) : limits_(limits) {}

  enum class State : std::uint8_t { More, Complete, Refused };
  // All bytes received since the request's first; what an earlier call saw is not looked at again.
  State feed(std::string_view received);
  // Where the header begins (behind empty lines) and ends (behind its own empty line).
  std::size_t begin() const noexcept { return begin_; }
  std::size_t end() const noexcept { return at_; }
  Refusal refusal() const noexcept { return refusal_; }

 private:
  State refuse(int status, const char* reason);
  State end_line();

  HeaderLimits limits_;
  Refusal refusal_;
  std::size_t at_ = 0;
  std::size_t begin_ = 0;
  std::size_t line_ = 0;  // where the current line begins
  std::size_t lines_ = 0;
  bool carriage_return_ = false;
};

// Whether a text is a host with or without a port, as addresses write it; not empty.
bool is_host(std::string_view text);

// Of a header from its request line to its empty line, as HeaderScan found it.
Refusal reject_reason(std::string_view header);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_HEADER_CHECK_H_
