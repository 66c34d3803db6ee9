// The access log in the Combined format. Any thread may write; a line is one write, so lines of
// several threads, and of several processes, do not mix.
#ifndef RK_PAGEHOST_HTTP_ACCESS_LOG_H_
#define RK_PAGEHOST_HTTP_ACCESS_LOG_H_

#include <cstdint>
#include <ctime>
#include <mutex>
#include <string>
#include <string_view>

namespace rk::http {

struct AccessRecord {
  std::string_view address;
  std::time_t time = 0;
  std::string_view request_line;  // as sent, or empty
  int status = 0;
  std::uint64_t bytes = 0;  // of the body
  std::string_view referer;
  std::string_view user_agent;
  std::string_view note;  // what the page appended; a further field where it did
};

// One line with its end. What the client sent is written so that it can break neither the line nor
// a terminal.
std::string combined_line(const AccessRecord& record);

class AccessLog {
 public:
  // An empty path: nothing is written. Throws std::system_error where the file cannot be opened.
  explicit AccessLog(std::string path);
  ~AccessLog();
  AccessLog(const AccessLog&) = delete;
  AccessLog& operator=(const AccessLog&) = delete;

  bool is_on() const noexcept { return !path_.empty(); }
  void write(const AccessRecord& record);
  // Opens the file anew by its name, after it was moved away. Keeps the old one where that fails.
  void reopen();

 private:
  std::string path_;
  std::mutex mutex_;
  int file_ = -1;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_ACCESS_LOG_H_
