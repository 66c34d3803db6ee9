// The log of a running program: events on standard error, one a line, those of several lines
// indented behind the first. Several threads may call.
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

class ConsoleLog final : public pagehost::Log {
 public:
  enum class Style { Plain, Timed };
  explicit ConsoleLog(Style style, std::FILE* out = stderr) : style_(style), out_(out) {}

  void error(std::string_view event) override;
  void note(std::string_view event) override;
  bool had_errors() const { return had_errors_.load(); }

 private:
  void write(std::string_view kind, std::string_view event);

  const Style style_;
  std::FILE* const out_;
  std::mutex mutex_;
  std::atomic<bool> had_errors_{false};
};

}  // namespace rk::app

#endif  // RK_APP_CONSOLE_LOG_H_
