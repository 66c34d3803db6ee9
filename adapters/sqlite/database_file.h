// One database file of the process: the engine connections to it that are idle, and the order of
// those who write to it. Several threads may call.
#ifndef RK_ADAPTERS_SQLITE_DATABASE_FILE_H_
#define RK_ADAPTERS_SQLITE_DATABASE_FILE_H_

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "adapters/sqlite/connection_string.h"
#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/writer_queue.h"

namespace rk::sqlite {

// Idle connections kept for a file. More are made where more pages run at once, and closed after:
// each keeps some four megabytes of the file and its prepared statements.
inline constexpr std::size_t kIdleHandles = 16;

class DatabaseFile {
 public:
  // `mode` is not Create: the file is there.
  DatabaseFile(std::string path, OpenMode mode, std::chrono::milliseconds busy);

  // The connection used last, or a new one. Raises.
  std::unique_ptr<Handle> borrow();
  // Nothing of the page is left on it: no statement runs, no transaction is open.
  void give_back(std::unique_ptr<Handle> handle) noexcept;

  // Whether the path still leads to the file that was opened.
  bool is_current() const;
  // The path leads to another file now: nothing is kept any more.
  void retire() noexcept;

  const std::string& path() const noexcept { return path_; }
  OpenMode mode() const noexcept { return mode_; }
  WriterQueue& writers() noexcept { return writers_; }
  std::size_t idle() const;

 private:
  const std::string path_;
  const OpenMode mode_;
  const std::chrono::milliseconds busy_;
  std::uint64_t device_ = 0;
  std::uint64_t inode_ = 0;
  WriterQueue writers_;
  mutable std::mutex mutex_;
  bool retired_ = false;
  std::vector<std::unique_ptr<Handle>> idle_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_DATABASE_FILE_H_
