// An error that no On Error of the script trapped, with the place of the statement that failed.
#ifndef RK_VBSCRIPT_RUNTIME_ERROR_H_
#define RK_VBSCRIPT_RUNTIME_ERROR_H_

#include <string>
#include <utility>

#include "value/script_error.h"

namespace rk::vbscript {

// Err.Source of errors that the language itself raises.
inline constexpr std::string_view kRuntimeSource = "Microsoft VBScript runtime error";
inline constexpr std::string_view kCompilationSource = "Microsoft VBScript compilation error";

class RuntimeError : public ScriptError {
 public:
  // `name` is the variable or procedure that the error is about; may be empty.
  RuntimeError(const ScriptError& error, std::string path, int line, std::string name)
      : ScriptError(error.number(), error.description(), error.source()),
        path_(std::move(path)),
        line_(line),
        name_(std::move(name)) {}

  const std::string& path() const noexcept { return path_; }
  int line() const noexcept { return line_; }
  const std::string& name() const noexcept { return name_; }
  // The description, and the name where there is one: "Variable is undefined: 'x'".
  std::string text() const {
    return name_.empty() ? description() : description() + ": '" + name_ + "'";
  }

 private:
  std::string path_;
  int line_;
  std::string name_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_RUNTIME_ERROR_H_
