#include "adapters/sqlite/engine.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <utility>

#include "adapters/sqlite/connection_string.h"
#include "adapters/sqlite/database_file.h"
#include "adapters/sqlite/locate.h"
#include "adapters/sqlite/page_database.h"

namespace rk::sqlite {
namespace {

// Connection strings that are remembered: a site has one or two, but a page may build its own.
constexpr std::size_t kKnownStrings = 256;

// An empty file is an empty database. One that is there is not touched: closing it would take the
// locks away that this process holds on it.
void make_empty(const std::string& path) {
  constexpr mode_t kAnyone = 0666;  // less what the process' mask takes away
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kAnyone);
  if (file >= 0) ::close(file);
}

}  // namespace

Engine::Engine(EngineSettings settings, const platform::Files& files, const platform::Clock& clock)
    : settings_(std::move(settings)), files_(files), clock_(clock) {
  // The engine's count of its memory is a lock that all threads share and nobody reads. Without
  // effect where the engine runs already.
  sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

Engine::~Engine() = default;

std::unique_ptr<platform::Database> Engine::page(PageHooks hooks) {
  return std::make_unique<PageDatabase>(*this, std::move(hooks));
}

std::shared_ptr<DatabaseFile> Engine::file(std::string_view connection_string) {
  const std::string text(connection_string);
  const std::shared_ptr<DatabaseFile> known = known_file(text);
  // Asks the file system, so not under the lock that all pages meet at.
  return known != nullptr && known->is_current() ? known : locate(text);
}

std::shared_ptr<DatabaseFile> Engine::known_file(const std::string& connection_string) {
  const std::lock_guard lock(mutex_);
  const auto known = by_string_.find(connection_string);
  return known == by_string_.end() ? nullptr : known->second;
}

std::shared_ptr<DatabaseFile> Engine::locate(const std::string& connection_string) {
  const ConnectionString parsed = parse_connection_string(connection_string);
  const Places places{settings_.site_folder, settings_.data_folders};
  const std::string path = locate_database(parsed, places, files_);
  if (parsed.mode == OpenMode::Create) make_empty(path);
  const OpenMode mode = parsed.mode == OpenMode::Read ? OpenMode::Read : OpenMode::ReadWrite;

  const std::lock_guard lock(mutex_);
  auto& file = by_path_[(mode == OpenMode::Read ? "r:" : "w:") + path];
  if (file != nullptr && !file->is_current()) {
    file->retire();
    file = nullptr;
  }
  if (file == nullptr) file = std::make_shared<DatabaseFile>(path, mode, settings_.busy);
  if (by_string_.size() >= kKnownStrings) by_string_.clear();
  by_string_[connection_string] = file;
  return file;
}

void Engine::close(const std::string& path) {
  const std::lock_guard lock(mutex_);
  for (const std::string_view mode : {"r:", "w:"}) {
    const auto known = by_path_.find(std::string(mode).append(path));
    if (known == by_path_.end()) continue;
    known->second->retire();
    by_path_.erase(known);
  }
  by_string_.clear();
}

}  // namespace rk::sqlite
