// TCP sockets for the control-server client, over IPv4 and IPv6. Belongs to one page's thread.
//
// Waits sleep in poll() in slices and call `still_running` between them, which throws where the
// page has ended. A name is resolved on a thread of its own, so that a name server that does not
// answer cannot hold a page longer than its wait.
#ifndef RK_ADAPTERS_POSIX_SOCKETS_H_
#define RK_ADAPTERS_POSIX_SOCKETS_H_

#include <functional>
#include <memory>

#include "platform/sockets.h"

namespace rk::posix {

class Sockets final : public platform::Sockets {
 public:
  explicit Sockets(std::function<void()> still_running)
      : still_running_(std::move(still_running)) {}

  std::unique_ptr<platform::Socket> socket() override;

 private:
  std::function<void()> still_running_;
};

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_SOCKETS_H_
