#include "pagehost/http/ip_address.h"

#include <arpa/inet.h>

namespace rk::http {

bool is_ipv4_address(const std::string& text) {
  in_addr address{};
  return inet_pton(AF_INET, text.c_str(), &address) == 1;
}

bool is_ipv6_address(const std::string& text) {
  in6_addr address{};
  return inet_pton(AF_INET6, text.c_str(), &address) == 1;
}

}  // namespace rk::http
