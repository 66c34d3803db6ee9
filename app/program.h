// The program as a whole: what it is called, and how its commands end.
#ifndef RK_APP_PROGRAM_H_
#define RK_APP_PROGRAM_H_

#include <stdexcept>
#include <string>
#include <string_view>

namespace rk::app {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongCommandLine = 2;

// Ends a command with exit code 1; its text is the reason, one line.
class CommandFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Ends a command with exit code 2, for what only shows after the options were read.
class WrongCommandLine : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads the command line, carries the command out and answers the exit code.
int run_program(int argc, char** argv, const std::string& version);

// Writes all of a text to standard output, or throws CommandFailure.
void print(std::string_view text);

}  // namespace rk::app

#endif  // RK_APP_PROGRAM_H_
