#include "adapters/sqlite/handle.h"

#include <sqlite3.h>

#include <algorithm>
#include <string>
#include <thread>
#include <utility>

#include "adapters/sqlite/failure.h"

namespace rk::sqlite {
namespace {

// Steps of the engine between two looks at the page's time: some fifty microseconds.
constexpr int kStepsBetweenLooks = 4096;
// Pause between two tries for a file that another process holds.
constexpr std::chrono::milliseconds kFirstPause{1};
constexpr std::chrono::milliseconds kLongestPause{50};

constexpr std::array<const char*, 8> kFixedTexts = {
    "begin",
    "begin immediate",
    "commit",
    "rollback",
    "savepoint rk_part",
    "release rk_part",
    "rollback to rk_part",
    "pragma schema_version",
};

// Pages of the file kept in memory by one connection, in KiB (negative: KiB, not pages).
constexpr const char* kCacheSize = "pragma cache_size = -4096";

int open_flags(OpenMode mode) {
  // Only one thread at a time uses a handle, so the engine needs no lock of its own around it.
  int flags = SQLITE_OPEN_NOMUTEX;
  if (mode == OpenMode::Read) return flags | SQLITE_OPEN_READONLY;
  if (mode == OpenMode::Create) flags |= SQLITE_OPEN_CREATE;
  return flags | SQLITE_OPEN_READWRITE;
}

}  // namespace

void Handle::Closer::operator()(sqlite3* database) const noexcept {
  sqlite3_close_v2(database);
}

void Handle::Finalizer::operator()(sqlite3_stmt* statement) const noexcept {
  sqlite3_finalize(statement);
}

Handle::Handle(std::string path, OpenMode mode, std::chrono::milliseconds busy)
    : path_(std::move(path)), busy_(busy) {
  open(mode);
  configure(mode);
  catalogue_ = std::make_unique<Catalogue>(database_.get(), path_);
  static_assert(kFixedTexts.size() == kFixed);
  for (std::size_t i = 0; i < kFixed; ++i) fixed_[i] = prepare(kFixedTexts[i]);
}

Handle::~Handle() = default;

void Handle::open(OpenMode mode) {
  sqlite3* database = nullptr;
  const int code = sqlite3_open_v2(path_.c_str(), &database, open_flags(mode), nullptr);
  database_.reset(database);
  if (code != SQLITE_OK) raise_failure(database, code, path_);
}

void Handle::configure(OpenMode mode) {
  sqlite3* database = database_.get();
  sqlite3_extended_result_codes(database, 1);
  sqlite3_busy_handler(database, wait_for_others, this);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_FKEY, 0, nullptr);
  // A kept statement is not planned anew for other values.
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_QPSG, 1, nullptr);
  run_text("select 1 from sqlite_schema limit 1");  // fails where this is no database
  if (mode != OpenMode::Read && sqlite3_db_readonly(database, "main") == 0) {
    // Readers and the writer do not wait for one another. A file that just now cannot be switched
    // is used as it is.
    sqlite3_exec(database, "pragma journal_mode = wal", nullptr, nullptr, nullptr);
  }
  // A row that was acknowledged is on the disk.
  run_text("pragma synchronous = full");
  run_text(kCacheSize);
  const int code = functions_.add_to(database);
  if (code != SQLITE_OK) fail(code);
}

void Handle::run_text(const char* text) {
  const int code = sqlite3_exec(database_.get(), text, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) fail(code);
}

