// The built-in functions and constants of the language.
#ifndef RK_VBSCRIPT_BUILT_INS_H_
#define RK_VBSCRIPT_BUILT_INS_H_

#include <span>
#include <string_view>

#include "value/object.h"
#include "value/value.h"

namespace rk::vbscript {

class Machine;

struct BuiltIn {
  std::string_view name;  // as TypeName and errors write it
  int least_arguments;
  int most_arguments;
  Value (*call)(Machine& machine, Arguments arguments);
};

inline constexpr int kNoBuiltIn = -1;
// Any number of arguments.
inline constexpr int kAnyArguments = 1 << 16;

// By its folded name.
int find_built_in(std::string_view folded);
const BuiltIn& built_in(int index);

// vbCrLf and its like, by folded name; null where there is none.
const Value* find_built_in_constant(std::string_view folded);

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_BUILT_INS_H_
