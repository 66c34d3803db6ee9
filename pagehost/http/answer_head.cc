#include "pagehost/http/answer_head.h"

#include <algorithm>

#include "value/text.h"

namespace rk::http {
namespace {

bool is_fronts_own(std::string_view name) {
  constexpr std::string_view kOwn[] = {"content-length", "transfer-encoding", "connection",
                                       "keep-alive", "date"};
  return std::any_of(std::begin(kOwn), std::end(kOwn),
                     [&](std::string_view own) { return equal_ignoring_case(name, own); });
}

// A line end in a value would begin a header field, or the body, of the visitor's making.
void append_safe(std::string& out, std::string_view text) {
  constexpr std::string_view kBreaks("\r\n\0", 3);
  if (text.find_first_of(kBreaks) == std::string_view::npos) {
    out.append(text);
    return;
  }
  for (const char c : text) {
    if (kBreaks.find(c) == std::string_view::npos) out.push_back(c);
  }
}

void append_field(std::string& out, std::string_view name, std::string_view value) {
  append_safe(out, name);
  out.append(": ");
  append_safe(out, value);
  out.append("\r\n");
}

}  // namespace

bool has_body(int status) {
  return status >= 200 && status != 204 && status != 304;
}

std::string_view reason_phrase(int status) {
  switch (status) {
    case 200:
      return "OK";
    case 301:
      return "Moved Permanently";
    case 304:
      return "Not Modified";
    case 400:
      return "Bad Request";
    case 404:
      return "Not Found";
    case 405:
      return "Method Not Allowed";
    case 408:
      return "Request Timeout";
    case 413:
      return "Content Too Large";
    case 414:
      return "URI Too Long";
    case 417:
      return "Expectation Failed";
    case 431:
      return "Request Header Fields Too Large";
    case 500:
      return "Internal Server Error";
    case 501:
      return "Not Implemented";
    case 503:
      return "Service Unavailable";
    case 505:
      return "HTTP Version Not Supported";
    default:
      return "Status";
  }
}

std::string answer_head(const pagehost::PageAnswer& answer, const HeadFraming& framing) {
  std::string head;
  head.reserve(512);
  head.append("HTTP/1.1 ").append(std::to_string(answer.status)).append(" ");
  append_safe(head, answer.reason);
  head.append("\r\n");
  if (!framing.date.empty()) append_field(head, "Date", framing.date);
  for (const auto& [name, value] : answer.headers) {
    if (!is_fronts_own(name)) append_field(head, name, value);
  }
  if (framing.length) append_field(head, "Content-Length", std::to_string(*framing.length));
  if (framing.chunked) append_field(head, "Transfer-Encoding", "chunked");
  if (!framing.keep_alive) {
    append_field(head, "Connection", "close");
  } else if (framing.old_version) {
    append_field(head, "Connection", "keep-alive");
  }
  head.append("\r\n");
  return head;
}

pagehost::PageAnswer plain_answer(int status) {
  pagehost::PageAnswer answer;
  answer.status = status;
  answer.reason = reason_phrase(status);
  const std::string title = std::to_string(status) + " " + answer.reason;
  answer.headers.emplace_back("Content-Type", "text/html; charset=utf-8");
  answer.headers.emplace_back("Cache-Control", "private");
  answer.body = "<!doctype html>\n<title>" + title + "</title>\n<h1>" + title + "</h1>\n";
  return answer;
}

}  // namespace rk::http