Handle::Statement Handle::prepare(std::string_view text) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(database_.get(), text.data(), static_cast<int>(text.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  if (code != SQLITE_OK) fail(code);
  return Statement(statement);
}

void Handle::watch(const Limits* limits) {
  limits_ = limits;
  const bool limited = limits != nullptr && limits->expired;
  sqlite3_progress_handler(database_.get(), limited ? kStepsBetweenLooks : 0,
                           limited ? is_over : nullptr, this);
}

bool Handle::page_is_over() const noexcept {
  return limits_ != nullptr && limits_->expired && limits_->expired();
}

int Handle::is_over(void* self) noexcept {
  const auto* handle = static_cast<const Handle*>(self);
  return !handle->shielded_ && handle->page_is_over() ? 1 : 0;
}

int Handle::wait_for_others(void* self, int tries) noexcept {
  auto* handle = static_cast<Handle*>(self);
  const auto now = std::chrono::steady_clock::now();
  if (tries == 0) handle->waiting_since_ = handle->waited_before_.value_or(now);
  if (now - handle->waiting_since_ >= handle->busy_ || handle->page_is_over()) return 0;
  std::this_thread::sleep_for(std::min(kFirstPause * (tries + 1), kLongestPause));
  return 1;
}

void Handle::fail(int code) {
  if (const auto error = functions_.take_error()) raise_failure(*error);
  if ((code & 0xFF) == SQLITE_INTERRUPT) {
    if (limits_ != nullptr && limits_->end) limits_->end();
    raise_timeout();
  }
  raise_failure(database_.get(), code, path_);
}

int Handle::run(Fixed which) noexcept {
  sqlite3_stmt* statement = fixed_[which].get();
  const int code = sqlite3_step(statement);
  sqlite3_reset(statement);
  return code == SQLITE_DONE || code == SQLITE_ROW ? SQLITE_OK : code;
}

void Handle::begin_view() {
  if (const int code = run(kBegin); code != SQLITE_OK) fail(code);
  in_view_ = true;
  try {
    check_schema();
  } catch (...) {
    end_view();
    throw;
  }
}

void Handle::end_view() noexcept {
  if (!std::exchange(in_view_, false)) return;
  shielded_ = true;
  if (run(kCommit) != SQLITE_OK && in_transaction()) run(kRollback);
  shielded_ = false;
}

// The first read of a view or transaction, so that it also settles which state the view shows.
void Handle::check_schema() {
  sqlite3_stmt* statement = fixed_[kSchema].get();
  const int code = sqlite3_step(statement);
  const std::int64_t version = sqlite3_column_int64(statement, 0);
  sqlite3_reset(statement);
  if (code != SQLITE_ROW) fail(code);
  if (version == schema_version_) return;
  forget_schema();
  schema_version_ = version;
}

void Handle::forget_schema() {
  plans_.clear();
  catalogue_->forget();
  schema_version_ = -1;
}

void Handle::begin_write(std::optional<TimePoint> waited_since) {
  waited_before_ = waited_since;
  const int code = run(kBeginImmediate);
  waited_before_.reset();
  in_vain_since_.reset();
  if ((code & 0xFF) == SQLITE_BUSY) in_vain_since_ = waiting_since_;
  if (code != SQLITE_OK) fail(code);
  check_schema();
}

void Handle::commit_write() {
  shielded_ = true;
  const int code = run(kCommit);
  shielded_ = false;
  if (code != SQLITE_OK) fail(code);
}

void Handle::roll_back() noexcept {
  shielded_ = true;
  if (in_transaction()) run(kRollback);
  shielded_ = false;
}

void Handle::begin_part() {
  if (const int code = run(kSavepoint); code != SQLITE_OK) fail(code);
}

void Handle::end_part(bool keep) noexcept {
  if (!in_transaction()) return;
  shielded_ = true;
  if (!keep) run(kUndo);
  run(kRelease);
  shielded_ = false;
}

bool Handle::in_transaction() const noexcept {
  return sqlite3_get_autocommit(database_.get()) == 0;
}

Ref<Plan> Handle::plan(std::string_view sql, const jetsql::Shape& shape) {
  if (const Ref<Plan>* kept = plans_.find(shape.key)) return *kept;
  try {
    return *plans_.put(shape.key, make_ref<Plan>(jetsql::translate(sql, *catalogue_)));
  } catch (const jetsql::SqlError& error) {
    raise_failure(error);
  }
}

Ref<Plan> Handle::own_plan(const std::string& text) {
  // No shape of a page's text begins so.
  std::string key = '\1' + text;
  if (const Ref<Plan>* kept = plans_.find(key)) return *kept;
  jetsql::Translation translation;
  translation.kind = jetsql::Translation::Kind::Update;
  translation.statements.push_back(text);
  return *plans_.put(std::move(key), make_ref<Plan>(std::move(translation)));
}

Lease Handle::lease(const Ref<Plan>& plan, std::size_t form) {
  sqlite3_stmt* statement = plan->take(form);
  if (statement == nullptr) statement = prepare(plan->text(form)).release();
  return {plan, form, statement};
}

bool Handle::step(sqlite3_stmt* statement) {
  const int code = sqlite3_step(statement);
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) fail(code);
  return false;
}

std::int64_t Handle::changes() const noexcept {
  return sqlite3_changes64(database_.get());
}

std::int64_t Handle::last_row_id() const noexcept {
  return sqlite3_last_insert_rowid(database_.get());
}

std::uint32_t Handle::change_sign() const noexcept {
  unsigned int sign = 0;
  sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_DATA_VERSION, &sign);
  return sign;
}

}  // namespace rk::sqlite
