// What a reverse proxy tells of the visitor behind it. Believed only from proxies that the
// settings name: anyone else could write himself another address, or the site another name.
// Pure; one connection's thread.
#ifndef RK_PAGEHOST_HTTP_FORWARDED_H_
#define RK_PAGEHOST_HTTP_FORWARDED_H_

#include <vector>

#include "pagehost/http/ip_address.h"
#include "pagehost/pages/page_request.h"

namespace rk::http {

// Where the request came from one of `proxies`, the visitor's address, whether it came by https,
// and the host that it asked for become those of X-Forwarded-For, -Proto and -Host, and the port
// the one that the visitor sees. Of X-Forwarded-For the last address that is no proxy's counts:
// what stands before it is the visitor's own word. A value that is none changes nothing.
void believe_proxy(pagehost::PageRequest& request, const std::vector<IpNetwork>& proxies);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_FORWARDED_H_
