// The media type of a file by the ending of its name. A pure function.
#ifndef RK_PAGEHOST_HTTP_MEDIA_TYPES_H_
#define RK_PAGEHOST_HTTP_MEDIA_TYPES_H_

#include <string_view>

namespace rk::http {

// application/octet-stream where the ending is not known.
std::string_view media_type(std::string_view path);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_MEDIA_TYPES_H_
