// Where the page host tells its owner what happened: the program's standard error or log file.
// Lines are UTF-8 and name paths as visitors see them, never physical ones of other files.
// Several threads may call.
#ifndef RK_PAGEHOST_PAGES_LOG_H_
#define RK_PAGEHOST_PAGES_LOG_H_

#include <string_view>

namespace rk::pagehost {

class Log {
 public:
  virtual ~Log() = default;
  // Something failed. One event; may hold several lines (a syntax error with its caret).
  virtual void error(std::string_view event) = 0;
  // Something an owner wants to know that is no failure.
  virtual void note(std::string_view event) = 0;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_LOG_H_
