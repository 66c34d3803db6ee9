#include "pagehost/components/file_operations.h"

#include <optional>

#include "pagehost/components/file_paths.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

std::vector<std::string> named(const platform::Files& files, std::string_view path, bool folders) {
  const std::string_view pattern = file_name_of(path);
  std::vector<std::string> out;
  if (pattern.find_first_of("*?") == std::string_view::npos) {
    const auto found = files.find(path);
    if (found && files.is_folder(*found) == folders) out.push_back(*found);
  } else {
    const std::string folder(parent_folder_of(path));
    for (const std::string& name : files.names(folder)) {
      std::string each = joined_path(folder, name);
      if (matches_wildcard(name, pattern) && files.is_folder(each) == folders) {
        out.push_back(std::move(each));
      }
    }
  }
  if (out.empty()) raise(folders ? errors::kPathNotFound : errors::kFileNotFound);
  return out;
}

// Where a file goes that is copied or moved to `to`.
std::string goal_of(const platform::Files& files, std::string_view from, std::string_view to) {
  const bool into = to.ends_with('/') || to.ends_with('\\') || files.is_folder(to);
  return into ? joined_path(to, file_name_of(from)) : std::string(to);
}

// The database that an Access file was converted into, by the name that belongs to it.
std::optional<std::string> converted_of(std::string_view path) {
  const std::string extension = lowered_ascii(extension_of(path));
  if (extension != "mdb" && extension != "accdb") return std::nullopt;
  return std::string(path.substr(0, path.size() - extension.size())) + "db";
}

}  // namespace

std::vector<std::string> named_files(const platform::Files& files, std::string_view path) {
  return named(files, path, false);
}

std::vector<std::string> named_folders(const platform::Files& files, std::string_view path) {
  return named(files, path, true);
}

void copy_file(platform::Files& files, const std::string& from, std::string_view to, bool replace) {
  const std::string goal = goal_of(files, from, to);
  if (!replace && files.find(goal)) raise(errors::kFileExists);
  files.write(goal, files.read(from));
  const auto database = converted_of(from);
  const auto new_database = converted_of(goal);
  if (database && new_database && files.find(*database)) {
    files.write(*new_database, files.read(*database));
  }
}

void move_file(platform::Files& files, const std::string& from, std::string_view to) {
  const std::string goal = goal_of(files, from, to);
  files.rename(from, goal);
  const auto database = converted_of(from);
  const auto new_database = converted_of(goal);
  if (database && new_database && files.find(*database)) files.rename(*database, *new_database);
}

void delete_file(platform::Files& files, const std::string& path) {
  files.remove(path);
  const auto database = converted_of(path);
  if (database && files.find(*database)) files.remove(*database);
}

void copy_folder(platform::Files& files, const std::string& from, std::string_view to, bool replace,
                 std::size_t depth) {
  if (depth > kMaxTreeDepth) raise(errors::kPathNotFound);
  const std::string goal = depth == 0 && (to.ends_with('/') || to.ends_with('\\'))
                               ? joined_path(to, file_name_of(from))
                               : std::string(to);
  const std::vector<std::string> names = files.names(from);
  if (!files.is_folder(goal)) files.make_folder(goal);
  for (const std::string& name : names) {
    const std::string each = joined_path(from, name);
    const std::string target = joined_path(goal, name);
    if (files.is_folder(each)) {
      copy_folder(files, each, target, replace, depth + 1);
    } else {
      if (!replace && files.find(target)) raise(errors::kFileExists);
      files.write(target, files.read(each));
    }
  }
}

void delete_folder(platform::Files& files, const std::string& path, std::size_t depth) {
  if (depth > kMaxTreeDepth) raise(errors::kPathNotFound);
  for (const std::string& name : files.names(path)) {
    const std::string each = joined_path(path, name);
    if (files.is_folder(each)) {
      delete_folder(files, each, depth + 1);
    } else {
      files.remove(each);
    }
  }
  files.remove_folder(path);
}

double folder_size(const platform::Files& files, const std::string& path, std::size_t depth) {
  if (depth > kMaxTreeDepth) return 0;
  double bytes = 0;
  for (const std::string& name : files.names(path)) {
    const std::string each = joined_path(path, name);
    const auto stamp = files.stamp(each);
    if (files.is_folder(each)) {
      bytes += folder_size(files, each, depth + 1);
    } else if (stamp) {
      bytes += static_cast<double>(stamp->size);
    }
  }
  return bytes;
}

}  // namespace rk::pagehost
