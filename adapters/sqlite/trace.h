// Takes the time of a page's SQL texts where the page is traced. The page's thread.
#ifndef RK_ADAPTERS_SQLITE_TRACE_H_
#define RK_ADAPTERS_SQLITE_TRACE_H_

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace rk::sqlite {

class Session;

// One text: what it cost and gave so far.
struct TraceEntry {
  std::string sql;
  std::string place;
  std::chrono::steady_clock::time_point sent;
  std::chrono::steady_clock::duration spent{};
  std::int64_t rows = 0;
};

// Tells the page's trace.
void end_trace(const Session& session, const TraceEntry& entry) noexcept;

// From the arrival of a text to its end, or to where its record set goes on with the entry. A text
// that fails is told too.
class TraceScope {
 public:
  TraceScope(const Session& session, std::string_view sql);
  ~TraceScope();
  TraceScope(const TraceScope&) = delete;
  TraceScope& operator=(const TraceScope&) = delete;

  void note_rows(std::int64_t rows) noexcept;
  // Null where nothing is traced.
  std::unique_ptr<TraceEntry> hand_over() noexcept;

 private:
  void add_time() noexcept;

  const Session& session_;
  std::unique_ptr<TraceEntry> entry_;
  std::chrono::steady_clock::time_point begin_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_TRACE_H_
