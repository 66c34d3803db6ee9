#include "pagehost/pages/response.h"

#include <charconv>

#include "pagehost/pages/http_dates.h"
#include "pagehost/pages/url_text.h"
#include "value/conversions.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr KnownError kHeadersSent{
    errors::kSqlFailure,
    "The HTTP headers are already written to the client browser. Any HTTP header modifications "
    "must be made before writing page content."};
constexpr KnownError kBufferOff{errors::kSqlFailure,
                                "Buffering must be on for this use of the response"};

// Halves of pairs, each in three bytes.
bool is_first_half(std::string_view bytes) {
  return bytes.size() == 3 && bytes[0] == '\xED' && (bytes[1] & '\xF0') == '\xA0';
}
bool is_second_half(std::string_view bytes) {
  return bytes.size() >= 3 && bytes[0] == '\xED' && (bytes[1] & '\xF0') == '\xB0';
}

// A half without its other half is no character.
void replace_lone_halves(std::string& text, std::size_t from) {
  for (auto at = text.find('\xED', from); at != std::string::npos; at = text.find('\xED', at + 1)) {
    if (at + 2 < text.size() && (text[at + 1] & '\xE0') == '\xA0') {
      text.replace(at, 3, "\xEF\xBF\xBD");
    }
  }
}

// What may stand in a header: no line ends or other controls.
std::string header_text(std::string text) {
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ' && c != '\t') c = ' ';
  }
  return text;
}

bool is_text_type(std::string_view type) {
  const std::string lower = lowered_ascii(type);
  return lower.starts_with("text/") || lower.find("xml") != std::string::npos ||
         lower.find("json") != std::string::npos || lower.find("javascript") != std::string::npos;
}

}  // namespace

std::string charset_name(int code_page) {
  switch (code_page) {
    case platform::kUtf8:
      return "utf-8";
    case platform::kGb2312:
      return "gb2312";
    case 932:
      return "shift_jis";
    case 949:
      return "euc-kr";
    case 950:
      return "big5";
    default:
      return "windows-" + std::to_string(code_page);
  }
}

void PageResponse::write(std::string_view utf8) {
  room_for(utf8.size());
  // Halves that were written apart are one character again.
  if (is_second_half(utf8) && body_.size() >= settled_ + 3 &&
      is_first_half(std::string_view(body_).substr(body_.size() - 3))) {
    Text joined{std::string_view(body_).substr(body_.size() - 3)};
    joined.append(utf8.substr(0, 3));
    body_.resize(body_.size() - 3);
    body_ += joined.view();
    utf8.remove_prefix(3);
  }
  body_ += utf8;
  after_write();
}

void PageResponse::write(const Value& value) {
  if (value.is_text()) return write(value.as_view());
  if (value.is_object() || value.is_array()) return write(joined_text(value).view());
  room_for(0);
  append_text(body_, value);
  after_write();
}

void PageResponse::write_bytes(std::string_view bytes) {
  room_for(bytes.size());
  settle();
  body_ += bytes;
  settled_ = body_.size();
  after_write();
}

void PageResponse::room_for(std::size_t bytes) const {
  if (flushed_.size() + body_.size() + bytes > kMaxBufferedBytes) {
    throw platform::PageEnd{platform::PageEnd::Reason::OutOfMemory};
  }
}

void PageResponse::end() {
  throw platform::PageEnd{};
}

void PageResponse::redirect(std::string_view address) {
  must_not_have_begun();
  const std::string target = header_safe_address(code_page_ == platform::kUtf8 || is_ascii(address)
                                                     ? std::string(address)
                                                     : code_pages_.from_utf8(address, code_page_));
  const std::string shown = html_encoded(target);
  replace(302, "Object moved",
          "<head><title>Object moved</title></head>\n<body><h1>Object Moved</h1>This object may be "
          "found <a HREF=\"" +
              shown + "\">here</a>.</body>\n");
  headers_.emplace_back("Location", target);
  end();
}

void PageResponse::set_buffered(bool buffered) {
  if (buffered == buffered_) return;
  must_not_have_begun();
  buffered_ = buffered;
  if (!buffered_ && !body_.empty()) flush();
}

void PageResponse::clear() {
  if (!buffered_) raise(kBufferOff);
  body_.clear();
  settled_ = 0;
}

void PageResponse::flush() {
  settle();
  if (sink_ == nullptr) {
    flushed_ += body_;
  } else {
    if (!begun_) sink_->begin(head());
    if (!body_.empty()) sink_->write(body_);
  }
  begun_ = true;
  body_.clear();
  settled_ = 0;
}

void PageResponse::settle() {
  if (settled_ == body_.size()) return;
  replace_lone_halves(body_, settled_);
  if (code_page_ != platform::kUtf8) {
    const std::string_view text = std::string_view(body_).substr(settled_);
    if (!is_ascii(text)) {
      std::string bytes = code_pages_.from_utf8(text, code_page_);
      body_.replace(settled_, std::string::npos, bytes);
    }
  }
  settled_ = body_.size();
}

void PageResponse::set_code_page(int code_page) {
  if (code_page != platform::kUtf8 && !code_pages_.supports(code_page)) {
    raise(errors::kInvalidCall);
  }
  settle();
  code_page_ = code_page;
}

