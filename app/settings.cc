#include "app/settings.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <limits>
#include <optional>
#include <set>

#include "value/text.h"

namespace rk::app {
namespace {

// What a value is written into; `site` is for relative paths.
struct Target {
  Settings& settings;
  const std::string& site;
};

// Throws std::invalid_argument with what is allowed.
using Setter = void (*)(Target target, std::string_view value);

struct Key {
  std::string_view section;
  std::string_view name;
  Setter set;
};

[[noreturn]] void refuse(const std::string& allowed) {
  throw std::invalid_argument(allowed);
}

template <typename Number>
Number number_between(std::string_view value, Number low, Number high) {
  Number number{};
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  if (error != std::errc() || end != value.data() + value.size() || number < low || number > high) {
    refuse("a number from " + std::to_string(low) + " to " + std::to_string(high));
  }
  return number;
}

std::string one_of(std::string_view value, std::initializer_list<std::string_view> choices) {
  std::string allowed;
  for (const std::string_view choice : choices) {
    if (equal_ignoring_case(value, choice)) return std::string(choice);
    allowed.append(allowed.empty() ? "" : ", ").append(choice);
  }
  refuse("one of " + allowed);
}

int code_page(std::string_view value, bool auto_allowed, bool utf8_allowed) {
  constexpr int kPages[] = {874,  932,  936,  949,  950,  1250, 1251,
                            1252, 1253, 1254, 1255, 1256, 1257, 1258};
  if (auto_allowed && equal_ignoring_case(value, "auto")) return kAuto;
  int page = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), page);
  const bool whole = error == std::errc() && end == value.data() + value.size();
  const bool known = std::find(std::begin(kPages), std::end(kPages), page) != std::end(kPages);
  if (whole && (known || (utf8_allowed && page == 65001))) return page;
  refuse(std::string("one of ") + (auto_allowed ? "auto, " : "") + (utf8_allowed ? "65001, " : "") +
         "874, 932, 936, 949, 950, 1250 to 1258");
}

std::string absolute(std::string_view value, const std::string& site) {
  return value.starts_with('/') ? std::string(value) : site + "/" + std::string(value);
}

std::vector<std::string> folders(std::string_view value, const std::string& site) {
  std::vector<std::string> found;
  while (!value.empty()) {
    const std::size_t end = std::min(value.find(';'), value.size());
    std::string_view one = value.substr(0, end);
    value.remove_prefix(std::min(end + 1, value.size()));
    while (one.starts_with(' ')) one.remove_prefix(1);
    while (one.ends_with(' ')) one.remove_suffix(1);
    if (!one.empty()) found.push_back(absolute(one, site));
  }
  return found;
}

std::vector<http::IpNetwork> networks(std::string_view value) {
  std::vector<http::IpNetwork> found;
  while (!value.empty()) {
    const std::size_t end = std::min(value.find(';'), value.size());
    std::string_view one = value.substr(0, end);
    value.remove_prefix(std::min(end + 1, value.size()));
    while (one.starts_with(' ')) one.remove_prefix(1);
    while (one.ends_with(' ')) one.remove_suffix(1);
    if (one.empty()) continue;
    const std::optional<http::IpNetwork> network = http::parse_network(one);
    if (!network) refuse("addresses or networks between \";\", such as 127.0.0.1; 10.0.0.0/8; ::1");
    found.push_back(*network);
  }
  return found;
}

std::string virtual_path(std::string_view value) {
  if (!value.empty() && value.front() != '/') refuse("a path of the site that begins with /");
  return std::string(value);
}

std::string base_address(std::string_view value) {
  if (!value.empty() && !value.starts_with("http://") && !value.starts_with("https://")) {
    refuse("an address that begins with http:// or https://, or nothing");
  }
  while (value.ends_with('/')) value.remove_suffix(1);  // paths begin with one
  return std::string(value);
}

ErrorViewers viewers(std::string_view value) {
  const std::string who = one_of(value, {"local", "all", "none"});
  if (who == "all") return ErrorViewers::All;
  return who == "none" ? ErrorViewers::None : ErrorViewers::Local;
}

constexpr int kYearSeconds = 31'536'000;
constexpr int kDaySeconds = 86'400;
// Header limits are held in memory for each connection.
constexpr int kMostHeaderBytes = 1 << 20;

// A body is held in memory while its page runs.
constexpr std::uint64_t kMostBodyBytes = std::uint64_t{1} << 30;

// A fetched body is held in memory twice, as bytes and as text.
constexpr std::size_t kMostFetchedBytes = std::size_t{1} << 28;

