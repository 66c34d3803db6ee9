// RequestReader: from the bytes of a connection to its requests, one after another, however the
// bytes are cut. One connection's thread.
#ifndef RK_PAGEHOST_HTTP_REQUEST_READER_H_
#define RK_PAGEHOST_HTTP_REQUEST_READER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "pagehost/http/header_check.h"
#include "pagehost/pages/page_request.h"

namespace rk::http {

// What was read of a request; `page` lacks path and query, which `target` holds as sent.
struct ReadRequest {
  pagehost::PageRequest page;
  std::string line;  // the request line, for the access log
  std::string target;
  bool keep_alive = true;
  bool old_version = false;  // HTTP/1.0
};

class RequestReader {
 public:
  RequestReader(const HeaderLimits& limits, std::uint64_t max_body_bytes);
  ~RequestReader();

  // Idle: no byte of a request yet. Complete: request() is whole. Refused: for good.
  enum class State : std::uint8_t { Idle, Header, Body, Complete, Refused };
  State state() const noexcept { return state_; }

  void append(std::string_view bytes) { received_.append(bytes); }
  // Reads on in what was appended; answers the new state.
  State proceed();
  // After Complete: on to the next request, whose first bytes may be there already.
  void restart();

  // Of Body: the visitor waits for "100 Continue" before it sends the body.
  bool waits_for_continue() const noexcept { return waits_for_continue_; }
  ReadRequest& request() noexcept { return request_; }
  const ReadRequest& request() const noexcept { return request_; }
  int refused_status() const noexcept { return refused_status_; }
  // Whether bytes behind the request were received.
  bool has_more() const noexcept { return used_ < received_.size(); }

 private:
  struct Message;

  std::string_view pending() const { return std::string_view(received_).substr(used_); }
  State refuse(int status);
  State read_header();
  State begin_message(std::string_view header);
  State read_body();
  int read_chunks();
  int read_counted();
  void take_header(std::string_view header);

  HeaderLimits limits_;
  std::uint64_t max_body_bytes_;
  State state_ = State::Idle;
  std::string received_;
  std::size_t used_ = 0;  // of received_: what was read for good
  HeaderScan scan_;
  std::unique_ptr<Message> message_;
  ReadRequest request_;
  bool waits_for_continue_ = false;
  int refused_status_ = 0;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_REQUEST_READER_H_
