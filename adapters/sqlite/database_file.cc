#include "adapters/sqlite/database_file.h"

#include <sys/stat.h>

#include <utility>

namespace rk::sqlite {

DatabaseFile::DatabaseFile(std::string path, OpenMode mode, std::chrono::milliseconds busy)
    : path_(std::move(path)), mode_(mode), busy_(busy) {
  struct stat found {};
  if (stat(path_.c_str(), &found) == 0) {
    device_ = found.st_dev;
    inode_ = found.st_ino;
  }
  idle_.reserve(kIdleHandles);
}

std::unique_ptr<Handle> DatabaseFile::borrow() {
  {
    const std::lock_guard lock(mutex_);
    if (!idle_.empty()) {
      std::unique_ptr<Handle> handle = std::move(idle_.back());
      idle_.pop_back();
      return handle;
    }
  }
  return std::make_unique<Handle>(path_, mode_, busy_);
}

void DatabaseFile::give_back(std::unique_ptr<Handle> handle) noexcept {
  handle->watch(nullptr);
  const std::lock_guard lock(mutex_);
  if (!retired_ && idle_.size() < kIdleHandles) idle_.push_back(std::move(handle));
}

bool DatabaseFile::is_current() const {
  struct stat found {};
  return stat(path_.c_str(), &found) == 0 && found.st_dev == device_ && found.st_ino == inode_;
}

void DatabaseFile::retire() noexcept {
  const std::lock_guard lock(mutex_);
  retired_ = true;
  idle_.clear();
}

std::size_t DatabaseFile::idle() const {
  const std::lock_guard lock(mutex_);
  return idle_.size();
}

}  // namespace rk::sqlite
