#include "adapters/posix/profile_strings.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "value/script_error.h"

namespace rk::posix {

namespace {

// Holds a folder's lock while in scope. Where the folder cannot be opened nothing is held: the
// write itself will say so.
class FolderLock {
 public:
  explicit FolderLock(const std::string& folder)
      : descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ >= 0) ::flock(descriptor_, LOCK_EX);
  }
  ~FolderLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int descriptor_;
};

// The folder of an absolute path as it lies on the disk; raises 76 where the files do not reach it.
std::string folder_of(const platform::Files& files, std::string_view path) {
  const auto folder = files.find(path.substr(0, path.find_last_of("/\\") + 1));
  if (!folder) raise(errors::kPathNotFound);
  return *folder;
}

// "" for a file that is not there yet.
std::string text_of(const platform::Files& files, std::string_view path) {
  return files.find(path) ? files.read(path) : std::string();
}

}  // namespace

std::string ProfileStrings::absolute(std::string_view path) const {
  if (path.starts_with('/') || path.starts_with('\\')) return std::string(path);
  return default_folder_ + "/" + std::string(path);
}

std::string ProfileStrings::read(std::string_view section, std::string_view key, std::size_t size,
                                 std::string_view path) {
  if (path.empty() || size == 0) return "";
  try {
    const std::string text = text_of(files_, absolute(path));
    return ini_value(text, section, key, lead_bytes_).value_or("").substr(0, size - 1);
  } catch (const ScriptError&) {
    return "";  // profile strings report no failure
  }
}

bool ProfileStrings::write(std::string_view section, std::optional<std::string_view> key,
                           std::optional<std::string_view> value, std::string_view path) {
  if (path.empty()) return false;
  const std::string file = absolute(path);
  const std::lock_guard turn(writing_);
  try {
    const FolderLock lock(folder_of(files_, file));
    const std::string before = text_of(files_, file);
    const std::string after = ini_text_with(before, section, key, value, lead_bytes_);
    if (after != before) files_.write(file, after);
    return true;
  } catch (const ScriptError&) {
    return false;
  }
}

}  // namespace rk::posix
