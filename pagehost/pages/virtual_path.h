// Virtual paths: what requests, includes and Server.MapPath name, "/" being the site's root.
// Pure functions.
#ifndef RK_PAGEHOST_PAGES_VIRTUAL_PATH_H_
#define RK_PAGEHOST_PAGES_VIRTUAL_PATH_H_

#include <optional>
#include <string>
#include <string_view>

namespace rk::pagehost {

// The path from the root, as "/a/b": `path` itself where it begins with "/" or "\", else taken from
// `folder`. "\" reads as "/", "." and ".." and empty steps are resolved, and a "/" at the end goes.
// The root is "". Nothing where it leads out of the site or holds a NUL.
std::optional<std::string> resolved_path(std::string_view folder, std::string_view path);

// "/a/b" of "/a/b/c.asp"; "" of "/c.asp".
std::string_view folder_of(std::string_view path);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_VIRTUAL_PATH_H_
