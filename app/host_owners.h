// Tells whose storefront a host name is, for the log: a name that neither the master site nor an
// agent owns is shown the master's storefront, and its owner should learn of it.
//
// Several threads may call.
#ifndef RK_APP_HOST_OWNERS_H_
#define RK_APP_HOST_OWNERS_H_

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_set>

#include "pagehost/pages/log.h"
#include "platform/database.h"

namespace rk::app {

// Whether the storefront's database names the host as the master's or an agent's. Raises what the
// database does.
bool is_owned_host(std::string_view host, platform::Connection& connection);

class HostOwners {
 public:
  // Names that strangers make up must not fill the memory or the log.
  static constexpr std::size_t kMaxHosts = 1000;

  explicit HostOwners(pagehost::Log& log) : log_(log) {}

  // Looks a host up and names it in the log if it is not owned, the first time that it is seen. A
  // database that cannot be asked is left to the page, which meets the same error.
  void note(std::string_view host, platform::Database& database,
            std::string_view connection_string);

 private:
  pagehost::Log& log_;
  std::mutex mutex_;
  std::unordered_set<std::string> seen_;
};

}  // namespace rk::app

#endif  // RK_APP_HOST_OWNERS_H_
