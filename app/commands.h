// The commands, each in a file of its own name. They answer the exit code, or throw CommandFailure
// or WrongCommandLine.
#ifndef RK_APP_COMMANDS_H_
#define RK_APP_COMMANDS_H_

#include <optional>
#include <string>
#include <vector>

namespace rk::app {

struct ServeOptions {
  std::string site = ".";
  std::string listen;  // empty: the setting
  std::string version;
};
int serve(const ServeOptions& options);

struct RunOptions {
  std::string page;
  std::string site = ".";
  std::string host = "localhost";
  std::string query;
  std::string method;  // empty: GET, or POST with a form
  std::optional<std::string> form;
  std::vector<std::string> headers;  // "Name: value"
  bool include_headers = false;
  bool trace = false;
  int repeat = 0;  // 0: once, without figures
  std::string version;
};
int run(const RunOptions& options);

int print_schema(const std::string& engine);

// Writes the storefront that is built into the program. Throws where the folder holds anything.
int new_site(const std::string& folder);

int check(const std::string& site);

}  // namespace rk::app

#endif  // RK_APP_COMMANDS_H_
