// Copying, moving and removing for the file system object and its files and folders: with
// wildcards, and with the converted database that belongs to an Access file.
#ifndef RK_PAGEHOST_COMPONENTS_FILE_OPERATIONS_H_
#define RK_PAGEHOST_COMPONENTS_FILE_OPERATIONS_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace rk::pagehost {

// Folders inside one another that an operation goes into.
inline constexpr std::size_t kMaxTreeDepth = 64;

// The files (or folders) that a path names, whose last step may hold "*" and "?". Raises 53 (or
// 76) where there are none.
std::vector<std::string> named_files(const platform::Files& files, std::string_view path);
std::vector<std::string> named_folders(const platform::Files& files, std::string_view path);

// Raises 58 where `to` is there and may not be replaced. A `to` that ends in "/", or that is a
// folder, takes the file under its own name.
void copy_file(platform::Files& files, const std::string& from, std::string_view to, bool replace);
void move_file(platform::Files& files, const std::string& from, std::string_view to);
void delete_file(platform::Files& files, const std::string& path);
void copy_folder(platform::Files& files, const std::string& from, std::string_view to, bool replace,
                 std::size_t depth = 0);
void delete_folder(platform::Files& files, const std::string& path, std::size_t depth = 0);
// Bytes of all files in it.
double folder_size(const platform::Files& files, const std::string& path, std::size_t depth = 0);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_FILE_OPERATIONS_H_
