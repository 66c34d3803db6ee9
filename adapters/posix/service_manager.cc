#include "adapters/posix/service_manager.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace rk::posix {

bool tell_service_manager(std::string_view state) {
  const char* const named = std::getenv("NOTIFY_SOCKET");
  const std::string_view path = named == nullptr ? "" : named;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const bool known = path.starts_with('/') || path.starts_with('@');
  if (!known || path.size() >= sizeof address.sun_path) return false;
  std::memcpy(address.sun_path, path.data(), path.size());
  if (path.front() == '@') address.sun_path[0] = '\0';  // a name outside of any folder
  const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (socket < 0) return false;
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size());
  const ssize_t sent = ::sendto(socket, state.data(), state.size(), MSG_NOSIGNAL,
                                reinterpret_cast<const sockaddr*>(&address), length);
  ::close(socket);
  return sent == static_cast<ssize_t>(state.size());
}

}  // namespace rk::posix
