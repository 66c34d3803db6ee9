// The database of a process on SQLite: which files there are, and what pages borrow from them.
//
// app/ makes one Engine and asks it for one Database a page. The Engine may be called by several
// threads and outlives its pages; what page() gives belongs to the page's thread.
#ifndef RK_ADAPTERS_SQLITE_ENGINE_H_
#define RK_ADAPTERS_SQLITE_ENGINE_H_

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/sqlite/limits.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/files.h"

namespace rk::sqlite {

class DatabaseFile;

struct EngineSettings {
  std::string site_folder;                // absolute, on the disk
  std::vector<std::string> data_folders;  // absolute, on the disk
  std::chrono::milliseconds busy{5000};  // how long a file that another process holds is waited for
};

// What the host wants to be asked and told while a page uses its database.
struct PageHooks {
  Limits limits;
  // Told of each text that the page sent, once its rows are read: a record set's at its close.
  // Empty: no times are taken.
  std::function<void(const platform::TracedStatement&)> trace;
  // Where the page stands (FILE:LINE), asked as a text is sent; may be empty.
  std::function<std::string()> place;
};

class Engine {
 public:
  // `files` and `clock` outlive the engine.
  Engine(EngineSettings settings, const platform::Files& files, const platform::Clock& clock);
  ~Engine();
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  std::unique_ptr<platform::Database> page(PageHooks hooks = {});

  // The file that a connection string means. Raises -2147467259.
  std::shared_ptr<DatabaseFile> file(std::string_view connection_string);
  // Closes what waits for work on the file at a path on the disk; whoever works with it goes on.
  void close(const std::string& path);
  const platform::Clock& clock() const noexcept { return clock_; }

 private:
  std::shared_ptr<DatabaseFile> known_file(const std::string& connection_string);
  std::shared_ptr<DatabaseFile> locate(const std::string& connection_string);

  const EngineSettings settings_;
  const platform::Files& files_;
  const platform::Clock& clock_;
  std::mutex mutex_;
  std::unordered_map<std::string, std::shared_ptr<DatabaseFile>> by_string_;
  std::unordered_map<std::string, std::shared_ptr<DatabaseFile>> by_path_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_ENGINE_H_
