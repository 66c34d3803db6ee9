// Connection: one visitor's connection, from its first byte to its end.
//
// It belongs to one thread at a time: that of the front's event loop, but from the start of a page
// to the wait for the next request, when the page's thread has it and writes to the socket itself.
// deadline() and break_off() are the event loop's to call at any time.
#ifndef RK_PAGEHOST_HTTP_CONNECTION_H_
#define RK_PAGEHOST_HTTP_CONNECTION_H_

#include <atomic>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>

#include "pagehost/http/access_log.h"
#include "pagehost/http/front.h"
#include "pagehost/http/outbox.h"
#include "pagehost/http/page_pool.h"

namespace boost::asio {
class io_context;
}

namespace rk::http {

// The Date field, made anew once a second. Any thread.
class DateField {
 public:
  std::string now();

 private:
  std::mutex mutex_;
  std::time_t second_ = 0;
  std::string text_;
};

// Names requests, so that the log's lines of one are found together: no two the same while the
// process runs, and hardly two of different runs. Any thread.
class RequestIds {
 public:
  RequestIds();
  std::string next();

 private:
  std::string start_;  // of this run
  std::atomic<std::uint64_t> last_{0};
};

class Connection {
 public:
  virtual ~Connection() = default;
  virtual void start() = 0;
  virtual std::chrono::steady_clock::time_point deadline() const = 0;
  virtual void meet_deadline() = 0;
  // Goes on behind the end of a page whose thread left the rest to the event loop.
  virtual void conclude_page() = 0;
  // Cuts the visitor off; whatever the connection is at ends by that.
  virtual void break_off() = 0;
};

// What all connections of a front share.
struct Hub {
  Hub(boost::asio::io_context& loop, FrontOptions given, FrontParts given_parts)
      : io(loop), options(std::move(given)), parts(given_parts), access_log(options.access_log) {}

  boost::asio::io_context& io;
  FrontOptions options;
  FrontParts parts;
  AccessLog access_log;
  DateField date;
  RequestIds request_ids;
  std::unordered_set<std::shared_ptr<Connection>> connections;  // of the event loop's thread
  std::function<void()> on_closed;                              // called there, a connection less
  std::atomic<bool> stopping{false};
  std::chrono::steady_clock::time_point stopped_at;  // set before `stopping`
  Outbox outbox;
  std::unique_ptr<PagePool> pool;
};

// Takes over an accepted socket.
std::shared_ptr<Connection> make_connection(Hub& hub, int socket, bool v6);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_CONNECTION_H_
