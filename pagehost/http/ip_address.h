// IP addresses and networks of them, as settings and headers write them. For the settings and the
// front. Pure functions.
#ifndef RK_PAGEHOST_HTTP_IP_ADDRESS_H_
#define RK_PAGEHOST_HTTP_IP_ADDRESS_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rk::http {

bool is_ipv4_address(const std::string& text);
bool is_ipv6_address(const std::string& text);  // without brackets

// Addresses that begin with the same bits; those of version 4 as ::ffff:a.b.c.d, so that one and
// the same visitor is known whichever socket it comes in by.
struct IpNetwork {
  std::array<std::uint8_t, 16> start{};
  int bits = 128;
};

// "10.0.0.1", "10.0.0.0/8", "::1", "fd00::/8".
std::optional<IpNetwork> parse_network(std::string_view text);

// False for what is no address.
bool contains(const IpNetwork& network, std::string_view address);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_IP_ADDRESS_H_
