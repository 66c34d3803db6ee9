#include "app/console_log.h"

#include <array>
#include <ctime>

namespace rk::app {
namespace {

std::string time_text() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  std::array<char, 32> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%F %T ", &local);
  return std::string(text.data(), length);
}

}  // namespace

std::string log_text(std::string_view event) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  while (event.ends_with('\n')) event.remove_suffix(1);
  std::string text;
  text.reserve(event.size() + 16);
  for (const char c : event) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      text.append("\n    ");
    } else if ((byte < 0x20 && c != '\t') || byte == 0x7F) {
      text.append("\\x").append({kDigits[byte >> 4], kDigits[byte & 15]});
    } else {
      text.push_back(c);
    }
  }
  return text;
}

void ConsoleLog::error(std::string_view event) {
  had_errors_.store(true);
  write("error: ", event);
}

void ConsoleLog::note(std::string_view event) {
  write("", event);
}

void ConsoleLog::write(std::string_view kind, std::string_view event) {
  std::string line = style_ == Style::Timed ? time_text() : "rkclient: ";
  line.append(kind).append(log_text(event)).append("\n");
  const std::lock_guard lock(mutex_);
  std::fwrite(line.data(), 1, line.size(), out_);
  std::fflush(out_);
}

}  // namespace rk::app
