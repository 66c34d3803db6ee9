// Tells IP addresses from other texts. For the settings and the front.
#ifndef RK_PAGEHOST_HTTP_IP_ADDRESS_H_
#define RK_PAGEHOST_HTTP_IP_ADDRESS_H_

#include <string>

namespace rk::http {

bool is_ipv4_address(const std::string& text);
bool is_ipv6_address(const std::string& text);  // without brackets

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_IP_ADDRESS_H_
