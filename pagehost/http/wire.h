// Writing to a connection's socket without the event loop. Any one thread at a time; the socket
// does not wait by itself (non-blocking) and stays open while this is used.
#ifndef RK_PAGEHOST_HTTP_WIRE_H_
#define RK_PAGEHOST_HTTP_WIRE_H_

#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

namespace rk::http {

class Wire {
 public:
  explicit Wire(int socket) noexcept : socket_(socket) {}

  // How much of the two, one behind the other, the socket takes at once; nothing where the visitor
  // is gone.
  std::optional<std::size_t> send_now(std::string_view first, std::string_view second = {}) const;

  // Waits until the socket takes more, or so long.
  void await_room(std::chrono::milliseconds patience) const;

  // Whether bytes of the visitor wait to be read.
  bool has_bytes() const;

  // Whether the visitor's end is still open, as far as it told.
  bool is_connected() const;

 private:
  int socket_;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_WIRE_H_
