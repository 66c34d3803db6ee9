#include "pagehost/http/access_log.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace rk::http {
namespace {

// A client may send more than anyone wants to read back.
constexpr std::size_t kMostFieldBytes = 2048;

void append_field(std::string& line, std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  line.push_back('"');
  if (text.empty()) line.push_back('-');
  for (const char c : text.substr(0, kMostFieldBytes)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte >= 0x7F || c == '"' || c == '\\') {
      line.append("\\x");
      line.push_back(kDigits[byte >> 4]);
      line.push_back(kDigits[byte & 15]);
    } else {
      line.push_back(c);
    }
  }
  line.push_back('"');
}

int open_log(const std::string& path) {
  return ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0640);
}

}  // namespace

std::string combined_line(const AccessRecord& record) {
  std::tm local{};
  ::localtime_r(&record.time, &local);
  std::array<char, 64> time{};
  const std::size_t length =
      std::strftime(time.data(), time.size(), "%d/%b/%Y:%H:%M:%S %z", &local);
  std::string line(record.address);
  line.append(" - - [").append(time.data(), length).append("] ");
  append_field(line, record.request_line);
  line.append(" ").append(std::to_string(record.status)).append(" ");
  line.append(std::to_string(record.bytes)).append(" ");
  append_field(line, record.referer);
  line.push_back(' ');
  append_field(line, record.user_agent);
  if (!record.note.empty()) {
    line.push_back(' ');
    append_field(line, record.note);
  }
  line.push_back('\n');
  return line;
}

AccessLog::AccessLog(std::string path) : path_(std::move(path)) {
  if (path_.empty()) return;
  file_ = open_log(path_);
  if (file_ < 0) throw std::system_error(errno, std::generic_category(), "access log " + path_);
}

AccessLog::~AccessLog() {
  if (file_ >= 0) ::close(file_);
}

void AccessLog::write(const AccessRecord& record) {
  if (!is_on()) return;
  const std::string line = combined_line(record);
  const std::lock_guard lock(mutex_);
  // A full disk must not stop the answers; the line is lost.
  [[maybe_unused]] const ssize_t written = ::write(file_, line.data(), line.size());
}

void AccessLog::reopen() {
  if (!is_on()) return;
  const int fresh = open_log(path_);
  if (fresh < 0) return;
  const std::lock_guard lock(mutex_);
  ::close(file_);
  file_ = fresh;
}

}  // namespace rk::http
