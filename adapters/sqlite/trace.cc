#include "adapters/sqlite/trace.h"

#include <utility>

#include "adapters/sqlite/session.h"

namespace rk::sqlite {

void end_trace(const Session& session, const TraceEntry& entry) noexcept {
  const auto spent = std::chrono::duration_cast<std::chrono::microseconds>(entry.spent);
  session.hooks().trace({entry.sql, entry.sent, spent.count(), entry.rows, entry.place});
}

TraceScope::TraceScope(const Session& session, std::string_view sql) : session_(session) {
  const PageHooks& hooks = session.hooks();
  if (!hooks.trace) return;
  entry_ = std::make_unique<TraceEntry>();
  entry_->sql = sql;
  if (hooks.place) entry_->place = hooks.place();
  begin_ = std::chrono::steady_clock::now();
  entry_->sent = begin_;
}

TraceScope::~TraceScope() {
  if (entry_ == nullptr) return;
  add_time();
  end_trace(session_, *entry_);
}

void TraceScope::add_time() noexcept {
  entry_->spent += std::chrono::steady_clock::now() - begin_;
}

void TraceScope::note_rows(std::int64_t rows) noexcept {
  if (entry_ != nullptr) entry_->rows = rows;
}

std::unique_ptr<TraceEntry> TraceScope::hand_over() noexcept {
  if (entry_ != nullptr) add_time();
  return std::move(entry_);
}

}  // namespace rk::sqlite
