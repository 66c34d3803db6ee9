#include "pagehost/components/file_paths.h"

#include <cstddef>

#include "value/text.h"

namespace rk::pagehost {
namespace {

std::string_view without_last_slash(std::string_view path) {
  while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) path.remove_suffix(1);
  return path;
}

}  // namespace

std::string_view file_name_of(std::string_view path) {
  path = without_last_slash(path);
  const std::size_t slash = path.find_last_of("/\\");
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view base_name_of(std::string_view path) {
  const std::string_view name = file_name_of(path);
  return name.substr(0, name.rfind('.'));
}

std::string_view extension_of(std::string_view path) {
  const std::string_view name = file_name_of(path);
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

std::string_view parent_folder_of(std::string_view path) {
  path = without_last_slash(path);
  const std::size_t slash = path.find_last_of("/\\");
  if (slash == std::string_view::npos) return {};
  return path.substr(0, slash == 0 ? 1 : slash);
}

std::string joined_path(std::string_view folder, std::string_view name) {
  std::string out(folder);
  const bool of_drives = folder.find('/') == std::string_view::npos &&
                         (folder.find('\\') != std::string_view::npos || folder.ends_with(':'));
  if (!out.empty() && out.back() != '/' && out.back() != '\\') out += of_drives ? '\\' : '/';
  return out.append(name);
}

std::string path_in_site(std::string_view site_root, std::string_view path) {
  const bool relative = path.empty() || (path[0] != '/' && path[0] != '\\');
  return relative ? joined_path(site_root, path) : std::string(path);
}

bool matches_wildcard(std::string_view name, std::string_view pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = std::string_view::npos;
  std::size_t retry = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      retry = n;
    } else if (p < pattern.size() &&
               (pattern[p] == '?' || ascii_lower(pattern[p]) == ascii_lower(name[n]))) {
      ++p;
      ++n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++retry;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace rk::pagehost
