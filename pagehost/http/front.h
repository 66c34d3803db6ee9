// Front: serves a site's pages and files over HTTP/1.1.
//
// One thread (that of run()) holds all connections; pages run on a pool of their own and send
// their answers themselves, so that a slow page or a slow visitor holds nobody else up. open(),
// then run() on the same thread; stop() by any.
#ifndef RK_PAGEHOST_HTTP_FRONT_H_
#define RK_PAGEHOST_HTTP_FRONT_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "pagehost/http/header_check.h"
#include "pagehost/http/ip_address.h"
#include "pagehost/http/page_pool.h"
#include "pagehost/http/pages.h"
#include "pagehost/http/route.h"
#include "pagehost/http/site_file.h"
#include "pagehost/pages/log.h"
#include "platform/code_page.h"
#include "platform/files.h"

namespace rk::http {

struct FrontOptions {
  std::string host = "127.0.0.1";  // an IP address
  std::uint16_t port = 0;          // 0: any free one
  RouteRules rules;
  HeaderLimits header;
  std::uint64_t max_body_bytes = 1048576;
  std::size_t max_connections = 4096;
  std::chrono::milliseconds header_time{15000};    // for a whole header, from its first byte
  std::chrono::milliseconds body_time{60000};      // for a whole body
  std::chrono::milliseconds idle_time{60000};      // between two requests of a connection
  std::chrono::milliseconds send_time{60000};      // without a byte taken by the visitor
  std::chrono::milliseconds stop_time{30000};      // for running pages, after stop()
  std::chrono::milliseconds session_sweep{60000};  // how often sessions are looked through
  PagePoolOptions pool;
  std::string access_log;          // a file; empty: none
  std::vector<IpNetwork> proxies;  // whose word on visitors is believed
  bool own_signals = false;        // SIGTERM and SIGINT stop, SIGHUP reopens the access log
  // Called on the thread of run(); may be empty.
  std::function<void()> on_stop;    // once, when the stop begins
  std::function<void()> on_hangup;  // at each SIGHUP
};

// Referred to, not owned; all outlive the front.
struct FrontParts {
  Pages* pages = nullptr;
  const platform::Files* files = nullptr;
  const SiteFiles* site_files = nullptr;
  const platform::CodePages* code_pages = nullptr;
  pagehost::Log* log = nullptr;
};

// The address cannot be served at; its text says why.
class FrontError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Front {
 public:
  Front(FrontOptions options, FrontParts parts);
  ~Front();
  Front(const Front&) = delete;
  Front& operator=(const Front&) = delete;

  // Listens; answers the real port. Throws FrontError, or std::system_error for the access log.
  std::uint16_t open();
  // Serves until stop(): then no new connection is taken, what runs is answered within stop_time
  // or ends as by its page's time, and this returns.
  void run();
  void stop();

 private:
  class Server;
  std::unique_ptr<Server> server_;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_FRONT_H_
