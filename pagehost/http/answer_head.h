// The status line and header fields of an answer, as they go over the wire. Pure functions.
#ifndef RK_PAGEHOST_HTTP_ANSWER_HEAD_H_
#define RK_PAGEHOST_HTTP_ANSWER_HEAD_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "pagehost/pages/page_request.h"

namespace rk::http {

struct HeadFraming {
  std::optional<std::uint64_t> length;  // Content-Length
  bool chunked = false;
  bool keep_alive = true;
  bool old_version = false;  // the request was HTTP/1.0
  std::string_view date;     // empty: no Date
};

// Header fields that are the front's own, and line ends in names or values, are left out.
std::string answer_head(const pagehost::PageAnswer& answer, const HeadFraming& framing);

// Whether an answer of this status has a body at all.
bool has_body(int status);

// The usual reason phrase, or "Status".
std::string_view reason_phrase(int status);

// A refusal of the front itself: a short page that tells the status and no more.
pagehost::PageAnswer plain_answer(int status);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_ANSWER_HEAD_H_
