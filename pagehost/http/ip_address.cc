#include "pagehost/http/ip_address.h"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>

namespace rk::http {
namespace {

constexpr int kAllBits = 128;
constexpr int kVersion4Bits = 32;
using Bytes = std::array<std::uint8_t, 16>;

std::optional<Bytes> bytes_of(std::string_view text) {
  const std::string address(text);
  Bytes bytes{};
  if (::inet_pton(AF_INET6, address.c_str(), bytes.data()) == 1) return bytes;
  bytes[10] = 0xFF;
  bytes[11] = 0xFF;
  if (::inet_pton(AF_INET, address.c_str(), bytes.data() + 12) == 1) return bytes;
  return std::nullopt;
}

}  // namespace

bool is_ipv4_address(const std::string& text) {
  in_addr address{};
  return inet_pton(AF_INET, text.c_str(), &address) == 1;
}

bool is_ipv6_address(const std::string& text) {
  in6_addr address{};
  return inet_pton(AF_INET6, text.c_str(), &address) == 1;
}

std::optional<IpNetwork> parse_network(std::string_view text) {
  const std::size_t slash = text.find('/');
  const std::string_view address = text.substr(0, slash);
  const std::optional<Bytes> start = bytes_of(address);
  if (!start) return std::nullopt;
  IpNetwork network{*start, kAllBits};
  if (slash == std::string_view::npos) return network;
  const bool version4 = address.find(':') == std::string_view::npos;
  const int most = version4 ? kVersion4Bits : kAllBits;
  const std::string_view digits = text.substr(slash + 1);
  int bits = -1;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), bits);
  const bool whole = error == std::errc() && end == digits.data() + digits.size();
  if (!whole || bits < 0 || bits > most) return std::nullopt;
  network.bits = bits + kAllBits - most;
  return network;
}

bool contains(const IpNetwork& network, std::string_view address) {
  const std::optional<Bytes> bytes = bytes_of(address);
  if (!bytes) return false;
  const int whole = network.bits / 8;
  if (!std::equal(bytes->begin(), bytes->begin() + whole, network.start.begin())) return false;
  const int rest = network.bits % 8;
  if (rest == 0) return true;
  const auto at = static_cast<std::size_t>(whole);
  return ((*bytes)[at] ^ network.start[at]) >> (8 - rest) == 0;
}

}  // namespace rk::http
