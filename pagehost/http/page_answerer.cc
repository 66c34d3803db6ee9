#include "pagehost/http/page_answerer.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <system_error>

#include "value/text.h"

namespace rk::http {
namespace {

using SteadyClock = std::chrono::steady_clock;

// What a page may have sent beyond what its visitor took: a usual page whole, and little enough
// for hundreds of slow visitors.
constexpr std::size_t kMostAhead = std::size_t{64} << 10;
// How long a flush waits for a visitor who is only a little behind, and how often a longer wait
// looks whether the page must end.
constexpr std::chrono::milliseconds kShortWait{200};

// The length that a page promised by a header of its own; nothing where that is no number.
std::optional<std::uint64_t> own_length(const pagehost::PageAnswer& head) {
  for (const auto& [name, value] : head.headers) {
    if (!equal_ignoring_case(name, "content-length")) continue;
    std::uint64_t length = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), length);
    if (error == std::errc() && end == value.data() + value.size()) return length;
  }
  return std::nullopt;
}

}  // namespace

std::string PageAnswerer::head_of(const pagehost::PageAnswer& answer, HeadFraming framing) const {
  const std::string date = date_();
  framing.date = date;
  framing.keep_alive = terms_.keep_alive;
  framing.old_version = terms_.old_version;
  return answer_head(answer, framing);
}

// As much of what is left over as the socket takes at once.
void PageAnswerer::send_left_over() {
  std::size_t done = 0;
  while (!gone_ && done < left_over_.size()) {
    const std::optional<std::size_t> sent =
        wire_.send_now(std::string_view(left_over_).substr(done));
    if (!sent) gone_ = true;
    if (!sent || *sent == 0) break;
    done += *sent;
  }
  left_over_.erase(0, done);
}

// Until the visitor has taken all; or, after a short time, all but what a page may be ahead of him.
void PageAnswerer::wait_for_visitor() {
  const auto began = SteadyClock::now();
  auto last_taken = began;
  while (!gone_ && !left_over_.empty()) {
    const auto now = SteadyClock::now();
    if (left_over_.size() <= kMostAhead && now - began >= kShortWait) return;
    if (now - last_taken >= terms_.send_time) gone_ = true;
    if (check_) check_();
    wire_.await_room(kShortWait);
    const std::size_t before = left_over_.size();
    send_left_over();
    if (left_over_.size() < before) last_taken = SteadyClock::now();
  }
}

void PageAnswerer::send(std::string_view bytes) {
  if (gone_) return;
  left_over_.append(bytes);
  send_left_over();
  wait_for_visitor();
}

void PageAnswerer::begin(const pagehost::PageAnswer& head) {
  began_ = true;
  status_ = head.status;
  HeadFraming framing;
  if (has_body(head.status)) framing.length = own_length(head);
  promised_ = framing.length;
  // HTTP/1.0 knows no chunks: the end of the connection is the end of the body.
  if (terms_.old_version && !promised_) terms_.keep_alive = false;
  framing.chunked = !terms_.old_version && has_body(head.status) && !promised_;
  chunked_ = framing.chunked && !terms_.head_only;
  send(head_of(head, framing));
}

// The bytes as they go out, without those that no visitor is to see.
std::string PageAnswerer::framed(std::string_view bytes) {
  if (promised_) {
    bytes = bytes.substr(
        0, static_cast<std::size_t>(std::min<std::uint64_t>(*promised_, bytes.size())));
    *promised_ -= bytes.size();
  }
  if (bytes.empty() || terms_.head_only || !has_body(status_)) return {};
  body_bytes_ += bytes.size();
  if (!chunked_) return std::string(bytes);
  char size[20];
  const int length = std::snprintf(size, sizeof size, "%zx\r\n", bytes.size());
  std::string chunk(size, static_cast<std::size_t>(length));
  chunk.append(bytes).append("\r\n");
  return chunk;
}

void PageAnswerer::write(std::string_view bytes) {
  send(framed(bytes));
}

// The end of an answer that is on its way already.
void PageAnswerer::finish_begun(std::string_view rest) {
  left_over_.append(framed(rest));
  if (chunked_) left_over_.append("0\r\n\r\n");
  if (promised_ && *promised_ > 0 && !terms_.head_only) terms_.keep_alive = false;
}

// The head of an answer in one piece, which keeps of its body what the visitor is to see.
std::string PageAnswerer::finished_head(pagehost::PageAnswer& answer) {
  status_ = answer.status;
  const bool bodied = has_body(answer.status);
  if (!bodied) answer.body.clear();
  HeadFraming framing;
  if (bodied) framing.length = answer.body.size();
  std::string head = head_of(answer, framing);
  if (terms_.head_only) answer.body.clear();
  body_bytes_ = answer.body.size();
  return head;
}

void PageAnswerer::finish_unsent(pagehost::PageAnswer answer) {
  if (began_) return finish_begun(answer.body);
  left_over_ = finished_head(answer);
  left_over_.append(answer.body);
}

void PageAnswerer::finish(pagehost::PageAnswer answer) {
  if (began_) {
    finish_begun(answer.body);
    return send_left_over();
  }
  const std::string head = finished_head(answer);
  const std::optional<std::size_t> sent = wire_.send_now(head, answer.body);
  if (!sent) {
    gone_ = true;
    return;
  }
  left_over_ = head.substr(std::min(*sent, head.size()));
  left_over_.append(answer.body, *sent > head.size() ? *sent - head.size() : 0);
}

}  // namespace rk::http
