#include "pagehost/pages/virtual_path.h"

#include <algorithm>
#include <cstddef>

namespace rk::pagehost {
namespace {

// Adds the steps of a path; false where one leads above the root.
bool add_steps(std::string& out, std::string_view path) {
  std::size_t at = 0;
  while (at <= path.size()) {
    const std::size_t end = std::min(path.find_first_of("/\\", at), path.size());
    const std::string_view step = path.substr(at, end - at);
    at = end + 1;
    if (step.empty() || step == ".") continue;
    if (step != "..") {
      out += '/';
      out += step;
    } else if (out.empty()) {
      return false;
    } else {
      out.resize(out.rfind('/'));
    }
  }
  return true;
}

}  // namespace

std::optional<std::string> resolved_path(std::string_view folder, std::string_view path) {
  if (path.find('\0') != std::string_view::npos) return std::nullopt;
  std::string out;
  const bool from_root = !path.empty() && (path[0] == '/' || path[0] == '\\');
  if (!from_root && !add_steps(out, folder)) return std::nullopt;
  if (!add_steps(out, path)) return std::nullopt;
  return out;
}

std::string_view folder_of(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

}  // namespace rk::pagehost
