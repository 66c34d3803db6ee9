#include "adapters/sqlite/database_files.h"

#include <sqlite3.h>

#include <filesystem>
#include <memory>

#include "adapters/sqlite/locate.h"
#include "value/script_error.h"

namespace rk::sqlite {

namespace {

constexpr std::string_view kMark("SQLite format 3\0", 16);
constexpr std::size_t kHeaderBytes = 100;
constexpr std::string_view kSideEndings[] = {"-wal", "-shm", "-journal"};

struct Closer {
  void operator()(sqlite3* database) const noexcept { sqlite3_close(database); }
};
using Database = std::unique_ptr<sqlite3, Closer>;

struct Freer {
  void operator()(unsigned char* bytes) const noexcept { sqlite3_free(bytes); }
};

// Of the engine's failures a page sees what the file system would have told it.
[[noreturn]] void refuse(int code) {
  if ((code & 0xFF) == SQLITE_FULL) raise(errors::kDiskFull);
  if ((code & 0xFF) == SQLITE_NOMEM) raise(errors::kOutOfMemory);
  raise(errors::kPermissionDenied);
}

void must_be_done(int code) {
  if (code != SQLITE_OK) refuse(code);
}

Database opened(const std::string& path, int flags, std::chrono::milliseconds busy) {
  sqlite3* database = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &database, flags, nullptr);
  Database owner(database);
  must_be_done(code);
  sqlite3_busy_timeout(database, static_cast<int>(busy.count()));
  return owner;
}

void run(sqlite3* database, const char* text) {
  must_be_done(sqlite3_exec(database, text, nullptr, nullptr, nullptr));
}

// One state of a database, as a file holds it.
std::string snapshot(const std::string& path, std::chrono::milliseconds busy) {
  const Database database = opened(path, SQLITE_OPEN_READWRITE, busy);
  run(database.get(), "Begin; Select 1 From sqlite_master Limit 1");
  sqlite3_int64 size = 0;
  const std::unique_ptr<unsigned char, Freer> bytes(
      sqlite3_serialize(database.get(), "main", &size, 0));
  if (bytes == nullptr) raise(errors::kOutOfMemory);
  return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
}

// The bytes as a database in memory, which has no log beside it.
Database in_memory(std::string_view bytes) {
  constexpr std::size_t kVersions =
      18;  // for writing and for reading: 2 asks for a log, 1 does not
  if (bytes.size() < kHeaderBytes) refuse(SQLITE_NOTADB);
  Database database = opened(":memory:", SQLITE_OPEN_READWRITE, {});
  auto* copy = static_cast<unsigned char*>(sqlite3_malloc64(bytes.size()));
  if (copy == nullptr) raise(errors::kOutOfMemory);
  std::copy(bytes.begin(), bytes.end(), copy);
  copy[kVersions] = copy[kVersions + 1] = 1;
  const auto size = static_cast<sqlite3_int64>(bytes.size());
  must_be_done(sqlite3_deserialize(database.get(), "main", copy, size, size,
                                   SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_READONLY));
  return database;
}

void replace_content(const std::string& path, std::string_view bytes,
                     std::chrono::milliseconds busy) {
  const Database source = in_memory(bytes);
  const Database target = opened(path, SQLITE_OPEN_READWRITE, busy);
  sqlite3_backup* backup = sqlite3_backup_init(target.get(), "main", source.get(), "main");
  if (backup == nullptr) refuse(sqlite3_errcode(target.get()));
  // The whole in one step: the busy handler waits for others where it begins.
  const int stepped = sqlite3_backup_step(backup, -1);
  const int finished = sqlite3_backup_finish(backup);
  if (stepped != SQLITE_DONE) refuse(stepped);
  must_be_done(finished);
}

// Raises where somebody reads or writes for longer than is waited.
void put_back_log(sqlite3* database) {
  sqlite3_stmt* statement = nullptr;
  must_be_done(
      sqlite3_prepare_v2(database, "Pragma wal_checkpoint(Truncate)", -1, &statement, nullptr));
  const bool done = sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_int(statement, 0) == 0;
  sqlite3_finalize(statement);
  if (!done) refuse(SQLITE_BUSY);
}

}  // namespace

std::optional<std::string> DatabaseFiles::find(std::string_view path) const {
  if (auto found = files_.find(path)) return found;
  if (!is_access_ending(path)) return std::nullopt;
  return files_.find(converted_name(path));
}

std::optional<platform::FileStamp> DatabaseFiles::stamp(std::string_view path) const {
  const auto found = find(path);
  return found ? files_.stamp(*found) : std::nullopt;
}

std::optional<std::string> DatabaseFiles::database_at(std::string_view path) const {
  auto found = find(path);
  if (found && (files_.is_folder(*found) || files_.first_bytes(*found, kMark.size()) != kMark))
    found.reset();
  return found;
}

std::string DatabaseFiles::read(std::string_view path) const {
  if (const auto database = database_at(path)) return snapshot(*database, busy_);
  return files_.read(path);
}

void DatabaseFiles::write(std::string_view path, std::string_view bytes) {
  const auto database = database_at(path);
  if (!database) return files_.write(path, bytes);
  if (!bytes.starts_with(kMark)) raise(errors::kPermissionDenied);
  replace_content(*database, bytes, busy_);
}

void DatabaseFiles::append(std::string_view path, std::string_view bytes) {
  if (database_at(path)) raise(errors::kPermissionDenied);
  files_.append(path, bytes);
}

// What the log holds goes into the file, and nothing of the engine's stays beside it. A page that
// works with the database keeps the file that it opened, wherever the name leads.
void DatabaseFiles::let_go(const std::string& path) {
  engine_.close(path);
  put_back_log(opened(path, SQLITE_OPEN_READWRITE, busy_).get());
  for (const std::string_view ending : kSideEndings) {
    std::error_code gone;  // the last connection may have removed it
    std::filesystem::remove(path + std::string(ending), gone);
  }
}

void DatabaseFiles::remove(std::string_view path) {
  const auto database = database_at(path);
  if (database) let_go(*database);
  files_.remove(database ? *database : path);
}

void DatabaseFiles::rename(std::string_view from, std::string_view to) {
  const auto database = database_at(from);
  if (database && files_.find(to)) raise(errors::kFileExists);
  if (database) let_go(*database);
  files_.rename(database ? *database : from, to);
}

}  // namespace rk::sqlite
