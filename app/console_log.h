// The log of a running program: events on standard error or in a file. Several threads may call.
#ifndef RK_APP_CONSOLE_LOG_H_
#define RK_APP_CONSOLE_LOG_H_

#include <atomic>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>

#include "pagehost/pages/log.h"

namespace rk::app {

// One event as it is written: control characters, which a visitor may have sent, as "\xNN".
std::string log_text(std::string_view event);

// The same on one line, for files that are searched line by line: its further lines stand behind
// " | ", without the one that only points into the line above.
std::string log_line(std::string_view event);

class ConsoleLog final : public pagehost::Log {
 public:
  // Plain: as a person at a terminal reads it, an event's further lines indented behind the first.
  // Timed: one line an event, behind its time.
  enum class Style { Plain, Timed };
  explicit ConsoleLog(Style style, std::FILE* out = stderr) : style_(style), out_(out) {}
  // Into a file, at its end. Throws std::system_error where it cannot be opened.
  ConsoleLog(Style style, std::string path);
  ~ConsoleLog() override;
  ConsoleLog(const ConsoleLog&) = delete;
  ConsoleLog& operator=(const ConsoleLog&) = delete;

  void error(std::string_view event) override;
  void note(std::string_view event) override;
  bool had_errors() const { return had_errors_.load(); }
  // Opens the file anew by its name, after it was moved away. Keeps the old one where that fails.
  void reopen();

 private:
  void write(std::string_view kind, std::string_view event);

  const Style style_;
  const std::string path_;  // empty: not our file
  std::FILE* out_;
  std::mutex mutex_;
  std::atomic<bool> had_errors_{false};
};

}  // namespace rk::app

#endif  // RK_APP_CONSOLE_LOG_H_
