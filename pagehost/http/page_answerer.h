// PageAnswerer: sends a page's answer from the page's own thread, at its end or, where the page
// flushes, piece by piece (chunked, or to the end of the connection for HTTP/1.0).
//
// The Content-Length that a page sets itself counts where it flushes: such an answer needs no
// chunks, and is cut off or ends with its connection where the page keeps the promise badly.
//
// A slow visitor holds a page that flushes only where the page runs far ahead of him, and no longer
// than the page may run; the rest of a page that is over never waits here.
//
// Of one exchange and one thread at a time.
#ifndef RK_PAGEHOST_HTTP_PAGE_ANSWERER_H_
#define RK_PAGEHOST_HTTP_PAGE_ANSWERER_H_

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "pagehost/http/answer_head.h"
#include "pagehost/http/wire.h"
#include "pagehost/pages/page_request.h"

namespace rk::http {

struct ExchangeTerms {
  bool keep_alive = true;
  bool old_version = false;  // HTTP/1.0
  bool head_only = false;
  std::chrono::milliseconds send_time{60000};
};

class PageAnswerer final : public pagehost::AnswerSink {
 public:
  // `date` answers the Date field.
  PageAnswerer(Wire wire, const ExchangeTerms& terms, std::function<std::string()> date)
      : wire_(wire), terms_(terms), date_(std::move(date)) {}

  // While the page runs. write() may throw what the check of wait_while throws.
  void wait_while(std::function<void()> check) override { check_ = std::move(check); }
  void begin(const pagehost::PageAnswer& head) override;
  void write(std::string_view bytes) override;
  bool connected() override { return !gone_ && wire_.is_connected(); }

  // At its end. What the socket does not take at once is left over.
  void finish(pagehost::PageAnswer answer);
  // The same, but all of it is left over.
  void finish_unsent(pagehost::PageAnswer answer);
  // The page failed: what was begun must not look whole.
  void break_off() {
    gone_ = true;
    left_over_.clear();
  }

  bool began() const noexcept { return began_; }
  bool gone() const noexcept { return gone_; }
  bool keeps_alive() const noexcept { return terms_.keep_alive; }
  int status() const noexcept { return status_; }
  std::uint64_t body_bytes() const noexcept { return body_bytes_; }
  std::string take_left_over() { return std::move(left_over_); }

 private:
  std::string framed(std::string_view bytes);
  void finish_begun(std::string_view rest);
  std::string finished_head(pagehost::PageAnswer& answer);
  void send(std::string_view bytes);
  void send_left_over();
  void wait_for_visitor();
  std::string head_of(const pagehost::PageAnswer& answer, HeadFraming framing) const;

  Wire wire_;
  ExchangeTerms terms_;
  std::function<std::string()> date_;
  std::function<void()> check_;
  bool began_ = false;
  bool chunked_ = false;
  std::optional<std::uint64_t> promised_;  // of a streamed answer: what its Content-Length leaves
  bool gone_ = false;
  int status_ = 0;
  std::uint64_t body_bytes_ = 0;
  std::string left_over_;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_PAGE_ANSWERER_H_
