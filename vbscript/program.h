// Program: a compiled page or script. Immutable; any number of threads may run it at once, each
// with an Interpreter of its own.
#ifndef RK_VBSCRIPT_PROGRAM_H_
#define RK_VBSCRIPT_PROGRAM_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vbscript/source.h"

namespace rk::vbscript {

struct Unit;

class Program {
 public:
  explicit Program(std::shared_ptr<const Unit> unit);
  ~Program();

  // Whether the script has a Sub or Function of this name (any letter case).
  bool defines(std::string_view procedure) const;
  // The files of its source, as SourcePlace::file counts them.
  const std::vector<std::string>& files() const;

  const std::shared_ptr<const Unit>& unit() const { return unit_; }

 private:
  std::shared_ptr<const Unit> unit_;
};

// Throws SyntaxError.
std::shared_ptr<const Program> compile(const Source& source);
// One file of script alone.
std::shared_ptr<const Program> compile_script(std::string path, std::string text);

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_PROGRAM_H_
