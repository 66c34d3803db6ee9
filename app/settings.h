// Settings: what rkclient.ini of a site folder says, with a default for everything.
//
// The file is an INI file in UTF-8: [section], key = value, ";" or "#" begins a line of comment.
// Sections and keys have no letter case. Plain data, read once before any thread starts.
#ifndef RK_APP_SETTINGS_H_
#define RK_APP_SETTINGS_H_

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/http/ip_address.h"

namespace rk::app {

inline constexpr const char* kSettingsFile = "rkclient.ini";
inline constexpr int kAuto = 0;  // of a code page

struct ListenAddress {
  std::string host = "127.0.0.1";  // an IP address, without brackets
  std::uint16_t port = 8080;       // 0: any free one
};

enum class ErrorViewers : std::uint8_t { Local, All, None };

struct ServerSettings {
  ListenAddress listen;
  int page_seconds = 180;
  int stop_seconds = 30;
  std::string session_samesite = "Lax";
  std::string timezone;  // empty: the system's
  std::uint64_t max_body_bytes = 1048576;
  int max_pages = 256;
  std::string access_log;  // empty: none
  std::string error_log;   // empty: standard error
  std::vector<http::IpNetwork> trusted_proxies;
  ErrorViewers show_errors = ErrorViewers::Local;
  std::string not_found;  // virtual path; empty: none
  int header_seconds = 15;
  int body_seconds = 60;
  int idle_seconds = 60;
  int send_seconds = 60;
  int max_line_bytes = 8192;
  int max_header_bytes = 32768;
  int max_headers = 100;
  int max_connections = 4096;
};

struct TextSettings {
  int page_codepage = kAuto;
  int template_codepage = kAuto;
  int ansi_codepage = 936;
};

struct DataSettings {
  std::vector<std::string> folders;  // absolute
  int busy_ms = 5000;
};

struct LogSettings {
  std::string folder;  // absolute; SITE/log where nothing is said
};

struct EndpointSettings {
  std::string availability;
  std::string hichina;
  std::string xinnet;
  std::string filing;
  // Where the maker of the slideshow's player had it, for browsers that still know it.
  std::string flash_download =
      "https://download.macromedia.com/pub/shockwave/cabs/flash/swflash.cab";
  std::string flash_page = "https://www.adobe.com/go/getflashplayer";
};

struct FetchSettings {
  std::string proxy;                        // empty: none
  std::string ca_file;                      // absolute; empty: the system's authorities alone
  std::size_t max_body_bytes = 16'777'216;  // past it a fetch reads as failed
};

struct Settings {
  ServerSettings server;
  TextSettings text;
  DataSettings data;
  LogSettings log;
  EndpointSettings endpoints;
  FetchSettings fetch;
};

// Its text is "FILE:LINE: " and what is wrong, with what is allowed.
class SettingsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// `file` is the name that errors give, `site` the absolute folder that relative paths are taken
// from. Throws SettingsError.
Settings parse_settings(std::string_view text, const std::string& file, const std::string& site);

// Where a site's daily log files lie while no setting says otherwise.
std::string default_log_folder(const std::string& site);

// The settings of a site; the defaults where it has no file. Throws SettingsError.
Settings load_settings(const std::string& site);

// "ADDR:PORT", "[IPv6]:PORT", "localhost:PORT". Throws std::invalid_argument with what is allowed.
ListenAddress parse_listen(std::string_view text);

// "ADDR:PORT" as an address bar takes it.
std::string display(const ListenAddress& address);

}  // namespace rk::app

#endif  // RK_APP_SETTINGS_H_
