// Environment: the names around code that is compiled while a script runs (Execute, ExecuteGlobal,
// Eval). Variables are bound to their places at once; the places must outlive the unit's run.
#ifndef RK_VBSCRIPT_ENVIRONMENT_H_
#define RK_VBSCRIPT_ENVIRONMENT_H_

#include <string>

#include "value/value.h"

namespace rk::vbscript {

class Environment {
 public:
  struct Found {
    enum class Kind : std::uint8_t { None, Variable, Constant, Procedure, Class };
    Kind kind = Kind::None;
    Value* variable = nullptr;
    bool is_result = false;  // the variable that a running function answers with
    Value constant;
  };

  virtual ~Environment() = default;
  // A folded name as the running statement sees it, or as a new procedure would.
  virtual Found find(const std::string& folded) = 0;
  virtual Found find_global(const std::string& folded) = 0;
  // Makes a variable in the scope that the code runs in (there is none yet).
  virtual Value* declare(const std::string& folded) = 0;
  virtual bool option_explicit() const = 0;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_ENVIRONMENT_H_
