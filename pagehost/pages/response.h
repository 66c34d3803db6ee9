// PageResponse: what a page has answered so far: status, headers, cookies and the body. Typed for
// the library; ResponseObject (response_object.h) gives it to scripts. Of the page's thread.
//
// Text comes in as UTF-8 and goes straight into the body; where the response has another code page
// it is converted when it must be bytes (a flush, the end, a change of code page, binary output).
#ifndef RK_PAGEHOST_PAGES_RESPONSE_H_
#define RK_PAGEHOST_PAGES_RESPONSE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pagehost/pages/page_request.h"
#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/page.h"
#include "value/value.h"

namespace rk::pagehost {

// A page that buffers more ends as out of memory: far beyond any page a visitor would wait for.
inline constexpr std::size_t kMaxBufferedBytes = std::size_t{64} << 20;

struct ResponseCookie {
  std::string name;
  std::string value;                                      // where it has no keys
  std::vector<std::pair<std::string, std::string>> keys;  // name -> value
  std::optional<double> expires;                          // local Date
  std::string path = "/";
  std::string domain;
  bool secure = false;
};

// The charset name of a code page, such as "utf-8".
std::string charset_name(int code_page);

class PageResponse final : public platform::Response {
 public:
  PageResponse(AnswerSink* sink, const platform::CodePages& code_pages,
               const platform::Clock& clock, int code_page)
      : sink_(sink), code_pages_(code_pages), clock_(clock), code_page_(code_page) {}

  void write(std::string_view utf8) override;
  [[noreturn]] void end() override;
  [[noreturn]] void redirect(std::string_view address) override;

  void write(const Value& value);  // Null writes nothing; raises 13 for an array
  void write_bytes(std::string_view bytes);

  bool buffered() const { return buffered_; }
  void set_buffered(bool buffered);
  void clear();  // raises where nothing is buffered
  void flush();
  bool connected() const { return sink_ == nullptr || sink_->connected(); }
  bool begun() const { return begun_; }

  std::int32_t lcid() const { return lcid_; }
  void set_lcid(std::int32_t lcid) { lcid_ = lcid; }
  int code_page() const { return code_page_; }
  void set_code_page(int code_page);  // 5 for one that is not known
  std::string status() const { return std::to_string(status_) + " " + reason_; }
  void set_status(std::string_view line);  // "404 Not Found"; raises 5 where it is none
  int status_code() const { return status_; }
  const std::string& content_type() const { return content_type_; }
  void set_content_type(std::string type);
  const std::string& charset() const { return charset_; }
  void set_charset(std::string name);
  const std::string& cache_control() const { return cache_control_; }
  void set_cache_control(std::string value);
  void set_expires(double local_date);
  std::optional<double> expires() const { return expires_; }
  void add_header(std::string name, std::string value);
  ResponseCookie& cookie(std::string_view name);
  const std::vector<ResponseCookie>& cookies() const { return cookies_; }
  const ResponseCookie* find_cookie(std::string_view name) const;  // null where not set
  // What the visitor will send back of it: encoded, a query string where it has keys.
  std::string cookie_value(const ResponseCookie& cookie) const;
  // Grows whenever a cookie may have changed.
  std::size_t cookie_changes() const { return cookie_changes_; }
  void append_to_log(std::string_view text) { log_note_ += text; }
  // A cookie of the host's own, in front of the page's: the whole Set-Cookie value.
  void set_session_cookie(std::string header_value) { session_cookie_ = std::move(header_value); }

  // Drops everything and answers this instead; what was sent already stays sent.
  void replace(int status, std::string reason, std::string_view html_utf8);
  // The rest of the answer; nothing may be written afterwards.
  PageAnswer take();

 private:
  void must_not_have_begun() const;
  void settle();  // makes bytes of the text at the body's end
  void room_for(std::size_t bytes) const;
  void after_write() {
    if (!buffered_) flush();
  }
  PageAnswer head() const;
  std::string cookie_header(const ResponseCookie& cookie) const;

  AnswerSink* sink_;
  const platform::CodePages& code_pages_;
  const platform::Clock& clock_;
  int code_page_;
  std::int32_t lcid_ = 2052;  // kept and answered; changes no text
  bool buffered_ = true;
  bool begun_ = false;
  std::string flushed_;  // without a sink: what a visitor would have by now; goes out in the end
  std::string body_;
  std::size_t settled_ = 0;  // bytes of body_ that are final; text behind them
  int status_ = 200;
  std::string reason_ = "OK";
  std::string content_type_ = "text/html";
  std::string charset_;
  std::string cache_control_ = "private";
  std::optional<double> expires_;  // local Date
  Headers headers_;
  std::vector<ResponseCookie> cookies_;
  std::size_t cookie_changes_ = 0;
  std::string session_cookie_;
  std::string log_note_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_RESPONSE_H_
