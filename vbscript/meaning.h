// Meaning: what the compiler found a name to be, where it stands.
#ifndef RK_VBSCRIPT_MEANING_H_
#define RK_VBSCRIPT_MEANING_H_

#include <cstdint>

#include "vbscript/instructions.h"

namespace rk::vbscript {

struct Meaning {
  enum class Kind : std::uint8_t {
    Variable,   // place
    Constant,   // place
    Procedure,  // index
    Member,     // index of the own class's member that is no field
    Class,
    BuiltIn,    // index
    Late,       // index of a global that is settled at run time
    Dynamic,    // a procedure of code around, called by name
    Undefined,  // Option Explicit says no
  };
  Kind kind = Kind::Variable;
  Operand place = kNoOperand;
  std::uint32_t index = 0;
  bool looked_up = false;  // index of a shared name that code run meanwhile may move
  bool is_result = false;  // of the function around code made at run time: f(1) calls it again
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_MEANING_H_
