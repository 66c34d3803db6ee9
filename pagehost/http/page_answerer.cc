#include "pagehost/http/page_answerer.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace rk::http {

std::string PageAnswerer::head_of(const pagehost::PageAnswer& answer, HeadFraming framing) const {
  const std::string date = date_();
  framing.date = date;
  framing.keep_alive = terms_.keep_alive;
  framing.old_version = terms_.old_version;
  return answer_head(answer, framing);
}

void PageAnswerer::send(std::string_view bytes) {
  if (!gone_ && !wire_.send_waiting(bytes, terms_.send_time)) gone_ = true;
}

void PageAnswerer::begin(const pagehost::PageAnswer& head) {
  began_ = true;
  status_ = head.status;
  // HTTP/1.0 knows no chunks: the end of the connection is the end of the body.
  if (terms_.old_version) terms_.keep_alive = false;
  HeadFraming framing;
  framing.chunked = !terms_.old_version && has_body(head.status);
  chunked_ = framing.chunked && !terms_.head_only;
  send(head_of(head, framing));
}

void PageAnswerer::write(std::string_view bytes) {
  if (bytes.empty() || terms_.head_only || !has_body(status_)) return;
  body_bytes_ += bytes.size();
  if (!chunked_) return send(bytes);
  char size[20];
  const int length = std::snprintf(size, sizeof size, "%zx\r\n", bytes.size());
  std::string chunk(size, static_cast<std::size_t>(length));
  chunk.append(bytes).append("\r\n");
  send(chunk);
}

void PageAnswerer::finish(pagehost::PageAnswer answer) {
  if (began_) {
    write(answer.body);
    if (chunked_) send("0\r\n\r\n");
    return;
  }
  status_ = answer.status;
  const bool bodied = has_body(answer.status);
  if (!bodied) answer.body.clear();
  HeadFraming framing;
  if (bodied) framing.length = answer.body.size();
  const std::string head = head_of(answer, framing);
  if (terms_.head_only) answer.body.clear();
  body_bytes_ = answer.body.size();
  const std::optional<std::size_t> sent = wire_.send_now(head, answer.body);
  if (!sent) {
    gone_ = true;
    return;
  }
  left_over_ = head.substr(std::min(*sent, head.size()));
  left_over_.append(answer.body, *sent > head.size() ? *sent - head.size() : 0);
}

}  // namespace rk::http
