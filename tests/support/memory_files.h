// Files in memory for tests. Records which were read, in order.
#ifndef RK_TESTS_SUPPORT_MEMORY_FILES_H_
#define RK_TESTS_SUPPORT_MEMORY_FILES_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/files.h"

namespace rk::tests {

class MemoryFiles : public platform::Files {
 public:
  // Each storing gives the file another time stamp.
  void put(std::string path, std::string bytes) {
    stored_[path] = ++times_stored_;
    files_[std::move(path)] = std::move(bytes);
  }
  void remove(std::string_view path) override { files_.erase(find(path).value_or("")); }
  // Reading this path raises 70 from now on.
  void forbid(std::string path) { forbidden_ = std::move(path); }
  const std::vector<std::string>& reads() const { return reads_; }

  std::optional<std::string> find(std::string_view path) const override;
  std::optional<platform::FileStamp> stamp(std::string_view path) const override;
  bool is_folder(std::string_view path) const override;
  std::vector<std::string> names(std::string_view folder) const override;
  std::string read(std::string_view path) const override;
  std::string read_text(std::string_view path) const override;
  void write(std::string_view path, std::string_view bytes) override;
  void append(std::string_view path, std::string_view bytes) override;

 private:
  std::map<std::string, std::string, std::less<>> files_;
  std::map<std::string, std::int64_t, std::less<>> stored_;
  std::int64_t times_stored_ = 0;
  std::string forbidden_;
  mutable std::vector<std::string> reads_;
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_MEMORY_FILES_H_
