// A folder of a test's own on the disk, removed with it, and the files in it as the adapter finds
// them: any letter case.
#ifndef RK_TESTS_ADAPTERS_SQLITE_DISK_FOLDER_H_
#define RK_TESTS_ADAPTERS_SQLITE_DISK_FOLDER_H_

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "value/text.h"

namespace rk::tests {

class DiskFolder final : public platform::Files {
 public:
  explicit DiskFolder(
      const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
    std::string pattern = (parent / "rk_sqlite_XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~DiskFolder() override {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  DiskFolder(const DiskFolder&) = delete;
  DiskFolder& operator=(const DiskFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string path(std::string_view name) const { return path_ + "/" + std::string(name); }
  void put(std::string_view name, std::string_view bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
  }

  std::optional<std::string> find(std::string_view path) const override {
    if (std::filesystem::exists(path)) return std::string(path);
    const std::filesystem::path wanted(path);
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(wanted.parent_path(), none)) {
      if (equal_ignoring_case(entry.path().filename().string(), wanted.filename().string())) {
        return entry.path().string();
      }
    }
    return std::nullopt;
  }
  bool is_folder(std::string_view path) const override {
    return std::filesystem::is_directory(path);
  }
  std::optional<platform::FileStamp> stamp(std::string_view) const override { return {}; }
  std::vector<std::string> names(std::string_view folder) const override {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }
  std::string read(std::string_view path) const override {
    std::ifstream file(std::string(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string read_text(std::string_view path) const override { return read(path); }
  void write(std::string_view path, std::string_view bytes) override {
    std::ofstream(std::string(path), std::ios::binary) << bytes;
  }
  void append(std::string_view path, std::string_view bytes) override {
    std::ofstream(std::string(path), std::ios::app | std::ios::binary) << bytes;
  }
  void remove(std::string_view path) override { std::filesystem::remove(path); }
  void rename(std::string_view from, std::string_view to) override {
    std::filesystem::rename(from, to);
  }

 private:
  std::string path_;
};

}  // namespace rk::tests

#endif  // RK_TESTS_ADAPTERS_SQLITE_DISK_FOLDER_H_
