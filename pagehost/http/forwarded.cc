#include "pagehost/http/forwarded.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

#include "pagehost/http/header_check.h"
#include "value/text.h"

namespace rk::http {
namespace {

constexpr std::uint16_t kHttpPort = 80;
constexpr std::uint16_t kHttpsPort = 443;

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

// The elements of a header's lists, all fields of the name as one.
std::vector<std::string_view> elements(const pagehost::PageRequest& request,
                                       std::string_view name) {
  std::vector<std::string_view> found;
  for (const auto& [key, value] : request.headers) {
    if (!equal_ignoring_case(key, name)) continue;
    std::string_view list = value;
    while (true) {
      const std::size_t end = std::min(list.find(','), list.size());
      found.push_back(trimmed(list.substr(0, end)));
      if (end == list.size()) break;
      list.remove_prefix(end + 1);
    }
  }
  return found;
}

// What the proxy that is next to us said; earlier ones may be the visitor's own.
std::string_view last_element(const pagehost::PageRequest& request, std::string_view name) {
  const auto all = elements(request, name);
  return all.empty() ? std::string_view() : all.back();
}

bool is_any(const std::vector<IpNetwork>& proxies, std::string_view address) {
  return std::any_of(proxies.begin(), proxies.end(),
                     [&](const IpNetwork& network) { return contains(network, address); });
}

// Some proxies write the port behind the address: 192.0.2.1:4711, [2001:db8::1]:4711.
std::string_view without_port(std::string_view text) {
  if (text.starts_with('[')) return text.substr(1, text.find(']') - 1);
  const std::size_t colon = text.find(':');
  const bool one = colon != std::string_view::npos && colon == text.rfind(':');
  return one ? text.substr(0, colon) : text;
}

bool is_address(std::string_view text) {
  const std::string address(text);
  return is_ipv4_address(address) || is_ipv6_address(address);
}

// Empty where no address was told.
std::string visitor_of(const pagehost::PageRequest& request,
                       const std::vector<IpNetwork>& proxies) {
  const auto told = elements(request, "x-forwarded-for");
  std::string_view visitor;
  for (auto one = told.rbegin(); one != told.rend(); ++one) {
    const std::string_view address = without_port(*one);
    if (!is_address(address)) break;
    visitor = address;
    if (!is_any(proxies, address)) break;
  }
  return std::string(visitor);
}

void set_host(pagehost::PageRequest& request, std::string_view host) {
  for (auto& [name, value] : request.headers) {
    if (equal_ignoring_case(name, "host")) value = std::string(host);
  }
}

// The port in the visitor's address bar.
std::uint16_t port_of(const pagehost::PageRequest& request) {
  const std::string_view host = request.header("host");
  const std::size_t bracket = host.find(']');
  const std::size_t colon = host.find(':', bracket == std::string_view::npos ? 0 : bracket);
  std::uint16_t port = request.secure ? kHttpsPort : kHttpPort;
  if (colon != std::string_view::npos) {
    std::from_chars(host.data() + colon + 1, host.data() + host.size(), port);
  }
  return port;
}

}  // namespace

void believe_proxy(pagehost::PageRequest& request, const std::vector<IpNetwork>& proxies) {
  if (proxies.empty() || !is_any(proxies, request.remote_address)) return;
  std::string visitor = visitor_of(request, proxies);
  if (!visitor.empty()) {
    request.remote_address = std::move(visitor);
    request.remote_port = 0;  // the one we know is the proxy's
  }
  const std::string_view scheme = last_element(request, "x-forwarded-proto");
  const std::string host(last_element(request, "x-forwarded-host"));
  const bool scheme_told =
      equal_ignoring_case(scheme, "https") || equal_ignoring_case(scheme, "http");
  if (scheme_told) request.secure = equal_ignoring_case(scheme, "https");
  if (is_host(host)) set_host(request, host);
  if (scheme_told || is_host(host)) request.local_port = port_of(request);
}

}  // namespace rk::http
