// Files of a site, addressed by physical paths (UTF-8). Several threads may call.
//
// Paths are taken as pages for a case-insensitive file system write them: any letter case, "\" or
// "/"; a file of the exact case is preferred. No path leads out of the folders that the site owns.
#ifndef RK_PLATFORM_FILES_H_
#define RK_PLATFORM_FILES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "value/script_error.h"

namespace rk::platform {

// What tells one state of a file from another.
struct FileStamp {
  std::int64_t modified_ns = 0;  // since 1970, UTC
  std::uint64_t size = 0;
  std::uint64_t inode = 0;
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

class Files {
 public:
  virtual ~Files() = default;
  // The path as it lies on the disk, or nothing where there is no such file or folder, or where
  // it lies outside.
  virtual std::optional<std::string> find(std::string_view path) const = 0;
  virtual std::optional<FileStamp> stamp(std::string_view path) const = 0;
  virtual bool is_folder(std::string_view path) const = 0;
  // Names in byte order, without "." and "..".
  virtual std::vector<std::string> names(std::string_view folder) const = 0;
  // All bytes. Raises 53, 70 or 76.
  virtual std::string read(std::string_view path) const = 0;
  // As many of its first bytes as it has. Raises the same.
  virtual std::string first_bytes(std::string_view path, std::size_t count) const {
    return read(path).substr(0, count);
  }
  // Text of a file in the default text format (a byte-order mark, else the code page of template
  // files), as UTF-8. Raises 53, 70, 76, and 62 for an empty file.
  virtual std::string read_text(std::string_view path) const = 0;
  // Replaces the file by a whole new one, or appends. Raises 70 or 76.
  virtual void write(std::string_view path, std::string_view bytes) = 0;
  virtual void append(std::string_view path, std::string_view bytes) = 0;

  // Files of a kind that cannot be changed so raise 70.
  virtual void remove(std::string_view) { raise(errors::kPermissionDenied); }  // or 53
  virtual void remove_folder(std::string_view) {
    raise(errors::kPermissionDenied);
  }                                                                                 // empty; or 76
  virtual void make_folder(std::string_view) { raise(errors::kPermissionDenied); }  // or 58, 76
  // A file or folder; what is at the new place already stays, and 58 is raised.
  virtual void rename(std::string_view, std::string_view) { raise(errors::kPermissionDenied); }
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_FILES_H_
