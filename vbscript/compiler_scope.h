// Scope: what the compiler knows of the body that it compiles now, a procedure's or the script's.
#ifndef RK_VBSCRIPT_COMPILER_SCOPE_H_
#define RK_VBSCRIPT_COMPILER_SCOPE_H_

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "vbscript/meaning.h"
#include "vbscript/name_usage.h"
#include "vbscript/syntax_tree.h"
#include "vbscript/unit.h"

namespace rk::vbscript {

struct Scope {
  struct Loop {
    Statement::ExitKind kind;
    std::vector<std::size_t> exits;  // jumps to patch
  };

  Code* code = nullptr;
  const Procedure* procedure = nullptr;  // null: outside of procedures
  const ClassCode* owner = nullptr;
  const NameUsage* usage = nullptr;
  std::unordered_map<NameId, Meaning> meanings;
  std::vector<Loop> loops;
  std::vector<std::uint32_t> withs;  // registers
  std::uint32_t next_register = 0;
  std::uint32_t dirty_begin = 0;  // temporaries of the statement that may hold more than numbers
  std::uint32_t dirty_end = 0;
  bool lone_statement = false;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_COMPILER_SCOPE_H_
