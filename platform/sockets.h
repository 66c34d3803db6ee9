// TCP as a control-server client uses it: one connection, one message, the first arrival.
// Belongs to one page's thread; a wait ends with the page (PageEnd passes through).
#ifndef RK_PLATFORM_SOCKETS_H_
#define RK_PLATFORM_SOCKETS_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace rk::platform {

class Socket {
 public:
  virtual ~Socket() = default;  // closes

  // Begins to connect; what fails later shows only as no connection. Raises what the call itself
  // refuses (a port out of range).
  virtual void connect(std::string_view host, std::int16_t port) = 0;
  // Waits at most so long for the connection, sleeping; whether it stands.
  virtual bool wait_connected(std::chrono::milliseconds longest) = 0;
  // Raises where the connection does not stand.
  virtual void send(std::string_view bytes) = 0;
  // Waits at most so long for data, sleeping; the bytes that are there, `limit` at most, and
  // nothing where none came. A lost connection brings none and takes the whole wait.
  virtual std::optional<std::string> receive(std::size_t limit,
                                             std::chrono::milliseconds longest) = 0;
  virtual void close() = 0;
};

class Sockets {
 public:
  virtual ~Sockets() = default;
  virtual std::unique_ptr<Socket> socket() = 0;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_SOCKETS_H_
