// What is wrong with a source that does not compile: the language's number (1001 to 1058) and
// text, and the place, so that a log can show the line with a caret beneath.
#ifndef RK_VBSCRIPT_SYNTAX_ERROR_H_
#define RK_VBSCRIPT_SYNTAX_ERROR_H_

#include <string>
#include <utility>

#include "value/script_error.h"

namespace rk::vbscript {

class SyntaxError : public ScriptError {
 public:
  struct Place {
    std::string path;
    int line = 0;
    int column = 0;           // from 1, in characters
    std::string source_line;  // without its line end; of a piece inside a line its own part
    int indent = 0;           // of the caret in it, in characters
  };

  SyntaxError(const KnownError& known, Place place);

  const std::string& path() const noexcept { return place_.path; }
  int line() const noexcept { return place_.line; }
  int column() const noexcept { return place_.column; }
  const std::string& source_line() const noexcept { return place_.source_line; }
  // Three lines: "PATH:LINE:COLUMN: error 1002: Syntax error", the source line, the caret.
  std::string report() const;

 private:
  Place place_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_SYNTAX_ERROR_H_
