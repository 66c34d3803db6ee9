// The parts of file paths as the file system object names them. Both "/" and "\" separate.
// Pure functions.
#ifndef RK_PAGEHOST_COMPONENTS_FILE_PATHS_H_
#define RK_PAGEHOST_COMPONENTS_FILE_PATHS_H_

#include <string>
#include <string_view>

namespace rk::pagehost {

std::string_view file_name_of(std::string_view path);      // "c.txt" of "/a/b/c.txt"
std::string_view base_name_of(std::string_view path);      // "c"
std::string_view extension_of(std::string_view path);      // "txt"
std::string_view parent_folder_of(std::string_view path);  // "/a/b"
// With the separator that the folder's own path has, "/" where it has none.
std::string joined_path(std::string_view folder, std::string_view name);
// A relative path is taken from the site's folder: pages have no other current folder.
std::string path_in_site(std::string_view site_root, std::string_view path);
// "*" and "?" in the last step; letter case does not count.
bool matches_wildcard(std::string_view name, std::string_view pattern);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_FILE_PATHS_H_
