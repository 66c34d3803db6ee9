#include "tests/support/memory_files.h"

#include "value/script_error.h"
#include "value/text.h"

namespace rk::tests {

std::optional<std::string> MemoryFiles::find(std::string_view path) const {
  if (files_.find(path) != files_.end()) return std::string(path);
  for (const auto& [name, bytes] : files_) {
    if (equal_ignoring_case(name, path)) return name;
  }
  return std::nullopt;
}

std::optional<platform::FileStamp> MemoryFiles::stamp(std::string_view path) const {
  const auto found = find(path);
  if (!found) return std::nullopt;
  const auto stored = stored_.find(*found);
  return platform::FileStamp{stored == stored_.end() ? 0 : stored->second, files_.at(*found).size(),
                             0};
}

bool MemoryFiles::is_folder(std::string_view path) const {
  std::string prefix(path);
  if (!prefix.ends_with('/')) prefix += '/';
  const auto first = files_.lower_bound(prefix);
  return first != files_.end() && first->first.starts_with(prefix);
}

std::vector<std::string> MemoryFiles::names(std::string_view folder) const {
  std::string prefix(folder);
  if (!prefix.ends_with('/')) prefix += '/';
  std::vector<std::string> names;
  for (const auto& [path, bytes] : files_) {
    if (!path.starts_with(prefix)) continue;
    std::string name = path.substr(prefix.size());
    name.resize(std::min(name.find('/'), name.size()));
    if (names.empty() || names.back() != name) names.push_back(name);
  }
  return names;
}

std::string MemoryFiles::read(std::string_view path) const {
  reads_.emplace_back(path);
  const auto found = find(path);
  if (!found) raise(errors::kFileNotFound);
  if (*found == forbidden_) raise(errors::kPermissionDenied);
  return files_.at(*found);
}

std::string MemoryFiles::read_text(std::string_view path) const {
  std::string text = read(path);
  if (text.empty()) raise(errors::kInputPastEnd);
  return text;
}

void MemoryFiles::write(std::string_view path, std::string_view bytes) {
  put(find(path).value_or(std::string(path)), std::string(bytes));
}

void MemoryFiles::append(std::string_view path, std::string_view bytes) {
  const std::string name = find(path).value_or(std::string(path));
  put(name, files_[name] + std::string(bytes));
}

}  // namespace rk::tests
