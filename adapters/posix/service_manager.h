// Tells the service manager that started the program how far it is, by systemd's notify protocol:
// lines such as "READY=1" in one datagram to the socket that NOTIFY_SOCKET names.
#ifndef RK_ADAPTERS_POSIX_SERVICE_MANAGER_H_
#define RK_ADAPTERS_POSIX_SERVICE_MANAGER_H_

#include <string_view>

namespace rk::posix {

// False where no such manager listens or it could not be told, which stops nothing. Reads the
// environment, which nobody may change meanwhile.
bool tell_service_manager(std::string_view state);

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_SERVICE_MANAGER_H_
