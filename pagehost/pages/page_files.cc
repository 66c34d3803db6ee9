#include "pagehost/pages/page_files.h"

#include <cstddef>

#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr std::string_view kSideEndings[] = {"-wal", "-shm", "-journal"};
constexpr std::string_view kDatabaseEndings[] = {".db", ".db3", ".sqlite", ".sqlite3"};

bool is_slash(char c) {
  return c == '/' || c == '\\';
}

// Without what a file system passes over at the end: "/" and "/.".
std::string_view trimmed(std::string_view path) {
  while (!path.empty()) {
    const bool dot = path.size() > 1 && path.back() == '.' && is_slash(path[path.size() - 2]);
    if (!is_slash(path.back()) && !dot) break;
    path.remove_suffix(1);
  }
  return path;
}

std::string_view last_step(std::string_view path) {
  path = trimmed(path);
  const std::size_t slash = path.find_last_of("/\\");
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

// Whether a system that pages were written for could have a file of this name: visitors' names are
// checked by trying, and backups go back to such systems.
bool is_portable_name(std::string_view name) {
  return name.find_first_of("<>:\"|?*") == std::string_view::npos;
}

}  // namespace

bool PageFiles::is_hidden_name(std::string_view folder, std::string_view name) const {
  const std::string lower = lowered_ascii(name);
  for (const std::string_view ending : kSideEndings) {
    if (!lower.ends_with(ending)) continue;
    const std::string_view base = name.substr(0, name.size() - ending.size());
    for (const std::string_view database : kDatabaseEndings) {
      if (std::string_view(lower).substr(0, base.size()).ends_with(database)) return true;
    }
    // A database may have any name.
    if (!base.empty() && files_.find(std::string(folder).append(base))) return true;
  }
  return false;
}

bool PageFiles::is_hidden(std::string_view path) const {
  path = trimmed(path);
  const std::size_t slash = path.find_last_of("/\\");
  const std::size_t name = slash == std::string_view::npos ? 0 : slash + 1;
  return is_hidden_name(path.substr(0, name), path.substr(name));
}

void PageFiles::must_be_shown(std::string_view path) const {
  if (is_hidden(path)) raise(errors::kFileNotFound);
}

void PageFiles::must_be_free(std::string_view path) const {
  if (is_hidden(path)) raise(errors::kPermissionDenied);
  // A file that came from elsewhere may have such a name and is used as it is.
  if (!is_portable_name(last_step(path)) && !files_.find(path)) raise(errors::kBadFileName);
}

std::optional<std::string> PageFiles::find(std::string_view path) const {
  return is_hidden(path) ? std::nullopt : files_.find(path);
}

std::optional<platform::FileStamp> PageFiles::stamp(std::string_view path) const {
  return is_hidden(path) ? std::nullopt : files_.stamp(path);
}

bool PageFiles::is_folder(std::string_view path) const {
  return files_.is_folder(path);
}

std::vector<std::string> PageFiles::names(std::string_view folder) const {
  std::vector<std::string> names = files_.names(folder);
  const std::string base = std::string(trimmed(folder)) + "/";
  std::erase_if(names, [&](const std::string& name) { return is_hidden_name(base, name); });
  return names;
}

std::string PageFiles::read(std::string_view path) const {
  must_be_shown(path);
  return files_.read(path);
}

std::string PageFiles::read_text(std::string_view path) const {
  must_be_shown(path);
  return files_.read_text(path);
}

void PageFiles::write(std::string_view path, std::string_view bytes) {
  must_be_free(path);
  files_.write(path, bytes);
}

void PageFiles::append(std::string_view path, std::string_view bytes) {
  must_be_free(path);
  files_.append(path, bytes);
}

void PageFiles::remove(std::string_view path) {
  must_be_shown(path);
  files_.remove(path);
}

void PageFiles::remove_folder(std::string_view path) {
  files_.remove_folder(path);
}

void PageFiles::make_folder(std::string_view path) {
  must_be_free(path);
  files_.make_folder(path);
}

void PageFiles::rename(std::string_view from, std::string_view to) {
  must_be_shown(from);
  must_be_free(to);
  files_.rename(from, to);
}

}  // namespace rk::pagehost
