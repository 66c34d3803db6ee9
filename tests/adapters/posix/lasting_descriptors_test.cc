#include "adapters/posix/lasting_descriptors.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/posix/files.h"
#include "tests/support/toy_code_pages.h"

namespace rk::posix {
namespace {

const std::string kDatabase = std::string("SQLite format 3\0", 16) + std::string(100, 'x');

class LastingDescriptors : public ::testing::Test {
 protected:
  LastingDescriptors() {
    std::string pattern = ::testing::TempDir() + "rk-lasting-XXXXXX";
    folder_ = ::mkdtemp(pattern.data());
  }
  ~LastingDescriptors() override { std::filesystem::remove_all(folder_); }

  std::string put(const std::string& name, const std::string& bytes) const {
    std::string path = folder_ + "/" + name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  std::string folder_;
  PosixFiles& files() {
    if (!files_) files_ = std::make_unique<PosixFiles>(std::vector{folder_}, code_pages_);
    return *files_;
  }

  tests::ToyCodePages code_pages_;
  std::unique_ptr<PosixFiles> files_;
};

// As an engine locks: a record lock of this process.
int locked(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_len = 1;
  EXPECT_EQ(::fcntl(file, F_SETLK, &lock), 0);
  return file;
}

// Asked by another process, as this one's own locks never stand in its way.
bool is_locked(const std::string& path) {
  const pid_t other = ::fork();
  if (other == 0) {
    const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_len = 1;
    ::_exit(::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK ? 1 : 0);
  }
  int status = 0;
  ::waitpid(other, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 1;
}

TEST_F(LastingDescriptors, ReadingADatabaseLeavesTheLocksOnIt) {
  const std::string path = put("shop.db", kDatabase);
  const int engine = locked(path);
  ASSERT_TRUE(is_locked(path));
  EXPECT_EQ(files().read(path), kDatabase);
  EXPECT_EQ(files().first_bytes(path, 6), "SQLite");
  {
    const std::optional<OpenedFile> opened = files().open(path);
    EXPECT_TRUE(opened.has_value());
  }
  EXPECT_TRUE(files().stamp(path));
  EXPECT_TRUE(is_locked(path));
  std::filesystem::create_hard_link(path, folder_ + "/other.dat");
  EXPECT_EQ(files().read(folder_ + "/other.dat"), kDatabase);
  EXPECT_TRUE(is_locked(path)) << "under another name of the same file";
  ::close(engine);
}

TEST_F(LastingDescriptors, ADatabaseThatCameInTheOthersPlaceIsRead) {
  const std::string path = put("shop.db", kDatabase);
  EXPECT_EQ(files().read(path), kDatabase);
  std::filesystem::rename(put("new.db", kDatabase + "new"), path);
  EXPECT_EQ(files().read(path), kDatabase + "new");
}

TEST_F(LastingDescriptors, ADatabaseThatGrewIsReadWhole) {
  const std::string path = put("shop.db", kDatabase);
  EXPECT_EQ(files().read(path), kDatabase);
  std::ofstream(path, std::ios::binary | std::ios::app) << "more";
  EXPECT_EQ(files().read(path), kDatabase + "more");
  EXPECT_EQ(files().first_bytes(path, 1000), kDatabase + "more");
}

std::size_t open_descriptors() {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    ++count;
  }
  return count;
}

TEST_F(LastingDescriptors, RemovedDatabasesAndOtherFilesHoldNone) {
  const std::size_t before = open_descriptors();
  for (int i = 0; i < 50; ++i) {
    const std::string path = put("copy.db", kDatabase);
    EXPECT_EQ(files().read(path), kDatabase);
    EXPECT_EQ(files().read(put("a.txt", "text")), "text");
    files().remove(path);
  }
  EXPECT_LE(open_descriptors(), before + 1);
}

}  // namespace
}  // namespace rk::posix
