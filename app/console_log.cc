#include "app/console_log.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <system_error>
#include <utility>
#include <vector>

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

std::FILE* opened(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0640);
  return file < 0 ? nullptr : ::fdopen(file, "a");
}

void append_visible(std::string& text, std::string_view line) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  for (const char c : line) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x20 && c != '\t') || byte == 0x7F) {
      text.append("\\x").append({kDigits[byte >> 4], kDigits[byte & 15]});
    } else {
      text.push_back(c);
    }
  }
}

std::vector<std::string_view> lines_of(std::string_view event) {
  while (event.ends_with('\n')) event.remove_suffix(1);
  std::vector<std::string_view> lines;
  while (true) {
    const std::size_t end = event.find('\n');
    lines.push_back(event.substr(0, end));
    if (end == std::string_view::npos) return lines;
    event.remove_prefix(end + 1);
  }
}

}  // namespace

std::string log_text(std::string_view event) {
  std::string text;
  for (const std::string_view line : lines_of(event)) {
    if (!text.empty()) text.append("\n    ");
    append_visible(text, line);
  }
  return text;
}

std::string log_line(std::string_view event) {
  std::string text;
  for (std::string_view line : lines_of(event)) {
    if (line.find_first_not_of(" \t^") == std::string_view::npos) continue;
    line.remove_prefix(line.find_first_not_of(" \t"));
    if (!text.empty()) text.append(" | ");
    append_visible(text, line);
  }
  return text;
}

ConsoleLog::ConsoleLog(Style style, std::string path)
    : style_(style), path_(std::move(path)), out_(opened(path_)) {
  if (out_ == nullptr)
    throw std::system_error(errno, std::generic_category(), "error log " + path_);
}

ConsoleLog::~ConsoleLog() {
  if (!path_.empty()) std::fclose(out_);
}

void ConsoleLog::reopen() {
  if (path_.empty()) return;
  std::FILE* const fresh = opened(path_);
  if (fresh == nullptr) return;
  const std::lock_guard lock(mutex_);
  std::fclose(out_);
  out_ = fresh;
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
  line.append(kind).append(style_ == Style::Timed ? log_line(event) : log_text(event)).append("\n");
  const std::lock_guard lock(mutex_);
  std::fwrite(line.data(), 1, line.size(), out_);
  std::fflush(out_);
}

}  // namespace rk::app
