// What a request for a file is answered: the whole, a range, "not modified" or a refusal. Pure.
#ifndef RK_PAGEHOST_HTTP_STATIC_ANSWER_H_
#define RK_PAGEHOST_HTTP_STATIC_ANSWER_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/page_request.h"
#include "platform/files.h"

namespace rk::http {

struct StaticAnswer {
  pagehost::PageAnswer head;  // status and headers; no body
  std::uint64_t offset = 0;   // of the bytes that follow
  std::uint64_t count = 0;
};

// `path` is for the media type. A request for several ranges is answered with the whole.
StaticAnswer static_answer(const pagehost::PageRequest& request, std::string_view path,
                           const platform::FileStamp& stamp);

// Whether a file begins as a database does that no visitor may read; `start` is its first bytes.
bool begins_as_database(std::string_view start);
inline constexpr std::size_t kDatabaseStartBytes = 19;

// A path (of Target) that no visitor may read: hidden names and endings, and what lies under one
// of `hidden_folders` ("/log", in small letters, without a "/" behind it).
bool is_hidden(std::string_view path, const std::vector<std::string>& hidden_folders);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_STATIC_ANSWER_H_
