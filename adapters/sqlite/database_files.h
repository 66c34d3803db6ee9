// DatabaseFiles: a site's files as pages handle them, where some of the files are databases that
// other pages work with. Pages back their database up, put a copy back, move it and remove it as
// any other file; here that keeps what was written, and never leaves a broken file.
//
//   read     one state of the database, with what its log still holds
//   write    a database's bytes replace the content as one transaction, seen by whoever has it
//            open; anything else over a database raises 70
//   remove, rename   the file whole; connections that wait for work are closed before
//
// A path of an Access file that is gone leads to the converted database beside it. All else goes to
// the files beneath. Several threads may call.
#ifndef RK_ADAPTERS_SQLITE_DATABASE_FILES_H_
#define RK_ADAPTERS_SQLITE_DATABASE_FILES_H_

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/engine.h"
#include "platform/files.h"

namespace rk::sqlite {

class DatabaseFiles final : public platform::Files {
 public:
  // Both outlive this. `busy`: how long others who hold a database are waited for.
  DatabaseFiles(platform::Files& files, Engine& engine, std::chrono::milliseconds busy)
      : files_(files), engine_(engine), busy_(busy) {}

  std::optional<std::string> find(std::string_view path) const override;
  std::optional<platform::FileStamp> stamp(std::string_view path) const override;
  bool is_folder(std::string_view path) const override { return files_.is_folder(path); }
  std::vector<std::string> names(std::string_view folder) const override {
    return files_.names(folder);
  }
  std::string read(std::string_view path) const override;
  std::string first_bytes(std::string_view path, std::size_t count) const override {
    return files_.first_bytes(path, count);
  }
  std::string read_text(std::string_view path) const override { return files_.read_text(path); }
  void write(std::string_view path, std::string_view bytes) override;
  void append(std::string_view path, std::string_view bytes) override;
  void remove(std::string_view path) override;
  void remove_folder(std::string_view path) override { files_.remove_folder(path); }
  void make_folder(std::string_view path) override { files_.make_folder(path); }
  void rename(std::string_view from, std::string_view to) override;

 private:
  // The path on the disk of a database of the engine's; nothing for any other file.
  std::optional<std::string> database_at(std::string_view path) const;
  void let_go(const std::string& path);

  platform::Files& files_;
  Engine& engine_;
  std::chrono::milliseconds busy_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_DATABASE_FILES_H_