constexpr Key kKeys[] = {
    {"server", "listen",
     [](Target t, std::string_view v) { t.settings.server.listen = parse_listen(v); }},
    {"server", "page_seconds",
     [](Target t, std::string_view v) {
       t.settings.server.page_seconds = number_between(v, 1, kYearSeconds);
     }},
    {"server", "stop_seconds",
     [](Target t, std::string_view v) {
       t.settings.server.stop_seconds = number_between(v, 0, kDaySeconds);
     }},
    {"server", "session_samesite",
     [](Target t, std::string_view v) {
       t.settings.server.session_samesite = one_of(v, {"Lax", "Strict", "None"});
     }},
    {"server", "timezone",
     [](Target t, std::string_view v) { t.settings.server.timezone = std::string(v); }},
    {"server", "max_body_bytes",
     [](Target t, std::string_view v) {
       t.settings.server.max_body_bytes = number_between(v, std::uint64_t{0}, kMostBodyBytes);
     }},
    {"server", "max_pages",
     [](Target t, std::string_view v) {
       t.settings.server.max_pages = number_between(v, 1, 4096);
     }},
    {"server", "access_log",
     [](Target t, std::string_view v) {
       t.settings.server.access_log = v.empty() ? std::string() : absolute(v, t.site);
     }},
    {"server", "error_log",
     [](Target t, std::string_view v) {
       t.settings.server.error_log = v.empty() ? std::string() : absolute(v, t.site);
     }},
    {"server", "trusted_proxies",
     [](Target t, std::string_view v) { t.settings.server.trusted_proxies = networks(v); }},
    {"server", "show_errors",
     [](Target t, std::string_view v) { t.settings.server.show_errors = viewers(v); }},
    {"server", "not_found",
     [](Target t, std::string_view v) { t.settings.server.not_found = virtual_path(v); }},
    {"server", "header_seconds",
     [](Target t, std::string_view v) {
       t.settings.server.header_seconds = number_between(v, 1, kDaySeconds);
     }},
    {"server", "body_seconds",
     [](Target t, std::string_view v) {
       t.settings.server.body_seconds = number_between(v, 1, kDaySeconds);
     }},
    {"server", "idle_seconds",
     [](Target t, std::string_view v) {
       t.settings.server.idle_seconds = number_between(v, 1, kDaySeconds);
     }},
    {"server", "send_seconds",
     [](Target t, std::string_view v) {
       t.settings.server.send_seconds = number_between(v, 1, kDaySeconds);
     }},
    {"server", "max_line_bytes",
     [](Target t, std::string_view v) {
       t.settings.server.max_line_bytes = number_between(v, 64, kMostHeaderBytes);
     }},
    {"server", "max_header_bytes",
     [](Target t, std::string_view v) {
       t.settings.server.max_header_bytes = number_between(v, 256, kMostHeaderBytes);
     }},
    {"server", "max_headers",
     [](Target t, std::string_view v) {
       t.settings.server.max_headers = number_between(v, 1, 10'000);
     }},
    {"server", "max_connections",
     [](Target t, std::string_view v) {
       t.settings.server.max_connections = number_between(v, 1, 100'000);
     }},
    {"text", "page_codepage",
     [](Target t, std::string_view v) {
       t.settings.text.page_codepage = code_page(v, true, true);
     }},
    {"text", "template_codepage",
     [](Target t, std::string_view v) {
       t.settings.text.template_codepage = code_page(v, true, true);
     }},
    {"text", "ansi_codepage",
     [](Target t, std::string_view v) {
       t.settings.text.ansi_codepage = code_page(v, false, true);
     }},
    {"data", "folders",
     [](Target t, std::string_view v) { t.settings.data.folders = folders(v, t.site); }},
    {"data", "busy_ms",
     [](Target t, std::string_view v) {
       t.settings.data.busy_ms = number_between(v, 0, 1000 * kDaySeconds);
     }},
    {"log", "folder",
     [](Target t, std::string_view v) {
       if (v.empty()) refuse("a folder");
       t.settings.log.folder = absolute(v, t.site);
     }},
    {"endpoints", "availability",
     [](Target t, std::string_view v) { t.settings.endpoints.availability = base_address(v); }},
    {"endpoints", "hichina",
     [](Target t, std::string_view v) { t.settings.endpoints.hichina = base_address(v); }},
    {"endpoints", "xinnet",
     [](Target t, std::string_view v) { t.settings.endpoints.xinnet = base_address(v); }},
    {"endpoints", "filing",
     [](Target t, std::string_view v) { t.settings.endpoints.filing = base_address(v); }},
    {"endpoints", "flash_download",
     [](Target t, std::string_view v) { t.settings.endpoints.flash_download = std::string(v); }},
    {"endpoints", "flash_page",
     [](Target t, std::string_view v) { t.settings.endpoints.flash_page = std::string(v); }},
    {"fetch", "proxy",
     [](Target t, std::string_view v) { t.settings.fetch.proxy = base_address(v); }},
    {"fetch", "ca_file",
     [](Target t, std::string_view v) {
       t.settings.fetch.ca_file = v.empty() ? "" : absolute(v, t.site);
       if (!v.empty() && !std::ifstream(t.settings.fetch.ca_file))
         refuse("a file that can be read");
     }},
    {"fetch", "max_body_bytes",
     [](Target t, std::string_view v) {
       t.settings.fetch.max_body_bytes = number_between(v, std::size_t{1}, kMostFetchedBytes);
     }},
};

std::string_view trimmed(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

// Names for an error message, each once and in the table's order.
std::string section_names() {
  std::string names;
  std::string_view last;
  for (const Key& key : kKeys) {
    if (key.section == last) continue;
    names.append(names.empty() ? "" : ", ").append(key.section);
    last = key.section;
  }
  return names;
}

std::string key_names(std::string_view section) {
  std::string names;
  for (const Key& key : kKeys) {
    if (key.section == section) names.append(names.empty() ? "" : ", ").append(key.name);
  }
  return names;
}

class Reader {
 public:
  Reader(const std::string& file, const std::string& site) : file_(file), site_(site) {
    settings_.log.folder = default_log_folder(site);
  }

  void line(std::string_view text, int number) {
    number_ = number;
    text = trimmed(text);
    if (text.empty() || text.front() == ';' || text.front() == '#') return;
    if (text.front() == '[') {
      section(text);
    } else {
      key(text);
    }
  }

  Settings take() { return std::move(settings_); }

 private:
  [[noreturn]] void fail(const std::string& what) const {
    throw SettingsError(file_ + ":" + std::to_string(number_) + ": " + what);
  }

  void section(std::string_view text) {
    if (text.back() != ']') fail("a section's line ends with ]");
    section_ = lowered_ascii(trimmed(text.substr(1, text.size() - 2)));
    const bool known = std::any_of(std::begin(kKeys), std::end(kKeys),
                                   [&](const Key& one) { return one.section == section_; });
    if (!known) fail("unknown section [" + section_ + "]; sections are " + section_names());
  }

  void key(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) fail("expected [section] or key = value");
    const std::string name = lowered_ascii(trimmed(text.substr(0, equals)));
    if (section_.empty()) fail("key \"" + name + "\" stands before any [section]");
    const auto found = std::find_if(std::begin(kKeys), std::end(kKeys), [&](const Key& one) {
      return one.section == section_ && one.name == name;
    });
    if (found == std::end(kKeys)) {
      fail("unknown key \"" + name + "\" in [" + section_ + "]; its keys are " +
           key_names(section_));
    }
    if (!seen_.insert(section_ + "." + name).second) {
      fail("key \"" + name + "\" stands twice in [" + section_ + "]");
    }
    set(*found, trimmed(text.substr(equals + 1)));
  }

  void set(const Key& key, std::string_view value) {
    try {
      key.set({settings_, site_}, value);
    } catch (const std::invalid_argument& allowed) {
      fail(std::string(key.name) + " = \"" + std::string(value) + "\": allowed is " +
           allowed.what());
    }
  }

  const std::string& file_;
  const std::string& site_;
  Settings settings_;
  std::string section_;
  std::set<std::string> seen_;
  int number_ = 0;
};

std::uint16_t port_of(std::string_view text) {
  return static_cast<std::uint16_t>(number_between(text, 0, 65535));
}

}  // namespace

ListenAddress parse_listen(std::string_view text) {
  constexpr const char* kAllowed =
      "ADDRESS:PORT, such as 127.0.0.1:8080, [::1]:8080 or localhost:8080";
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon == 0) refuse(kAllowed);
  std::string host(text.substr(0, colon));
  const bool bracketed = host.front() == '[' && host.back() == ']';
  if (bracketed) host = host.substr(1, host.size() - 2);
  if (equal_ignoring_case(host, "localhost")) host = "127.0.0.1";
  const bool known = bracketed ? http::is_ipv6_address(host) : http::is_ipv4_address(host);
  if (!known) refuse(kAllowed);
  try {
    return {host, port_of(text.substr(colon + 1))};
  } catch (const std::invalid_argument&) {
    refuse(kAllowed);
  }
}

std::string display(const ListenAddress& address) {
  const bool v6 = address.host.find(':') != std::string::npos;
  return (v6 ? "[" + address.host + "]" : address.host) + ":" + std::to_string(address.port);
}

std::string default_log_folder(const std::string& site) {
  return site + "/log";
}

Settings parse_settings(std::string_view text, const std::string& file, const std::string& site) {
  Reader reader(file, site);
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  int number = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    reader.line(text.substr(0, end), ++number);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return reader.take();
}

Settings load_settings(const std::string& site) {
  const std::string file = site + "/" + kSettingsFile;
  std::ifstream in(file, std::ios::binary);
  if (!in) return parse_settings("", file, site);
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  return parse_settings(text, file, site);
}

}  // namespace rk::app
