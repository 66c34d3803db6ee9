// The target of a request line, taken apart: the path that it names within the site, and its query
// string. Pure functions.
#ifndef RK_PAGEHOST_HTTP_TARGET_H_
#define RK_PAGEHOST_HTTP_TARGET_H_

#include <optional>
#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace rk::http {

struct Target {
  // Percent-decoded once, UTF-8, "\" as "/", without ".", ".." and empty parts; begins with "/",
  // and ends with "/" where the target did.
  std::string path;
  std::string query;      // as sent, without "?"
  std::string authority;  // of an absolute target (http://HOST/...), else empty
};

// Nothing for a target that names no place in the site: one that climbs above its root, holds a
// NUL, an encoded "/" or "\", a "%" without two hexadecimal digits, or has another form.
// Path bytes that are not UTF-8 are read in `code_page`.
std::optional<Target> parse_target(std::string_view target, int code_page,
                                   const platform::CodePages& code_pages);

// A path as it stands in an address.
std::string encoded_path(std::string_view path);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_TARGET_H_
