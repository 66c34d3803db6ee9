#include "pagehost/http/wire.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <cerrno>

namespace rk::http {

std::optional<std::size_t> Wire::send_now(std::string_view first, std::string_view second) const {
  iovec pieces[2] = {{const_cast<char*>(first.data()), first.size()},
                     {const_cast<char*>(second.data()), second.size()}};
  msghdr message{};
  message.msg_iov = pieces;
  message.msg_iovlen = second.empty() ? 1 : 2;
  while (true) {
    const ssize_t count = ::sendmsg(socket_, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno == EAGAIN) return 0;
    if (errno != EINTR) return std::nullopt;
  }
}

void Wire::await_room(std::chrono::milliseconds patience) const {
  pollfd writable{socket_, POLLOUT, 0};
  ::poll(&writable, 1, static_cast<int>(patience.count()));
}

bool Wire::has_bytes() const {
  char byte = 0;
  return ::recv(socket_, &byte, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

bool Wire::is_connected() const {
  char byte = 0;
  const ssize_t count = ::recv(socket_, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

}  // namespace rk::http