void PageResponse::set_status(std::string_view line) {
  must_not_have_begun();
  int status = 0;
  const auto read = std::from_chars(line.data(), line.data() + line.size(), status);
  if (read.ec != std::errc() || status < 100 || status > 999) raise(errors::kInvalidCall);
  line.remove_prefix(static_cast<std::size_t>(read.ptr - line.data()));
  while (!line.empty() && line.front() == ' ') line.remove_prefix(1);
  status_ = status;
  reason_ = header_text(std::string(line));
}

void PageResponse::set_content_type(std::string type) {
  must_not_have_begun();
  content_type_ = header_text(std::move(type));
}

void PageResponse::set_charset(std::string name) {
  must_not_have_begun();
  charset_ = header_text(std::move(name));
}

void PageResponse::set_cache_control(std::string value) {
  must_not_have_begun();
  cache_control_ = header_text(std::move(value));
}

void PageResponse::set_expires(double local_date) {
  must_not_have_begun();
  expires_ = local_date;
}

void PageResponse::add_header(std::string name, std::string value) {
  must_not_have_begun();
  for (const char c : name) {
    if (c <= ' ' || c > '~' || c == ':') raise(errors::kInvalidCall);
  }
  if (name.empty()) raise(errors::kInvalidCall);
  if (equal_ignoring_case(name, "content-type")) return set_content_type(std::move(value));
  if (equal_ignoring_case(name, "cache-control")) return set_cache_control(std::move(value));
  headers_.emplace_back(std::move(name), header_text(std::move(value)));
}

ResponseCookie& PageResponse::cookie(std::string_view name) {
  must_not_have_begun();
  ++cookie_changes_;
  for (ResponseCookie& cookie : cookies_) {
    if (equal_ignoring_case(cookie.name, name)) return cookie;
  }
  cookies_.emplace_back().name = name;
  return cookies_.back();
}

const ResponseCookie* PageResponse::find_cookie(std::string_view name) const {
  for (const ResponseCookie& cookie : cookies_) {
    if (equal_ignoring_case(cookie.name, name)) return &cookie;
  }
  return nullptr;
}

void PageResponse::replace(int status, std::string reason, std::string_view html_utf8) {
  body_.clear();
  settled_ = 0;
  if (!begun_ || sink_ == nullptr) {
    status_ = status;
    reason_ = std::move(reason);
    content_type_ = "text/html";
    charset_.clear();
  }
  body_ = html_utf8;
}

PageAnswer PageResponse::take() {
  settle();
  const bool streamed = begun_ && sink_ != nullptr;
  PageAnswer answer = streamed ? PageAnswer() : head();
  answer.status = status_;
  answer.body = flushed_.empty() ? std::move(body_) : flushed_ + body_;
  answer.streamed = streamed;
  answer.log_note = log_note_;
  body_.clear();
  settled_ = 0;
  return answer;
}

void PageResponse::must_not_have_begun() const {
  if (begun_) raise(kHeadersSent);
}

PageAnswer PageResponse::head() const {
  PageAnswer answer;
  answer.status = status_;
  answer.reason = reason_;
  std::string type = content_type_;
  const bool wants_charset = is_text_type(type) || !charset_.empty();
  if (wants_charset && lowered_ascii(type).find("charset") == std::string::npos) {
    type += "; charset=" + (charset_.empty() ? charset_name(code_page_) : charset_);
  }
  answer.headers.emplace_back("Content-Type", std::move(type));
  if (!cache_control_.empty()) answer.headers.emplace_back("Cache-Control", cache_control_);
  if (expires_) {
    answer.headers.emplace_back("Expires", date_header_of(*expires_ - clock_.ahead_of_utc()));
  }
  if (!session_cookie_.empty()) answer.headers.emplace_back("Set-Cookie", session_cookie_);
  for (const ResponseCookie& cookie : cookies_) {
    answer.headers.emplace_back("Set-Cookie", cookie_header(cookie));
  }
  // A name of a download in a header is of the page's code page, as browsers of such sites read it.
  for (const auto& [name, value] : headers_) {
    answer.headers.emplace_back(name, code_pages_.from_utf8(value, code_page_));
  }
  return answer;
}

std::string PageResponse::cookie_value(const ResponseCookie& cookie) const {
  const auto encoded = [&](std::string_view text) {
    return url_encoded(text, code_page_, code_pages_);
  };
  if (cookie.keys.empty()) return encoded(cookie.value);
  std::string out;
  for (const auto& [key, value] : cookie.keys) {
    if (&key != &cookie.keys.front().first) out += '&';
    out += encoded(key) + "=" + encoded(value);
  }
  return out;
}

std::string PageResponse::cookie_header(const ResponseCookie& cookie) const {
  std::string out = url_encoded(cookie.name, code_page_, code_pages_) + "=" + cookie_value(cookie);
  if (cookie.expires) {
    out += "; expires=" + date_header_of(*cookie.expires - clock_.ahead_of_utc());
  }
  if (!cookie.domain.empty()) out += "; domain=" + header_text(cookie.domain);
  out += "; path=" + header_text(cookie.path);
  if (cookie.secure) out += "; secure";
  return out;
}

}  // namespace rk::pagehost
