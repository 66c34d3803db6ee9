#include "adapters/posix/profile_strings.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "adapters/posix/ini_text.h"
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

std::string folder_of(const platform::Files& files, std::string_view path) {
  const std::size_t slash = path.find_last_of("/\\");
  if (slash == std::string_view::npos) return ".";
  return files.find(path.substr(0, slash + 1)).value_or(std::string(path.substr(0, slash + 1)));
}

// "" for a file that is not there yet.
std::string text_of(const platform::Files& files, std::string_view path) {
  return files.find(path) ? files.read(path) : std::string();
}

}  // namespace

std::string ProfileStrings::read(std::string_view section, std::string_view key, std::size_t size,
                                 std::string_view path) {
  if (path.empty() || size == 0) return "";
  try {
    return ini_value(text_of(files_, path), section, key).value_or("").substr(0, size - 1);
  } catch (const ScriptError&) {
    return "";  // profile strings report no failure
  }
}

bool ProfileStrings::write(std::string_view section, std::optional<std::string_view> key,
                           std::optional<std::string_view> value, std::string_view path) {
  if (path.empty()) return false;
  const std::lock_guard turn(writing_);
  try {
    const FolderLock lock(folder_of(files_, path));
    const std::string before = text_of(files_, path);
    const std::string after = ini_text_with(before, section, key, value);
    if (after != before) files_.write(path, after);
    return true;
  } catch (const ScriptError&) {
    return false;
  }
}

}  // namespace rk::posix
