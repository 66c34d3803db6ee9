// A request as the front read it, and the answer as a page made it. Plain data.
#ifndef RK_PAGEHOST_PAGES_PAGE_REQUEST_H_
#define RK_PAGEHOST_PAGES_PAGE_REQUEST_H_

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rk::pagehost {

using Headers = std::vector<std::pair<std::string, std::string>>;

struct PageRequest {
  std::string id;  // names the request in the log; empty: nothing does
  std::string method = "GET";
  // Virtual path of the page, percent-decoded once, beginning with "/", in the letter case of the
  // request: the default document's path where a folder was asked for.
  std::string path = "/";
  // The whole path that was asked for, where something stands behind the page's own: of
  // "/show.asp/7.html" the page is "/show.asp". Else empty.
  std::string path_info;
  std::string query;  // as sent, without "?"
  // Path and query in the bytes of the request, where no page was found for it; may be empty.
  std::string missed_address;
  std::string protocol = "HTTP/1.1";
  Headers headers;  // as sent, in order; names in any letter case
  std::string body;
  bool secure = false;  // came by https
  std::string remote_address = "127.0.0.1";
  std::uint16_t remote_port = 0;
  std::string local_address = "127.0.0.1";
  std::uint16_t local_port = 80;

  const std::string& asked_path() const { return path_info.empty() ? path : path_info; }
  // The first header of this name (any letter case), or empty.
  std::string_view header(std::string_view name) const;
};

struct PageAnswer {
  int status = 200;
  std::string reason = "OK";
  // Without Content-Length, Date, Connection and Transfer-Encoding, which are the front's.
  Headers headers;
  std::string body;  // bytes, in the response's code page
  // Status, headers and the first of the body went to the AnswerSink already; `body` is the rest.
  bool streamed = false;
  std::string log_note;  // Response.AppendToLog, for the access log's line
};

// Takes what a page sends before its end (Response.Flush, or a page without a buffer). Called on
// the page's thread.
class AnswerSink {
 public:
  virtual ~AnswerSink() = default;
  // `check` throws once the page must end: a write that waits for the visitor asks it now and
  // then. Before the page runs.
  virtual void wait_while(std::function<void()> check) = 0;
  // Once, before the first write: status and headers (the body there is empty).
  virtual void begin(const PageAnswer& head) = 0;
  virtual void write(std::string_view bytes) = 0;
  // Response.IsClientConnected.
  virtual bool connected() = 0;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_REQUEST_H_
